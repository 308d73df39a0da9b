#pragma once

#include <set>
#include <vector>

#include "platform/memory_display.h"

namespace footlight::platform {

// The display of a machine without a screen. What reached the screen can be read, and faults can be injected.
class HeadlessDisplay : public MemoryDisplay {
 public:
  struct Faults {
    bool refuseOpen = false;         // no display can be opened
    bool refuseFlipChain = false;    // no second buffer to flip to
    bool refuseVideoMemory = false;  // surfaces exist in system memory only
    bool refuseSurfaces = false;     // no off-screen surface at all
    int busyFlips = 0;               // so many flips answer "busy" first
  };
  // One copy to the screen: the target's corner and the rectangle of the source.
  struct Shown {
    int x, y;
    Rect source;
  };

  // The window's client area lies at (x, y) of the desktop.
  HeadlessDisplay(int windowBpp, int windowX, int windowY);

  Faults faults;

  // Every off-screen surface, the back buffer or the screen loses its memory until it is restored.
  void loseSurfaces();
  void loseBackBuffer();
  void loseScreen();
  // From now on `takeShown` gives what was copied to the screen since its last call.
  void recordShown() { recording_ = true; }
  std::vector<Shown> takeShown();
  int flips() const { return flips_; }
  int presents() const { return presents_; }

  Status openWindow(int width, int height) override;
  Status openFullScreen(int width, int height, int bpp) override;
  Status createFlipChain() override;
  Status flip() override;
  std::unique_ptr<Surface> createSurface(int width, int height, bool inVideoMemory) override;
  Status show(int x, int y, Surface& source, const Rect& rect) override;
  void present() override { ++presents_; }

 protected:
  Rect windowOrigin() const override { return {windowX_, windowY_, 0, 0}; }

 private:
  class TrackedSurface;

  int windowX_;
  int windowY_;
  bool recording_ = false;
  std::vector<Shown> shown_;
  std::set<MemorySurface*> surfaces_;  // those that are alive
  int flips_ = 0;
  int presents_ = 0;
};

}  // namespace footlight::platform
