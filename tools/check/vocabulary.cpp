#include "vocabulary.h"

#include <algorithm>
#include <memory>

#include "foundation/diagnose.h"
#include "script/mc_condition.h"
#include "script/mc_expression.h"
#include "script/melement.h"

namespace footlight::check {

namespace {

const Method* rowIn(std::span<const Method> rows, std::string_view name) {
  const auto found =
      std::find_if(rows.begin(), rows.end(), [name](const Method& row) { return name == row.name; });
  return found == rows.end() ? nullptr : &*found;
}

Answer answerOf(const Method* row) {
  return row != nullptr ? Answer{Answer::Kind::yes, row->least} : Answer{};
}

// Runs something and tells whether the engine reported anything.
template <class Action>
bool isReported(Action action) {
  bool reported = false;
  diagnose::listen([&reported](const diagnose::Report&) { reported = true; });
  action();
  diagnose::listen({});
  return reported;
}

// A scope without a window, in which the engine can be asked.
class Laboratory {
 public:
  Laboratory() : scope_(new CMC_ObjectsContainer(nullptr, "CHECK", type::kScene)) {}
  CMC_ObjectsContainer* operator->() const { return scope_.get(); }
  CMC_ObjectsContainer* get() const { return scope_.get(); }

 private:
  Owned<CMC_ObjectsContainer> scope_;
};

template <class T>
bool takesOperator(std::string_view word) {
  const Laboratory laboratory;
  CMElement element("CHECK", {});
  element.addProperty("OPERATOR", CXString(word));
  return !isReported([&] { const Owned<T> made(new T(laboratory.get(), &element)); });
}

}  // namespace

Answer methodOf(int type, std::string_view name) {
  const CMC_Runner* runner = CMC_RunnerFactory::getRunner(type);
  if (runner == nullptr) return {Answer::Kind::mayBe};
  if (const Method* own = rowIn(runner->ownMethods(), name)) return answerOf(own);
  if (const Method* base = rowIn(CMC_Runner::baseMethods(), name)) return answerOf(base);
  return hasMethods(type) ? Answer{} : Answer{Answer::Kind::mayBe};
}

Answer methodOfAny(std::string_view name) {
  Answer best;
  for (const ScriptType* description : allTypes()) {
    const Answer answer = methodOf(description->number, name);
    if (answer.kind != Answer::Kind::yes) continue;
    best = {Answer::Kind::yes,
            best.kind == Answer::Kind::yes ? std::min(best.least, answer.least) : answer.least};
  }
  return best;
}

bool hasMethods(int type) {
  const CMC_Runner* runner = CMC_RunnerFactory::getRunner(type);
  return runner != nullptr && !runner->ownMethods().empty();
}

void eachMethodOf(int type, const std::function<void(const char*)>& function) {
  for (const Method& method : CMC_Runner::baseMethods()) function(method.name);
  const CMC_Runner* runner = CMC_RunnerFactory::getRunner(type);
  if (runner == nullptr) return;
  for (const Method& method : runner->ownMethods()) function(method.name);
}

const ScriptType* findLevelType(std::string_view word) {
  for (const int number : {type::kApplication, type::kEpisode, type::kScene}) {
    const ScriptType* description = findType(number);
    if (word == description->idWord) return description;
  }
  return nullptr;
}

const char* findSignal(const ScriptType& type, std::string_view name) {
  const std::string_view plain = plainSignal(type.number, name);
  const auto found = std::find_if(type.signals.begin(), type.signals.end(),
                                  [plain](const Signal& signal) { return plain == signal.name; });
  return found == type.signals.end() ? nullptr : found->name;
}

bool hasProperty(const ScriptType& type, std::string_view name) {
  return std::any_of(type.properties.begin(), type.properties.end(),
                     [name](const Property& property) { return name == property.name; });
}

bool isTypeText(std::string_view word) {
  return std::any_of(allTypes().begin(), allTypes().end(), [word](const ScriptType* type) {
    return CMC_Object::typeToString(type->number) == word;
  });
}

bool isComparison(std::string_view word) { return CMC_Condition::comparisonOf(word) != Comparison::none; }

bool isOperator(int type, std::string_view word) {
  if (type == type::kCondition) return takesOperator<CMC_Condition>(word);
  if (type == type::kComplexCondition) return takesOperator<CMC_ComplexCondition>(word);
  return type != type::kExpression || takesOperator<CMC_Expression>(word);
}

}  // namespace footlight::check
