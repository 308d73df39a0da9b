// Scripts' methods of CONDITION and COMPLEXCONDITION.

#include "script/mc_condition.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

bool holds(CMC_BasicCondition& condition, const Call& call) {
  return condition.valid(call.has(0) ? call.boolean(0) : true);
}

Result check(CMC_BasicCondition& condition, Call& call) {
  return Result(CMC_VariableFactory::makeBool(holds(condition, call)));
}

Result breakRun(CMC_BasicCondition& condition, Call& call) {
  return holds(condition, call) ? Result::breakRun() : Result();
}

Result oneBreak(CMC_BasicCondition& condition, Call& call) {
  return holds(condition, call) ? Result::oneBreak() : Result();
}

constexpr Method kMethods[] = {
    {1, "CHECK", "[signals:bool] -> bool", method<check>,
     "Whether it holds; with FALSE it raises no signal, without it as with TRUE it does."},
    {2, "BREAK", "[signals:bool]", method<breakRun>,
     "If it holds, ends the code and all code that called it, up to a LOOP; with FALSE it raises no signal."},
    {3, "ONE_BREAK", "[signals:bool]", method<oneBreak>,
     "If it holds, ends the code alone; with FALSE it raises no signal."},
};

constexpr auto kSignals = signalTable<ConditionSignal>({
    {ConditionSignal::onSuccess, "ONRUNTIMESUCCESS", "It was asked and holds."},
    {ConditionSignal::onFailure, "ONRUNTIMEFAILED", "It was asked and does not hold."},
});

constexpr Property kProperties[] = {
    {"OPERAND1", PropertyKind::text, "", "The left side: a value, a variable or a call."},
    {"OPERATOR", PropertyKind::text, "EQUAL", "EQUAL, NOTEQUAL, LESS, LESSEQUAL, GREATER or GREATEREQUAL."},
    {"OPERAND2", PropertyKind::text, "", "The right side; it is turned into the type of the left one."},
};
constexpr Property kComplexProperties[] = {
    {"CONDITION1", PropertyKind::name, "", "The first condition."},
    {"OPERATOR", PropertyKind::text, "",
     "AND or OR; the second condition is asked only if the first does not settle it."},
    {"CONDITION2", PropertyKind::name, "", "The second condition."},
};

}  // namespace

extern constinit const ScriptType kConditionType = {
    .number = type::kCondition,
    .idWord = "CONDITION",
    .stringWord = "CONDITION",
    .definitionWord = "CONDITION",
    .meaning = "A test of two sides.",
    .pass = 3,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Condition>,
};

extern constinit const ScriptType kComplexConditionType = {
    .number = type::kComplexCondition,
    .idWord = "COMPLEXCONDITION",
    .stringWord = "COMPLEX CONDITION",
    .definitionWord = "COMPLEXCONDITION",
    .meaning = "Two conditions that must both hold, or one of them.",
    .pass = 3,
    .signals = kSignals,
    .properties = kComplexProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_ComplexCondition>,
};

}  // namespace footlight
