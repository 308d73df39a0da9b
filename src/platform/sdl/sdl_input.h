#pragma once

#include <SDL.h>
#include <optional>

#include "platform/input_queue.h"
#include "platform/sdl/sdl_display.h"

namespace footlight::platform {

// Mouse and keyboard of the desktop. The engine's thread hands the system's events in; the polling
// thread takes them.
class SdlInput : public InputQueue {
 public:
  explicit SdlInput(const SdlDisplay& display) : InputQueue(/*wantsPollingThread=*/true), display_(display) {
    tellTyping();
  }

  // Takes a mouse or keyboard event; others are ignored.
  void handle(const SDL_Event& event);
  // While the window lacks the player's attention the mouse is somebody else's.
  void setFocus(bool focused) { focused_ = focused; }

  void moveCursor(CursorPosition position) override;

 private:
  void handleMotion(const SDL_MouseMotionEvent& event);
  void handleButton(const SDL_MouseButtonEvent& event);
  void handleKey(const SDL_KeyboardEvent& event);
  void handleText(const SDL_TextInputEvent& event);
  void handleController(const SDL_Event& event);
  void handleAxis(int port, const SDL_ControllerAxisEvent& event);
  int portOf(SDL_JoystickID id) const;

  const SdlDisplay& display_;
  bool focused_ = true;
  bool keyRepeats_ = false;                                // the key that went down last is held
  std::array<SDL_GameController*, kPorts> controllers_{};  // closed with SDL
  std::optional<CursorPosition> moved_;  // a motion event to here is the echo of `moveCursor`
};

}  // namespace footlight::platform
