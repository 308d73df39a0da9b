#include "script/mc_runner.h"

#include <algorithm>

#include "script/mc_behaviour.h"
#include "script/mc_expression.h"
#include "script/mc_groupped.h"
#include "script/mc_variable_factory.h"

namespace footlight {

// Reading arguments

Ref<CMC_Variable> Call::variable(int index) const {
  CMC_Object* passed = object(index);
  if (auto* expression = object_cast<CMC_Expression>(passed)) return expression->calculate();
  return Ref<CMC_Variable>(object_cast<CMC_Variable>(passed));
}

Number Call::number(int index) const {
  if (index < 0 || !has(index)) return {};
  const Value& passed = arguments_[static_cast<std::size_t>(index)];
  return passed.present() != nullptr ? numberOf(passed.present()) : passed.number();
}

int Call::integer(int index) const {
  if (const Number passed = number(index)) return asInteger(passed);
  const Ref<CMC_Variable> value = variable(index);
  return value ? value->asInteger() : 0;
}

double Call::real(int index) const {
  if (const Number passed = number(index)) return asDouble(passed);
  const Ref<CMC_Variable> value = variable(index);
  return value ? value->asDouble() : 0.0;
}

bool Call::boolean(int index) const {
  const Ref<CMC_Variable> value = variable(index);
  return value && value->asBool();
}

CXString Call::text(int index) const {
  CMC_Object* passed = object(index);
  if (passed == nullptr) return {};
  if (!CMC_Variable::isTypeOf(passed->getType())) return passed->getName();
  const Ref<CMC_Variable> value = variable(index);
  return value ? value->asText() : CXString();
}

std::string_view Call::textView(int index, CXString* storage) const {
  if (const auto* string = object_cast<CMC_String>(object(index))) return string->getValue();
  *storage = text(index);
  return *storage;
}

TextList Call::textsFrom(int first) const {
  TextList texts;
  for (int i = first; i < count(); ++i) texts.push_back(text(i));
  return texts;
}

CMC_Object* Call::findAny(std::string_view name) const {
  return scope_ != nullptr ? scope_->getObject(name) : nullptr;
}

CMC_Object* Call::findReported(const CXString& name) const {
  CMC_Object* found = findAny(name);
  if (found == nullptr && diagnose::isOn()) reportMissing(name, nullptr);
  return found;
}

void Call::reportMissing(const CXString& name, bool (*isTypeOf)(int)) const {
  std::string text = "no object of the name " + name.str();
  if (findAny(name) != nullptr) {
    text = name.str() + " is of another type";
    for (const ScriptType* type : allTypes()) {
      const char* word = type->definitionWord != nullptr ? type->definitionWord : type->idWord;
      if (isTypeOf != nullptr && isTypeOf(type->number) && word != nullptr)
        text = name.str() + " is no " + word;
    }
  }
  diagnose::reportCall(diagnose::Group::object, text);
}

// The methods of every object

namespace {

CXString signalText(const Call& call) {
  CXString signal = call.text(0);
  signal.Replace('$', '^');
  return signal;
}

Result send(CMC_Object& object, Call& call) {
  const CXString text = call.text(0);
  object.onSignal(text.startsWith("@") ? text : CXString("ONSIGNAL^") + text);
  return {};
}

Result addToGroup(CMC_Object& object, Call& call) {
  if (auto* group = call.named<CMC_Groupped>(0)) group->add(&object);
  return {};
}

Result addToArray(CMC_Object& object, Call& call) {
  CMC_Object* named = call.namedAny(0);
  CMC_ValueList* list = named != nullptr ? named->getValueList() : nullptr;
  if (list != nullptr) list->add(asVariable(&object).get());
  if (named != nullptr && list == nullptr && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object, named->getName().str() + " is no ARRAY");
  return {};
}

Result getName(CMC_Object& object, Call& /*call*/) {
  return CMC_VariableFactory::makeString(object.getName());
}

Result clone(CMC_Object& object, Call& call) {
  object.clone(call.has(0) ? call.integer(0) : 1);
  return {};
}

Result addBehaviour(CMC_Object& object, Call& call) {
  auto arguments = std::make_shared<TextList>(call.textsFrom(2));
  if (auto* behaviour = call.named<CMC_Behaviour>(1)) {
    object.addBehaviour(signalText(call), behaviour, std::move(arguments), call.scope());
  }
  return {};
}

Result getCloneIndex(CMC_Object& object, Call& /*call*/) {
  return CMC_VariableFactory::makeInteger(object.getCloneIdx());
}

Result msgBox(CMC_Object& /*object*/, Call& /*call*/) { return {}; }

Result resetClones(CMC_Object& object, Call& /*call*/) {
  object.resetClones();
  return {};
}

Result removeBehaviour(CMC_Object& object, Call& call) {
  object.removeBehaviour(signalText(call), call.scope());
  return {};
}

Result getClonesNo(CMC_Object& object, Call& /*call*/) {
  return CMC_VariableFactory::makeInteger(object.getClonesNo());
}

Result removeAllBehaviours(CMC_Object& object, Call& /*call*/) {
  object.removeAllBehaviours();
  return {};
}

Result removeBehaviourForce(CMC_Object& object, Call& call) {
  object.removeBehaviourForce(signalText(call));
  return {};
}

Result overideSignals(CMC_Object& object, Call& call) {
  object.overideSignals(call.boolean(0));
  return {};
}

constexpr Method kBaseMethods[] = {
    {96, "SEND", "word:text", method<send>,
     "Raises its signal ONSIGNAL^WORD; a word that begins with \"@\" is itself the name of the signal."},
    {97, "ADDTOGROUP", "group:name", method<addToGroup>, "Makes the object a member of a GROUP."},
    {98, "ADDTOARRAY", "array:name", method<addToArray>,
     "Adds its value, or the name of an object without one, to an ARRAY."},
    {99, "GETNAME", "-> text", method<getName>, "Its name."},
    {100, "CLONE", "[count:int]", method<clone>,
     "Makes that many copies, 1 without the argument: NAME_1, NAME_2 and so on."},
    {101, "ADDBEHAVIOUR", "signal:signal, behaviour:name, [arguments:text...]", method<addBehaviour>,
     "Binds a BEHAVIOUR to a signal, written with \"$\" for \"^\"; the arguments become its $1, $2 and so "
     "on."},
    {102, "GETCLONEINDEX", "-> int", method<getCloneIndex>,
     "The number behind the last \"_\" of its name; 0 without one."},
    {103, "MSGBOX", "[texts:text...]", method<msgBox>, "Does nothing."},
    {104, "RESETCLONES", "", method<resetClones>,
     "Numbers the next clones from 1 again; those that are there stay."},
    {105, "REMOVEBEHAVIOUR", "signal:signal", method<removeBehaviour>,
     "Takes off what was bound to the signal from this scope."},
    {106, "GETCLONESNO", "-> int", method<getClonesNo>, "How many clones were made of it."},
    {107, "REMOVEALLBEHAVIOURS", "", method<removeAllBehaviours>,
     "Takes off all that is bound to any of its signals."},
    {108, "REMOVEBEHAVIOURFORCE", "signal:signal", method<removeBehaviourForce>,
     "Takes off all that is bound to the signal, from whatever scope."},
    {109, "OVERIDESIGNALS", "on:bool", method<overideSignals>,
     "With TRUE a new binding takes the place of the older ones of its signal, with FALSE it joins them; "
     "TRUE at the start, but for MOUSE and KEYBOARD."},
};

}  // namespace

std::span<const Method> CMC_Runner::baseMethods() { return kBaseMethods; }

// Dispatch

void CMC_Runner::prepareMthHashSet() {
  enter(kBaseMethods);
  enter(own_);
}

void CMC_Runner::enter(std::span<const Method> methods) {
  for (const Method& method : methods) {
    const auto number = static_cast<std::size_t>(method.number);
    if (byNumber_.size() <= number) byNumber_.resize(number + 1);
    byNumber_[number] = &method;
    numbers_[method.name] = method.number;
  }
}

int CMC_Runner::resolveMethod(std::string_view name) const {
  const auto found = numbers_.find(name);
  return found == numbers_.end() ? -1 : found->second;
}

const Method* CMC_Runner::findMethod(std::string_view name) const {
  const auto found = numbers_.find(name);
  return found == numbers_.end() ? nullptr : byNumber_[static_cast<std::size_t>(found->second)];
}

Result CMC_Runner::callWatched(const Method& method, CMC_Object& object, Call& call) {
  const diagnose::CallGuard guard(object.getName(), method.name);
  return method.function(object, call);
}

// Too few arguments.
Result CMC_Runner::refuse(const Method& method, const CMC_Object& object) {
  if (diagnose::isOn()) {
    diagnose::report(diagnose::Group::arguments, object.getName(), method.name, "too few arguments");
  }
  return {};
}

Result CMC_Runner::run(int methodId, CMC_Object* object, CMC_ObjectsContainer* scope,
                       const ArgumentList& arguments) {
  const bool known = methodId >= 0 && static_cast<std::size_t>(methodId) < byNumber_.size();
  const Method* method = known ? byNumber_[static_cast<std::size_t>(methodId)] : nullptr;
  return method != nullptr && object != nullptr ? call(*method, *object, scope, arguments) : Result();
}

Result CMC_Runner::run(std::string_view name, CMC_Object* object, CMC_ObjectsContainer* scope,
                       const ArgumentList& arguments) {
  const int number = resolveMethod(name);
  if (number < 0 && object != nullptr && diagnose::isOn()) {
    diagnose::report(diagnose::Group::method, object->getName(), name, "no such method");
  }
  return run(number, object, scope, arguments);
}

}  // namespace footlight
