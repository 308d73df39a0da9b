#include "platform/sdl/sdl_input.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "foundation/code_page.h"
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
    case SDL_TEXTINPUT:
      return handleText(event.text);
    case SDL_CONTROLLERDEVICEADDED:
    case SDL_CONTROLLERDEVICEREMOVED:
    case SDL_CONTROLLERAXISMOTION:
    case SDL_CONTROLLERBUTTONDOWN:
    case SDL_CONTROLLERBUTTONUP:
      return handleController(event);
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
  const bool down = event.type == SDL_KEYDOWN;
  if (down) keyRepeats_ = event.repeat != 0;
  if (code >= 0) put(KeyEvent{code, down, event.repeat != 0});
}

// Of what an input method gives, the characters that the code page lacks are left out.
void SdlInput::handleText(const SDL_TextInputEvent& event) {
  const std::string_view text = event.text;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = start + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
    const auto character = code_page::fromUtf8(text.substr(start, end - start));
    start = end;
    if (character && character->size() == 1)
      put(CharacterEvent{static_cast<unsigned char>(character->front()), keyRepeats_});
  }
}

int SdlInput::portOf(SDL_JoystickID id) const {
  const auto found = std::ranges::find_if(controllers_, [id](SDL_GameController* controller) {
    return controller != nullptr && SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(controller)) == id;
  });
  return found != controllers_.end() ? static_cast<int>(found - controllers_.begin()) : -1;
}

void SdlInput::handleController(const SDL_Event& event) {
  if (event.type == SDL_CONTROLLERDEVICEADDED) {
    const auto free = std::ranges::find(controllers_, nullptr);
    if (free == controllers_.end()) return;
    *free = SDL_GameControllerOpen(event.cdevice.which);
    if (*free != nullptr) connectController(static_cast<int>(free - controllers_.begin()));
    return;
  }
  const int port = portOf(event.cdevice.which);
  if (port < 0) return;
  if (event.type == SDL_CONTROLLERDEVICEREMOVED) {
    SDL_GameControllerClose(std::exchange(controllers_[static_cast<std::size_t>(port)], nullptr));
    disconnectController(port);
  } else if (event.type == SDL_CONTROLLERAXISMOTION) {
    handleAxis(port, event.caxis);
  } else {
    put(ControllerEvent{port, true, event.cbutton.button, event.type == SDL_CONTROLLERBUTTONDOWN ? 1 : 0});
  }
}

// Both triggers are one axis, the left one inwards.
void SdlInput::handleAxis(int port, const SDL_ControllerAxisEvent& event) {
  SDL_GameController* controller = controllers_[static_cast<std::size_t>(port)];
  int axis = event.axis;
  int value = event.value;
  if (axis == SDL_CONTROLLER_AXIS_TRIGGERLEFT || axis == SDL_CONTROLLER_AXIS_TRIGGERRIGHT) {
    axis = 2;
    value = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERLEFT) -
            SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERRIGHT);
  } else if (axis > SDL_CONTROLLER_AXIS_LEFTY) {
    return;  // the second stick
  }
  put(ControllerEvent{port, false, axis, value * ControllerState::kFarthest / SDL_JOYSTICK_AXIS_MAX});
}

void SdlInput::moveCursor(CursorPosition position) {
  InputQueue::moveCursor(position);
  if (display_.window() == nullptr) return;
  const CursorPosition place = display_.toWindow(position);
  moved_ = display_.toScreen(place.x, place.y);
  SDL_WarpMouseInWindow(display_.window(), place.x, place.y);
}

}  // namespace footlight::platform
