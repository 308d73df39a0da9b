#pragma once

#include <cstddef>
#include <functional>

namespace footlight::platform {

// Runs the function to its end on a thread of its own with a stack large enough for the deepest nesting that
// the engine's limits allow, in every build. The caller waits. False when the machine gives no such thread;
// the function was not run then.
bool runOnLargeStack(const std::function<void()>& function);
// The size of that stack.
std::size_t largeStackBytes();

}  // namespace footlight::platform
