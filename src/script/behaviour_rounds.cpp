#include "script/behaviour_rounds.h"

#include "script/caches.h"
#include "script/mc_condition.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

// True when a break comes out of the lines.
bool runLines(const CodeLines& program, const RunContext& context) {
  const bool areResultsUsed = !caches::isOn();
  for (const auto& entry : program.entries()) {
    if (!watchdog::mayContinue()) return false;
    const Result result = entry->run(context, areResultsUsed);
    if (result.stops()) return result.isBreak();
  }
  return false;
}

}  // namespace

bool CMC_Behaviour::run(CMC_Object* caller, const TextList* arguments, bool checkCondition) {
  if (!mayRun()) return false;
  const DepthGuard depth;
  if (!depth) return false;
  const diagnose::PlaceGuard place;
  const Ref<CMC_Behaviour> self(this);
  const Ref<CMC_Object> keepCaller(caller);
  const Ref<CMC_ObjectsContainer> scope(this->scene());
  if (checkCondition && condition_ && !doesConditionHold()) return false;
  const Ref<const CodeLines> program = lines_;
  if (!program) return false;
  const bool broke = runLines(*program, {this, scope.get(), caller, arguments});
  if (!tempObjects_.empty()) removeTemporaries(scope.get());
  return broke;
}

bool BehaviourRounds::run(const TextList* arguments, bool checkCondition) {
  CMC_Behaviour& behaviour = *behaviour_;
  if (!behaviour.mayRun()) return false;
  const DepthGuard depth;
  if (!depth) return false;
  const diagnose::PlaceGuard place;
  if (scope_.get() != behaviour.scene()) scope_ = Ref<CMC_ObjectsContainer>(behaviour.scene());
  if (checkCondition && behaviour.condition_ && !behaviour.doesConditionHold()) return false;
  if (program_.get() != behaviour.lines_.get()) program_ = behaviour.lines_;
  if (!program_) return false;
  const bool broke = runLines(*program_, {&behaviour, scope_.get(), caller_.get(), arguments});
  if (!behaviour.tempObjects_.empty()) behaviour.removeTemporaries(scope_.get());
  return broke;
}

}  // namespace footlight
