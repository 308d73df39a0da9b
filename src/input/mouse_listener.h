#pragma once

#include "foundation/geometry.h"

namespace footlight {

// Hears the mouse through the window (see CWindow::registerMouseListener). A true answer keeps the event from
// the listeners behind. Points are pixels of the screen; buttons are 0 left, 1 middle, 2 right.
class CMouseListener {
 public:
  virtual ~CMouseListener() = default;
  virtual bool onMouseMove(CXPoint /*point*/) { return false; }
  virtual bool onClick(int /*button*/, CXPoint /*point*/) { return false; }
  virtual bool onClick(CXPoint /*point*/) { return false; }  // left button, tried first
  virtual bool onRelease(int /*button*/, CXPoint /*point*/) { return false; }
  virtual bool onRelease(CXPoint /*point*/) { return false; }  // left button, tried first
  virtual bool onDblClick(CXPoint /*point*/) { return false; }
  virtual void onSetFocus() {}
  virtual void onLooseFocus() {}
};

// The word for a button behind the "^" of a signal; empty for a number that is no button's.
constexpr const char* mouseButtonName(int button) {
  constexpr const char* kNames[] = {"LEFT", "MIDDLE", "RIGHT"};
  return button >= 0 && button < 3 ? kNames[button] : "";
}

}  // namespace footlight
