#pragma once

// Buffered input. Events wait in bounded queues until a poller takes them. All operations may be called on
// the thread that polls as well as on the engine's thread.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace footlight::platform {

enum class MouseEventKind { move, buttonDown, buttonUp, doubleClick };
enum class MouseButton { left = 0, middle = 1, right = 2 };

struct MouseEvent {
  MouseEventKind kind;
  int x, y;  // pixels of the engine's screen
  MouseButton button = MouseButton::left;

  friend bool operator==(const MouseEvent&, const MouseEvent&) = default;
};

struct KeyEvent {
  int scanCode;  // hardware scan code of set 1
  bool down;
  bool repeated = false;  // held, and told once more at the pace of the player's settings

  friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

// What a key or a sequence of keys types in the player's layout.
struct CharacterEvent {
  unsigned char character;  // code page 1250
  bool repeated = false;

  friend bool operator==(const CharacterEvent&, const CharacterEvent&) = default;
};

// What a game controller's stick or button does. Axes are 0, 1 and 2 for X, Y and Z, from -1000 to 1000, up
// and left being below 0; buttons count from 0 and are 0 or 1.
struct ControllerEvent {
  int port;  // which controller, in the order in which they came
  bool isButton;
  int number;
  int value;

  friend bool operator==(const ControllerEvent&, const ControllerEvent&) = default;
};

struct ControllerState {
  static constexpr int kAxes = 3;
  static constexpr int kButtons = 16;
  static constexpr int kFarthest = 1000;

  std::array<int, kAxes> axes{};
  std::array<bool, kButtons> buttons{};
};

struct CursorPosition {
  int x, y;  // pixels of the engine's screen

  friend bool operator==(const CursorPosition&, const CursorPosition&) = default;
};

class InputDevices {
 public:
  virtual ~InputDevices() = default;
  // Takes what has come since the last call, oldest first.
  virtual std::vector<MouseEvent> takeMouseEvents() = 0;
  virtual std::vector<KeyEvent> takeKeyEvents() = 0;
  virtual std::vector<CharacterEvent> takeCharacters() { return {}; }
  // Whether the device tells what is typed: characters, and keys that repeat. Else both follow from the keys.
  virtual bool tellsTyping() const { return false; }
  // False for a code outside 0 to 255.
  virtual bool isKeyDown(int scanCode) const = 0;
  // How a controller stands now; nothing for a port without one.
  virtual std::optional<ControllerState> controller(int /*port*/) const { return std::nullopt; }
  // Where the cursor is. Moving it makes no mouse event and is the engine's thread's alone.
  virtual CursorPosition cursorPosition() const { return {0, 0}; }
  virtual void moveCursor(CursorPosition) {}
  // Whether a thread shall poll these devices; without one the tick does.
  virtual bool wantsPollingThread() const { return false; }
};

}  // namespace footlight::platform
