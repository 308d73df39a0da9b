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
  // False while it wants no ticks of those timers that were added for a live receiver only.
  virtual bool isLive() const { return true; }
};

}  // namespace footlight
