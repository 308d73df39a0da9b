#pragma once

// TIMER: raises ONTICK every so many milliseconds.

#include "foundation/timer_notificator.h"
#include "script/mc_object.h"

namespace footlight {

class CTimerObject;
class CWindow;
class CXTimer;

namespace type {
inline constexpr int kTimer = 2007;
}

enum class TimerSignal { onTick = kFirstOwnSignal, count };

class CMC_Timer : public CMC_Object, public CTimerNotificator {
 public:
  CMC_Timer(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Timer() override;
  static bool isTypeOf(int type) { return type == type::kTimer; }

  bool isEnabled() const { return enabled_; }
  // Each does something only when it changes the state.
  void enable();
  void disable() { enabled_ = false; }
  // Disables this timer and pauses the window's whole timer list; `resume` is the reverse.
  void pause();
  void resume();
  int getTicks() const { return ticks_; }
  // Starts the interval anew and sets the ticks seen.
  void setTicks(int ticks);
  // Milliseconds; counts from the next test on.
  void setElapse(int milliseconds);
  std::unique_ptr<CMC_Object> copy() const override;
  // ELAPSE as text, then TICKS. A timer that is read is enabled and has not ticked.
  void serialize(CXArchive& archive) override;

  void onTimer(TimerId id) override;

 protected:
  void unlink() override;

 private:
  CMC_Timer(const CMC_Timer& other);
  CXTimer* timerList() const;
  void start();

  CWindow* window_;
  bool enabled_ = true;
  int ticks_ = 0;
  int maxTicks_ = 0;
  CXString elapse_;
  TimerId timerId_ = 0;
};

}  // namespace footlight
