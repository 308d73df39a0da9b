#pragma once

// Starts playables at random moments: the idle animations of a scene. Once a second each entry counts down;
// at 0 its playable starts. Playables are held weakly, an entry whose playable has gone does nothing.

#include <vector>

#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"
#include "gfx/playable.h"

namespace footlight {

class CAnimo;
class CRandomPlayable;
class CUnit6;
class CXTimer;

class CRandomPlayableNotifier {
 public:
  virtual ~CRandomPlayableNotifier() = default;
  // Whether it may start.
  virtual bool onRandomPlayableStarted(CPlayable* /*playable*/, int /*played*/) { return true; }
  // Whether it is to start anew at the next second, outside of the count.
  virtual bool onRandomPlayableFinished(CPlayable* /*playable*/, int /*played*/) { return false; }
};

class CRandomPlayableEntry : public CXObject, public CPlayableObserver {
 public:
  // `rate` is in starts a minute and above 0; `repeats` bounds the starts of a run; an empty event means any.
  CRandomPlayableEntry(CRandomPlayable* owner, CPlayable* playable, double rate, int repeats, CXString event);

  virtual bool isPlaying() const;
  virtual CPlayable* getPlayable() const { return object_ ? playable_ : nullptr; }
  virtual int getSeqTime() const { return played_; }
  virtual void tick();  // a second has gone

  bool onPlayableFinished(CPlayable* finished) override;

 private:
  void draw();
  void start();

  WeakRef<CRandomPlayable> owner_;
  CPlayable* playable_;
  WeakRef<CXObject> object_;
  double rate_;
  int repeats_;
  int countdown_ = 0;
  int target_ = 0;
  int played_ = 0;
  CXString event_;
};

class CRandomPlayable : public CXObject, public CTimerNotificator {
 public:
  // Ticks once a second from now on.
  CRandomPlayable(CWindow* window, CUnit6* unit);
  ~CRandomPlayable() override;
  CRandomPlayable(const CRandomPlayable&) = delete;
  CRandomPlayable& operator=(const CRandomPlayable&) = delete;

  // A rate of 0 or less, or no number, adds nothing.
  virtual void add(CPlayable* playable, double rate, int repeats, CXString event);
  virtual void remove(const CPlayable* playable);
  void onTimer(TimerId id) override;

  // Notifiers outlive this object or take themselves out.
  void addNotifier(CRandomPlayableNotifier* notifier) { notifiers_.push_back(notifier); }
  void removeNotifier(CRandomPlayableNotifier* notifier) { std::erase(notifiers_, notifier); }
  // The last answer; false without notifiers.
  bool notify(CRandomPlayableEntry* entry, bool started);
  CUnit6* getUnit() const { return unit_; }

 private:
  CUnit6* unit_;
  CXTimer* timer_;
  TimerId timerId_ = 0;
  std::vector<Owned<CRandomPlayableEntry>> entries_;
  std::vector<CRandomPlayableNotifier*> notifiers_;
};

}  // namespace footlight
