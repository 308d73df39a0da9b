#pragma once

#include "script/mc_runner.h"

namespace footlight {

// How the words "run" and "runC" are compared when the object is a behaviour.
enum class RunWords { exact, anyCase };

// The RUN of applications and scenes: an object by name (argument 0, looked up from the scene), a method of
// it by name (argument 1), and the arguments that follow. A behaviour's RUN and RUNC are called directly
// and give nothing.
Result runByName(CMC_ObjectsContainer* scene, const Call& call, RunWords words);

}  // namespace footlight
