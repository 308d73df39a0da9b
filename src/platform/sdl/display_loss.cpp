#include "platform/sdl/display_loss.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <utility>

namespace footlight::platform {

namespace {

constexpr int kStatus = 2;  // of the process

// As Xlib declares them, whose headers nothing else needs.
using Handler = int (*)(void* display);
using SetHandler = Handler (*)(Handler);

std::function<void()> work;

// Xlib ends the process when this returns, by way of all destructors, with other threads at work.
int endProcess(void* /*display*/) {
  if (const std::function<void()> last = std::exchange(work, {})) last();
  std::fflush(nullptr);
  std::_Exit(kStatus);
}

// Only the copy that SDL has loaded counts, and none is loaded for this.
SetHandler findSetter() {
  void* library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_LOCAL | RTLD_NOLOAD);
  return library == nullptr ? nullptr : reinterpret_cast<SetHandler>(dlsym(library, "XSetIOErrorHandler"));
}

}  // namespace

void watchDisplay(std::function<void()> newWork) {
  work = std::move(newWork);
  const SetHandler set = findSetter();
  if (set != nullptr) set(work ? endProcess : nullptr);
}

}  // namespace footlight::platform
