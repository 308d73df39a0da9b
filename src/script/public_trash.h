#pragma once

// The window's trash for objects that must die after their last callback has returned. Every ten seconds
// those that are marked to be deleted go. The list holds its objects weakly: one that its owner ends earlier
// just drops out.

#include <vector>

#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"

namespace footlight {

class CXTimer;

class CPublicTrash : public CXObject, public CTimerNotificator {
 public:
  static constexpr int kPeriod = 10000;  // milliseconds

  // Registers with the timer; the timer list must outlive the trash or be gone before its next frame.
  explicit CPublicTrash(CXTimer* timer);
  void add(CXObject* object);
  void remove(const CXObject* object);
  int getSize() const { return static_cast<int>(objects_.size()); }
  void onTimer(TimerId id) override;

 private:
  std::vector<WeakRef<CXObject>> objects_;
};

}  // namespace footlight
