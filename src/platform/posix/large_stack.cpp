#include "platform/large_stack.h"

#include <cstddef>
#include <pthread.h>

namespace footlight::platform {

namespace {

#if defined(__has_feature)
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

// The address sanitizer's frames are several times as large.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStackBytes = std::size_t{256} << 20;
#else
constexpr std::size_t kStackBytes = std::size_t{64} << 20;
#endif

void* call(void* function) {
  (*static_cast<const std::function<void()>*>(function))();
  return nullptr;
}

}  // namespace

std::size_t largeStackBytes() { return kStackBytes; }

bool runOnLargeStack(const std::function<void()>& function) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  pthread_t thread{};
  const bool started =
      pthread_attr_setstacksize(&attributes, kStackBytes) == 0 &&
      pthread_create(&thread, &attributes, &call, const_cast<std::function<void()>*>(&function)) == 0;
  pthread_attr_destroy(&attributes);
  return started && pthread_join(thread, nullptr) == 0;
}

}  // namespace footlight::platform
