#include "platform/sdl/viewport.h"

#include <algorithm>
#include <cstdint>

namespace footlight::platform {

namespace {

// value * numerator / denominator, rounded down, in 64 bits.
int scaled(std::int64_t value, int numerator, int denominator) {
  const std::int64_t product = value * numerator;
  const std::int64_t quotient = product / denominator;
  return static_cast<int>(product % denominator < 0 ? quotient - 1 : quotient);
}

}  // namespace

Viewport::Viewport(int screenWidth, int screenHeight, int windowWidth, int windowHeight)
    : screenWidth_(screenWidth), screenHeight_(screenHeight) {
  const bool boundByWidth =
      std::int64_t{windowWidth} * screenHeight <= std::int64_t{windowHeight} * screenWidth;
  const int width = boundByWidth ? windowWidth : std::max(1, scaled(windowHeight, screenWidth, screenHeight));
  const int height =
      boundByWidth ? std::max(1, scaled(windowWidth, screenHeight, screenWidth)) : windowHeight;
  const int left = (windowWidth - width) / 2;
  const int top = (windowHeight - height) / 2;
  target_ = {left, top, left + width, top + height};
}

bool Viewport::isWhole() const {
  const int width = target_.right - target_.left;
  const int height = target_.bottom - target_.top;
  return width % screenWidth_ == 0 && height % screenHeight_ == 0 &&
         width / screenWidth_ == height / screenHeight_;
}

CursorPosition Viewport::toScreen(int windowX, int windowY) const {
  const int x = scaled(std::int64_t{windowX} - target_.left, screenWidth_, target_.right - target_.left);
  const int y = scaled(std::int64_t{windowY} - target_.top, screenHeight_, target_.bottom - target_.top);
  return {std::clamp(x, 0, screenWidth_ - 1), std::clamp(y, 0, screenHeight_ - 1)};
}

CursorPosition Viewport::toWindow(CursorPosition screen) const {
  const Rect square = toWindow(Rect{screen.x, screen.y, screen.x + 1, screen.y + 1});
  return {(square.left + square.right) / 2, (square.top + square.bottom) / 2};
}

Rect Viewport::toWindow(const Rect& screen) const {
  const int width = target_.right - target_.left;
  const int height = target_.bottom - target_.top;
  return {target_.left + scaled(screen.left, width, screenWidth_),
          target_.top + scaled(screen.top, height, screenHeight_),
          target_.left + scaled(screen.right, width, screenWidth_),
          target_.top + scaled(screen.bottom, height, screenHeight_)};
}

}  // namespace footlight::platform
