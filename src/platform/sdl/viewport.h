#pragma once

#include "platform/display.h"
#include "platform/input_devices.h"

namespace footlight::platform {

// Where the engine's screen lies in a window of any size: as large as fits with the aspect kept,
// in the middle.
class Viewport {
 public:
  Viewport() = default;
  // Sizes in pixels, all above 0.
  Viewport(int screenWidth, int screenHeight, int windowWidth, int windowHeight);

  const Rect& target() const { return target_; }
  // True when every pixel of the screen becomes a square of whole pixels: such pictures stay sharp.
  bool isWhole() const;
  // The screen's pixel under a place of the window; places beside the picture give the nearest one.
  CursorPosition toScreen(int windowX, int windowY) const;
  // The middle of a screen's pixel in the window.
  CursorPosition toWindow(CursorPosition screen) const;
  Rect toWindow(const Rect& screen) const;

 private:
  int screenWidth_ = 1;
  int screenHeight_ = 1;
  Rect target_{0, 0, 1, 1};
};

}  // namespace footlight::platform
