#include "script/behaviour_rounds.h"

#include "script/caches.h"
#include "script/mc_condition.h"
#include "script/watchdog.h"

namespace footlight {

bool BehaviourRounds::run(const TextList* arguments, bool checkCondition) {
  CMC_Behaviour& behaviour = *behaviour_;
  if (!behaviour.enabled_ || !behaviour.lines_ || behaviour.isDisposed()) return false;
  const DepthGuard depth;
  if (!depth) return false;
  const diagnose::PlaceGuard place;
  if (scope_.get() != behaviour.scene()) scope_ = Ref<CMC_ObjectsContainer>(behaviour.scene());
  if (checkCondition && behaviour.condition_ && !behaviour.doesConditionHold()) return false;
  if (program_.get() != behaviour.lines_.get()) program_ = behaviour.lines_;
  if (!program_) return false;
  const bool broke = runLines(arguments);
  if (!behaviour.tempObjects_.empty()) behaviour.removeTemporaries(scope_.get());
  return broke;
}

bool BehaviourRounds::runLines(const TextList* arguments) const {
  const RunContext context{behaviour_.get(), scope_.get(), caller_.get(), arguments};
  const bool areResultsUsed = !caches::isOn();
  for (const auto& entry : program_->entries()) {
    if (!watchdog::mayContinue()) return false;
    const Result result = entry->run(context, areResultsUsed);
    if (result.stops()) return result.isBreak();
  }
  return false;
}

}  // namespace footlight
