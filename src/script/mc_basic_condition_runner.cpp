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
     "Whether it holds; with FALSE no signal comes of that."},
    {2, "BREAK", "[signals:bool]", method<breakRun>,
     "If it holds, ends the code and all that called it, up to the loop."},
    {3, "ONE_BREAK", "[signals:bool]", method<oneBreak>, "If it holds, ends the code."},
};

constexpr auto kSignals = signalTable<ConditionSignal>({
    {ConditionSignal::onSuccess, "ONRUNTIMESUCCESS", "It was asked and holds."},
    {ConditionSignal::onFailure, "ONRUNTIMEFAILED", "It was asked and does not hold."},
});

constexpr Property kProperties[] = {
    {"OPERAND1", PropertyKind::text, "", "The left side."},
    {"OPERATOR", PropertyKind::text, "", "EQUAL, NOTEQUAL, LESS, LESSEQUAL, GREATER or GREATEREQUAL."},
    {"OPERAND2", PropertyKind::text, "", "The right side."},
};
constexpr Property kComplexProperties[] = {
    {"CONDITION1", PropertyKind::name, "", "The first condition."},
    {"OPERATOR", PropertyKind::text, "", "AND or OR."},
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
