#include "platform/headless/virtual_clock.h"

#include <thread>

namespace footlight::platform {

VirtualClock::VirtualClock(std::uint32_t start, std::int64_t unixSeconds, bool pacedReal)
    : start_(start), unixStart_(unixSeconds), pacedReal_(pacedReal) {}

void VirtualClock::advance(std::uint32_t milliseconds) {
  elapsed_ += milliseconds;
  if (follower_) follower_(milliseconds);
  if (pacedReal_) std::this_thread::sleep_until(realStart_ + std::chrono::milliseconds(elapsed_.load()));
}

std::uint32_t VirtualClock::ticks() const { return static_cast<std::uint32_t>(start_ + elapsed_); }

std::int64_t VirtualClock::unixSeconds() const {
  return unixStart_ + static_cast<std::int64_t>(elapsed_ / 1000);
}

}  // namespace footlight::platform
