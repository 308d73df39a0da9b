#pragma once

// The window's timer list. It fires callbacks from the main loop: at most once a frame each, and time lost in
// a long frame is not made up. Handlers may add and remove timers freely; one added in a handler first counts
// on the next frame. A receiver that has gone never fires: the list holds it weakly.

#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/limits.h"
#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"

namespace footlight {

class CTimerObject : public CXObject {
 public:
  TimerId id = 0;
  int interval = 0;             // milliseconds between firings; below 0 it never fires
  std::uint64_t count = 0;      // firings so far
  std::uint32_t last = 0;       // clock at the last firing or reset
  std::uint32_t pausedFor = 0;  // milliseconds since `last`, taken at a pause
  CTimerNotificator* notificator = nullptr;
  WeakRef<CXObject> receiver;  // the object behind the notificator
  bool mustBeLive = false;     // a receiver that is not live is passed over

  // Nobody is called any more.
  bool isOver() const { return isToDelete() || !receiver; }
};

class CXTimer : public CXObject {
 public:
  // Gives the id of the new timer, 0 where there are too many. `interval` is in milliseconds; below 0 it
  // never fires. `T` is both the notificator and the engine object whose end ends the timer.
  template <class T>
  TimerId add(int interval, T* notificator, bool mustBeLive = false) {
    return append(interval, notificator, notificator, mustBeLive);
  }

  // Null when there is no such timer or its removal is pending.
  CTimerObject* find(TimerId id) const;
  // Takes effect on the next `domodal`.
  void remove(TimerId id);
  // Starts the interval anew.
  void reset(TimerId id);
  // One frame; gives 0.
  int domodal();
  // Shifts the phase of every timer by the time between the two calls.
  void pause();
  void resume();
  bool isFull() const { return timers_.size() >= static_cast<std::size_t>(limits::kTimers); }
  int getSize() const { return static_cast<int>(timers_.size()); }
  // In the order of their making; those whose removal is pending are among them.
  const std::vector<Owned<CTimerObject>>& timers() const { return timers_; }

  // Stops every timer when false.
  static void enable(bool enabled) { enabled_ = enabled; }
  static bool isEnabled() { return enabled_; }

 private:
  TimerId append(int interval, CTimerNotificator* notificator, CXObject* receiver, bool mustBeLive);
  void fire(CTimerObject* timer);

  static inline bool enabled_ = true;
  static inline TimerId nextId_ = 1;
  std::vector<Owned<CTimerObject>> timers_;
};

}  // namespace footlight
