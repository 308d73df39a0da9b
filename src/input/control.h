#pragma once

// A control is a widget with observers. What happens to it is told to each of them that is still there, in
// the order in which they came; they run scripts and may end the control.

#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"

namespace footlight {

class CControl;
class CWindow;

class CControlNotifier {
 public:
  virtual ~CControlNotifier() = default;
  virtual void onControlOnMove(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlFocusOn(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlFocusOff(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlClicked(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlReleased(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlAction(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onControlPopup(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onStartDragging(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onDragging(CControl* /*control*/, CXPoint /*point*/) {}
  virtual void onEndDragging(CControl* /*control*/, CXPoint /*point*/) {}
};

class CControl : public CXObject {
 public:
  explicit CControl(CWindow* window) : window_(window) {}
  CControl(const CControl&) = delete;
  CControl& operator=(const CControl&) = delete;

  virtual void Enable(bool enabled) { enabled_ = enabled; }
  bool IsEnabled() const { return enabled_; }
  // `T` is the notifier and the engine object whose end ends the listening. Nobody is listed twice.
  template <class T>
  void addNotifier(T* notifier) {
    addNotifier(notifier, notifier);
  }
  void removeNotifier(const CControlNotifier* notifier);

  virtual void onMouseMove(CXPoint point) { tell(&CControlNotifier::onControlOnMove, point); }
  virtual void onFocusOn(CXPoint point) { tell(&CControlNotifier::onControlFocusOn, point); }
  virtual void onFocusOff(CXPoint point) { tell(&CControlNotifier::onControlFocusOff, point); }
  virtual void onClick(CXPoint point) { tell(&CControlNotifier::onControlClicked, point); }
  virtual void onRelease(CXPoint point) { tell(&CControlNotifier::onControlReleased, point); }
  virtual void onRClick(CXPoint point) { tell(&CControlNotifier::onControlPopup, point); }
  virtual void onAction(CXPoint point) { tell(&CControlNotifier::onControlAction, point); }
  virtual void onStartDragging(CXPoint point) { tell(&CControlNotifier::onStartDragging, point); }
  virtual void onDragging(CXPoint point) { tell(&CControlNotifier::onDragging, point); }
  virtual void onEndDragging(CXPoint point) { tell(&CControlNotifier::onEndDragging, point); }

 protected:
  CWindow* window() const { return window_; }
  void setEnabled(bool enabled) { enabled_ = enabled; }

 private:
  struct Notifier {
    CControlNotifier* notifier;
    WeakRef<CXObject> object;
  };

  void addNotifier(CControlNotifier* notifier, CXObject* object);
  void tell(void (CControlNotifier::*event)(CControl*, CXPoint), CXPoint point);

  CWindow* window_;
  bool enabled_ = true;
  std::vector<Notifier> notifiers_;
};

}  // namespace footlight
