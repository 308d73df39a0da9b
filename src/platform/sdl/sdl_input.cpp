#include "platform/sdl/sdl_input.h"

#include "platform/sdl/scan_codes.h"

namespace footlight::platform {

void SdlInput::handle(const SDL_Event& event) {
  switch (event.type) {
    case SDL_MOUSEMOTION:
      return handleMotion(event.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      return handleButton(event.button);
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      return handleKey(event.key);
    default:
      return;
  }
}

void SdlInput::handleMotion(const SDL_MouseMotionEvent& event) {
  const CursorPosition place = display_.toScreen(event.x, event.y);
  const bool isEcho = moved_ == place;
  moved_.reset();
  if (focused_ && !isEcho) put(MouseEvent{MouseEventKind::move, place.x, place.y});
}

void SdlInput::handleButton(const SDL_MouseButtonEvent& event) {
  MouseButton button = MouseButton::left;
  if (event.button == SDL_BUTTON_MIDDLE) {
    button = MouseButton::middle;
  } else if (event.button == SDL_BUTTON_RIGHT) {
    button = MouseButton::right;
  } else if (event.button != SDL_BUTTON_LEFT) {
    return;
  }
  const bool down = event.type == SDL_MOUSEBUTTONDOWN;
  // A button that comes up is always told, so that none stays down for the engine.
  if (down && !focused_) return;
  const CursorPosition place = display_.toScreen(event.x, event.y);
  put(MouseEvent{down ? MouseEventKind::buttonDown : MouseEventKind::buttonUp, place.x, place.y, button});
  if (down && button == MouseButton::left && event.clicks == 2) {
    put(MouseEvent{MouseEventKind::doubleClick, place.x, place.y});
  }
}

void SdlInput::handleKey(const SDL_KeyboardEvent& event) {
  const int code = scanCodeOf(event.keysym.scancode);
  if (code < 0 || event.repeat != 0) return;
  put(KeyEvent{code, event.type == SDL_KEYDOWN});
}

void SdlInput::moveCursor(CursorPosition position) {
  InputQueue::moveCursor(position);
  if (display_.window() == nullptr) return;
  const CursorPosition place = display_.toWindow(position);
  moved_ = display_.toScreen(place.x, place.y);
  SDL_WarpMouseInWindow(display_.window(), place.x, place.y);
}

}  // namespace footlight::platform
