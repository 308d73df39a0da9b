#pragma once

// Buffered input. Events wait in bounded queues until a poller takes them.

#include <cstdint>
#include <span>
#include <vector>

namespace footlight::platform {

enum class MouseEventKind { move, buttonDown, buttonUp, doubleClick };
enum class MouseButton { left = 0, middle = 1, right = 2 };

struct MouseEvent {
  MouseEventKind kind;
  int x, y;  // pixels of the engine's screen
  MouseButton button = MouseButton::left;
};

struct KeyEvent {
  int scanCode;  // hardware scan code of set 1
  bool down;
};

class InputDevices {
 public:
  virtual ~InputDevices() = default;
  // Takes what has come since the last call, oldest first.
  virtual std::vector<MouseEvent> takeMouseEvents() = 0;
  virtual std::vector<KeyEvent> takeKeyEvents() = 0;
  virtual bool isKeyDown(int scanCode) const = 0;
};

}  // namespace footlight::platform
