// Scripts' methods of BEHAVIOUR.

#include <algorithm>

#include "foundation/memory_budget.h"
#include "script/behaviour_rounds.h"
#include "script/lent_texts.h"
#include "script/mc_behaviour.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

constexpr const char* kReturn = "__RETURN__";

CMC_Object* returned(const Call& call) { return call.findAny(kReturn); }

// A text that names an object other than a plain value goes in quotes, so that it arrives in the code
// as a literal.
ArgumentText argumentText(const Call& call, int index) {
  const bool areNumbersNames = CMC_ObjectsContainer::areNumbersNames();
  if (const Number number = call.number(index); number.isWhole() && !areNumbersNames)
    return ArgumentText(number.whole());
  CXString text = call.text(index);
  if (CMC_Variable::beginsLikeNumber(text) && !areNumbersNames) return text;
  const CMC_Object* named = call.findAny(text);
  if (named == nullptr || CMC_Variable::isValueType(named->getType())) return text;
  return CXString("\"") + text + "\"";
}

Result runOnce(CMC_Behaviour& behaviour, Call& call, bool checkCondition) {
  if (!memory::hasRoom()) return {};  // texts go down every nested run as copies
  const LentTexts arguments;
  for (int i = 0; i < call.count(); ++i) arguments.list().push_back(argumentText(call, i));
  if (behaviour.run(nullptr, &arguments.list(), checkCondition)) return Result::breakRun();
  if (!call.isResultUsed()) return {};
  return Result(CMC_VariableFactory::copyVariable(object_cast<CMC_Variable>(returned(call))));
}

Result run(CMC_Behaviour& behaviour, Call& call) { return runOnce(behaviour, call, false); }

Result runC(CMC_Behaviour& behaviour, Call& call) { return runOnce(behaviour, call, true); }

Result runLooped(CMC_Behaviour& behaviour, Call& call) {
  const std::int64_t start = call.integer(0);
  const std::int64_t end = start + call.integer(1);
  const std::int64_t step = call.has(2) ? call.integer(2) : 1;
  TextList arguments(1);
  for (int i = 2; i < call.count(); ++i) arguments.push_back(argumentText(call, i));
  BehaviourRounds rounds(behaviour, nullptr);
  for (std::int64_t counter = start; counter < end && watchdog::mayContinue(); counter += step) {
    arguments[0] = ArgumentText(static_cast<int>(counter));
    if (rounds.run(&arguments, true)) break;
  }
  return Result(Ref<CMC_Object>(returned(call)));
}

Result breakBehaviour(CMC_Behaviour& behaviour, Call& /*call*/) {
  behaviour._break();
  return {};
}

Result enable(CMC_Behaviour& behaviour, Call& /*call*/) {
  behaviour.enable(true);
  return {};
}

Result disable(CMC_Behaviour& behaviour, Call& /*call*/) {
  behaviour.enable(false);
  return {};
}

constexpr Method kMethods[] = {
    {1, "RUN", "[arguments:value...] -> value", method<run>,
     "Runs the code, whatever its CONDITION; the arguments are its $1, $2 and so on. Gives what RETURN "
     "left."},
    {2, "RUNC", "[arguments:value...] -> value", method<runC>, "As RUN, but only if its CONDITION holds."},
    {3, "RUNLOOPED", "start:int, count:int, [step:int], [arguments:value...] -> value", method<runLooped>,
     "Runs, where its CONDITION holds, for each number from the start on, below start + count, in steps, of "
     "1 without the argument: $1 is the number, $2 the step, the arguments follow. Gives what RETURN left."},
    {4, "BREAK", "", method<breakBehaviour>,
     "Ends its timer and takes it out of its scope; the end code of the timer does not run."},
    {5, "ENABLE", "", method<enable>, "Lets it run again."},
    {6, "DISABLE", "", method<disable>, "Lets it run no more, from wherever it is called."},
};

constexpr Property kProperties[] = {
    {"CODE", PropertyKind::code, "", "Its statements."},
    {"CONDITION", PropertyKind::name, "",
     "A condition that must hold when a signal, RUNC, RUNLOOPED or LOOP runs it."},
};

}  // namespace

extern constinit const ScriptType kBehaviourType = {
    .number = type::kBehaviour,
    .idWord = "BEHAVIOUR",
    .stringWord = "BEHAVIOUR",
    .definitionWord = "BEHAVIOUR",
    .meaning = "Code with a name: a procedure, and what signals run.",
    .pass = 1,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Behaviour>,
};

}  // namespace footlight
