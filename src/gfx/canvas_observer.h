#pragma once

namespace footlight {

// Hears of each frame of the refresh screen and of the window's focus (see CRefreshScreen::addNotifier).
class CCanvasObserver {
 public:
  virtual ~CCanvasObserver() = default;
  virtual void onInitialUpdate() {}
  virtual void onInitialUpdated() {}
  virtual void onUpdate() {}
  virtual void onUpdated() {}
  virtual void onFocusOn() {}
  virtual void onFocusOff() {}
};

}  // namespace footlight
