#pragma once

#include <cstdint>

namespace footlight {

// The name of one registration with the window's timer: handed out once, never used again.
using TimerId = std::int64_t;

// Receives the ticks of a timer, on the engine's thread.
class CTimerNotificator {
 public:
  virtual ~CTimerNotificator() = default;
  virtual void onTimer(TimerId id) = 0;
};

}  // namespace footlight
