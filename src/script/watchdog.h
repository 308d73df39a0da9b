#pragma once

// Loops that a script makes endless are the script's own matter, but a closed window or the host's own
// patience end them: every 4,096 statements the host is asked whether the run may go on.

#include <functional>

#include "foundation/limits.h"

namespace footlight::watchdog {

inline constexpr int kStatements = limits::usualOrSmall(4096, 16);

// Installs the question; an empty one lets every run go on. It answers false to end all loops of
// the present run.
void use(std::function<bool()> mayContinue);
// Asks the question now; false when the run must end.
bool ask();
inline int statements = 0;
// Counts one statement; false when the run must end.
inline bool mayContinue() { return ++statements < kStatements || ask(); }

}  // namespace footlight::watchdog
