#pragma once

// Scripted input: a text file whose lines say at which tick what reaches the devices.
//
//     TICK move X Y            TICK down left|middle|right      TICK keydown SCAN
//     TICK dblclick X Y        TICK up   left|middle|right      TICK keyup SCAN
//     TICK joy axis N VALUE    TICK joy button N 0|1
//     TICK keyrepeat SCAN      TICK char CODE                   TICK charrepeat CODE
//     TICK activate 0|1        # a comment, also behind an event
//
// Ticks count from 1. Events of one tick keep the order of their lines; the lines need not be in the order of
// their ticks. A button event happens where the cursor is. The one scripted controller stands at the first
// two ports; its axes are numbered from 0 and go from -1000 to 1000, buttons count from 0.
//
// Characters follow from the keys, as on a plain keyboard. A script with a line `char` (0 types nothing)
// tells them itself, in code page 1250, and also when a held key repeats, as a window does.

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/input_queue.h"
#include "platform/window_event.h"

namespace footlight::platform {

class InputScript {
 public:
  struct Button {
    MouseButton button;
    bool down;
  };
  struct Line {
    std::uint32_t tick;
    // A mouse event here is a move or a double click.
    std::variant<MouseEvent, Button, KeyEvent, CharacterEvent, WindowEvent, ControllerEvent> event;
  };

  static constexpr int kScriptedPorts[] = {0, 1};

  InputScript() = default;

  // Replaces the script by the text's. Otherwise the answer is a message "NAME:LINE: what is wrong" and the
  // script is empty. An empty answer means success.
  std::string parse(std::string_view text, std::string_view name);
  // The same with a file of the machine.
  std::string load(const std::string& machinePath);

  // Hands over the events of a tick; ticks must be given in ascending order.
  void play(std::uint32_t tick, InputQueue& devices, std::vector<WindowEvent>& windowEvents);

  // Whether there is a controller in it.
  bool usesController() const;
  // Whether characters are told in it.
  bool tellsTyping() const;

  const std::vector<Line>& lines() const { return lines_; }

 private:
  std::vector<Line> lines_;
  std::size_t next_ = 0;
};

}  // namespace footlight::platform
