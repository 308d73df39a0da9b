#include "script/type_registry.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "foundation/diagnose.h"
#include "script/mc_plain_object.h"
#include "script/mc_runner.h"
#include "script/melement.h"

namespace footlight {

namespace {

using Words = std::unordered_map<std::string_view, const ScriptType*>;

struct Registry {
  std::span<const ScriptType* const> types;
  std::vector<const ScriptType*> byNumber;
  Words byDefinition;
  Words byWord;
};

Registry registry;

void enterWord(Words& words, const char* word, const ScriptType* type) {
  if (word != nullptr) words.emplace(word, type);
}

const ScriptType* findIn(const Words& words, std::string_view word) {
  const auto found = words.find(word);
  return found == words.end() ? nullptr : found->second;
}

struct Runners {
  int users = 0;
  std::vector<std::unique_ptr<CMC_Runner>> owned;
  std::vector<CMC_Runner*> byType;  // indexed by the type's number
};

Runners runners;

CMC_Runner* ownRunner(std::unique_ptr<CMC_Runner> runner) {
  runner->prepareMthHashSet();
  runners.owned.push_back(std::move(runner));
  return runners.owned.back().get();
}

// Types that name the same methods and the same kind of runner share one.
CMC_Runner* runnerFor(const ScriptType& type) {
  for (const ScriptType* other : allTypes()) {
    CMC_Runner* known = CMC_RunnerFactory::getRunner(other->number);
    const bool isSame = other->makeRunner == type.makeRunner && other->methods.data() == type.methods.data();
    if (isSame && known != nullptr) return known;
  }
  return ownRunner(type.makeRunner != nullptr ? type.makeRunner(type.methods)
                                              : std::make_unique<CMC_Runner>(type.methods));
}

// Properties that the type does not read.
void reportProperties(const CMElement& element, const ScriptType& type) {
  for (const CMProperty* property : element.properties()) {
    const std::string_view name = property->getName();
    const auto isKnown = [name](const Property& known) { return name == known.name; };
    const auto begins = [name](const Signal& signal) { return name.starts_with(signal.name); };
    if (name == "TYPE" || std::any_of(type.signals.begin(), type.signals.end(), begins)) continue;
    if (type.properties.empty() && !name.starts_with("ON")) continue;
    if (std::any_of(type.properties.begin(), type.properties.end(), isKnown)) continue;
    diagnose::report(diagnose::Group::definition, element.getName(), name,
                     std::string("no such property of ") + type.definitionWord, property->origin());
  }
}

}  // namespace

void installTypes(std::span<const ScriptType* const> types) {
  registry = {};
  registry.types = types;
  for (const ScriptType* type : types) {
    const auto number = static_cast<std::size_t>(type->number);
    if (registry.byNumber.size() <= number) registry.byNumber.resize(number + 1);
    registry.byNumber[number] = type;
    enterWord(registry.byDefinition, type->definitionWord, type);
    enterWord(registry.byDefinition, type->otherWord, type);
    enterWord(registry.byWord, type->idWord, type);
  }
}

std::span<const ScriptType* const> allTypes() { return registry.types; }

const ScriptType* findType(int number) {
  const bool isKnown = number >= 0 && static_cast<std::size_t>(number) < registry.byNumber.size();
  return isKnown ? registry.byNumber[static_cast<std::size_t>(number)] : nullptr;
}

const ScriptType* findTypeByDefinition(std::string_view word) { return findIn(registry.byDefinition, word); }

const ScriptType* findTypeByWord(std::string_view idWord) { return findIn(registry.byWord, idWord); }

int typeNumberOf(std::string_view idWord) {
  const ScriptType* found = findTypeByWord(idWord);
  return found != nullptr ? found->number : -1;
}

std::string_view plainSignal(int type, std::string_view name) {
  const std::string_view plain = name.substr(0, name.find('^'));
  const ScriptType* found = findType(type);
  if (found == nullptr) return plain;
  for (const Signal& signal : found->signals) {
    if (signal.otherForm != nullptr && plain == signal.otherForm) return signal.name;
  }
  return plain;
}

CMC_Object* makeObject(CMC_ObjectsContainer* container, const CMElement* element, const ScriptType& type) {
  const diagnose::PlaceGuard place(element->origin());
  if (diagnose::isOn()) reportProperties(*element, type);
  if (type.make != nullptr) return type.make(container, element);
  return new CMC_PlainObject(container, element, type.number);
}

CMC_Object* makeBareObject(CMC_ObjectsContainer* container, const CXString& word, const CXString& name) {
  const ScriptType* type = findTypeByWord(word);
  CMC_Object* made = type != nullptr && type->makeBare != nullptr ? type->makeBare(container, name) : nullptr;
  if (made == nullptr && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no object is made of the word " + word.str());
  return made;
}

// The runners

void CMC_RunnerFactory::initialize() {
  if (++runners.users > 1) return;
  runners.byType.resize(std::max<std::size_t>(registry.byNumber.size(), 1));
  runners.byType[type::kBuiltIns] = ownRunner(std::make_unique<CMC_Runner>(CMC_Runner::statements()));
  for (const ScriptType* type : allTypes()) {
    if (type->isCallable) runners.byType[static_cast<std::size_t>(type->number)] = runnerFor(*type);
  }
}

void CMC_RunnerFactory::done() {
  if (runners.users > 0 && --runners.users == 0) runners = {};
}

CMC_Runner* CMC_RunnerFactory::getRunner(int type) {
  const bool isKnown = type >= 0 && static_cast<std::size_t>(type) < runners.byType.size();
  return isKnown ? runners.byType[static_cast<std::size_t>(type)] : nullptr;
}

}  // namespace footlight
