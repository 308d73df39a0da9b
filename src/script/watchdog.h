#pragma once

// Loops that a script makes endless are the script's own matter, but a closed window or the host's own
// patience end them: every 4,096 statements, and whenever a thread of the host says so, the host is asked
// whether the run may go on.

#include <atomic>
#include <functional>

#include "foundation/limits.h"

namespace footlight::watchdog {

inline constexpr int kStatements = limits::usualOrSmall(4096, 16);

// Installs the question; an empty one lets every run go on. It answers false to end all loops of
// the present run.
void use(std::function<bool()> mayContinue);
// Asks the question now; false when the run must end.
bool ask();
inline std::atomic<int> statements = 0;
// From any thread: the next statement asks. A call may be lost to a statement that is counted at the same
// moment, so it is to be repeated.
inline void askSoon() { statements.store(kStatements, std::memory_order_relaxed); }
// Counts one statement, or one step of a statement that may take long; false when the run must end. Not one
// atomic addition: that would cost more than the statement.
inline bool mayContinue() {
  const int count = statements.load(std::memory_order_relaxed) + 1;
  statements.store(count, std::memory_order_relaxed);
  return count < kStatements || ask();
}

}  // namespace footlight::watchdog
