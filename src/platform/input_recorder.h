#pragma once

// Writes what reaches the devices as a script of events, so that a player's report is a test.

#include <cstdint>
#include <optional>
#include <string>

#include "platform/input_devices.h"
#include "platform/posix/atomic_file.h"
#include "platform/window_event.h"

namespace footlight::platform {

class InputRecorder {
 public:
  // A new file takes the place of an old one of that name at once, and each event reaches it at once.
  explicit InputRecorder(const std::string& machinePath);

  // Why the file could not be made or written; empty while all is well.
  const std::string& failure() const { return file_.failure(); }
  // Events from now on belong to this tick.
  void setTick(std::uint32_t tick) { tick_ = tick; }

  // A reader of the script makes no characters from keys.
  void beginTyping() { write(CharacterEvent{0}); }
  void write(const MouseEvent& event);
  void write(const KeyEvent& event);
  void write(const CharacterEvent& event);
  void write(const ControllerEvent& event);
  // Only activation is written: the rest is no input.
  void write(const WindowEvent& event);

 private:
  void line(const std::string& event);

  AtomicFile file_;
  std::uint32_t tick_ = 1;
  std::optional<CursorPosition> cursor_;  // where a reader of the script has the cursor
};

}  // namespace footlight::platform
