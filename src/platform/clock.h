#pragma once

#include <cstdint>

namespace footlight::platform {

// The machine's time. Ticks wrap at 32 bits: compare them by unsigned differences only.
class Clock {
 public:
  virtual ~Clock() = default;

  // Milliseconds since some moment before the engine's start.
  virtual std::uint32_t ticks() const = 0;
  // A fine counter and its frequency in steps a second.
  virtual std::uint64_t counter() const = 0;
  virtual std::uint64_t counterFrequency() const = 0;
  // Wall clock in Unix seconds (UTC).
  virtual std::int64_t unixSeconds() const = 0;
  // Lets milliseconds pass. A virtual clock moves instead of waiting.
  virtual void sleep(std::uint32_t milliseconds) = 0;
};

}  // namespace footlight::platform
