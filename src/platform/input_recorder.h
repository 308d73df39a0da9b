#pragma once

// Writes what reaches the devices as a script of events, so that a player's report is a test.

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "platform/input_devices.h"
#include "platform/window_event.h"

namespace footlight::platform {

class InputRecorder {
 public:
  // The file of the machine is emptied or made.
  explicit InputRecorder(const std::string& machinePath);

  // False when the file could not be made or written.
  bool isGood() const { return file_.good(); }
  // Events from now on belong to this tick.
  void setTick(std::uint32_t tick) { tick_ = tick; }

  void write(const MouseEvent& event);
  void write(const KeyEvent& event);
  void write(const ControllerEvent& event);
  // Only activation is written: the rest is no input.
  void write(const WindowEvent& event);

 private:
  void line(const std::string& event);

  std::ofstream file_;
  std::uint32_t tick_ = 1;
  std::optional<CursorPosition> cursor_;  // where a reader of the script has the cursor
};

}  // namespace footlight::platform
