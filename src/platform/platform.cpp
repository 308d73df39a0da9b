#include "platform/platform.h"

#include <cassert>

namespace footlight::platform {

namespace {
Platform* installed = nullptr;
}

void use(Platform* platform) { installed = platform; }

Platform& current() {
  assert(installed != nullptr);
  return *installed;
}

bool isInstalled() { return installed != nullptr; }

}  // namespace footlight::platform
