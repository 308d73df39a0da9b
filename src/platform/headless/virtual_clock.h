#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <utility>

#include "platform/clock.h"

namespace footlight::platform {

// Time that moves only when it is told. Any thread may read it.
class VirtualClock : public Clock {
 public:
  // `pacedReal` lets `advance` and `sleep` wait until the machine's time has caught up.
  VirtualClock(std::uint32_t start, std::int64_t unixSeconds, bool pacedReal);

  void advance(std::uint32_t milliseconds);
  // Called with the milliseconds of every advance, after it.
  void follow(std::function<void(std::uint32_t)> follower) { follower_ = std::move(follower); }

  std::uint32_t ticks() const override;
  std::uint64_t counter() const override { return start_ + elapsed_; }
  std::uint64_t counterFrequency() const override { return 1000; }
  std::int64_t unixSeconds() const override;
  void sleep(std::uint32_t milliseconds) override { advance(milliseconds); }

 private:
  const std::uint64_t start_;
  const std::int64_t unixStart_;
  const bool pacedReal_;
  const std::chrono::steady_clock::time_point realStart_ = std::chrono::steady_clock::now();
  std::function<void(std::uint32_t)> follower_;
  std::atomic<std::uint64_t> elapsed_ = 0;  // milliseconds
};

}  // namespace footlight::platform
