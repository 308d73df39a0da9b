#pragma once

// Runs of one behaviour in a row, as in a loop: what each of them needs is pinned once.

#include "foundation/depth.h"
#include "script/code_lines.h"
#include "script/mc_behaviour.h"
#include "script/mc_objects_container.h"

namespace footlight {

class BehaviourRounds {
 public:
  // `caller` is what THIS means; it may be null.
  BehaviourRounds(CMC_Behaviour& behaviour, CMC_Object* caller) : behaviour_(&behaviour), caller_(caller) {}
  BehaviourRounds(const BehaviourRounds&) = delete;
  BehaviourRounds& operator=(const BehaviourRounds&) = delete;

  // As `CMC_Behaviour::run`.
  bool run(const TextList* arguments, bool checkCondition);

 private:
  Ref<CMC_Behaviour> behaviour_;
  Ref<CMC_Object> caller_;
  Ref<CMC_ObjectsContainer> scope_;
  Ref<const CodeLines> program_;
};

}  // namespace footlight
