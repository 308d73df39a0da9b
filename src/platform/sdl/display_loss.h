#pragma once

#include <functional>

namespace footlight::platform {

// Watches the connection to an X server, which ends the process when it breaks: `work` is called right before
// that, on the thread that noticed. An empty function ends the watch. Does nothing on other displays. To be
// called while SDL's video is up.
void watchDisplay(std::function<void()> work);

}  // namespace footlight::platform
