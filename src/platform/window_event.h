#pragma once

namespace footlight::platform {

// What happened to the engine's window since the last pump.
struct WindowEvent {
  enum class Kind {
    activate,  // a: 1 when the window got the player's attention, 0 when it lost it
    move,      // a, b: the new place of the client area's corner
    close,     // the player asks to leave
  };
  Kind kind;
  int a = 0;
  int b = 0;

  friend bool operator==(const WindowEvent&, const WindowEvent&) = default;
};

}  // namespace footlight::platform
