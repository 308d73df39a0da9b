// Scripts' methods of CONDITION and COMPLEXCONDITION.

#include "script/mc_condition.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

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
    {1, "CHECK", 0, 1, method<check>},
    {2, "BREAK", 0, 1, method<breakRun>},
    {3, "ONE_BREAK", 0, 1, method<oneBreak>},
};

}  // namespace

std::span<const Method> methods::basicCondition() { return kMethods; }

}  // namespace footlight
