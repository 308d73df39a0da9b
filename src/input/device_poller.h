#pragma once

// Turns what the platform's mouse and keyboard report into calls of the window's handlers. `tick` takes the
// events from the devices, `flushSignals` plays them back in the order in which they came.
//
// A button event bears the place of the last move. A held key is reported down once.

#include <array>
#include <variant>
#include <vector>

#include "foundation/geometry.h"
#include "input/input_poller.h"
#include "platform/input_devices.h"

namespace footlight {

class CWindow;

class CDevicePoller : public CInputPoller {
 public:
  explicit CDevicePoller(CWindow* window) : window_(window) {}

  void tick() override;
  void flushSignals(bool deliver) override;

 private:
  struct Mouse {
    platform::MouseEventKind kind;
    platform::MouseButton button;
    CXPoint point;
  };
  using Signal = std::variant<Mouse, platform::KeyEvent>;

  void queue(const Signal& signal);
  void deliver(const Mouse& event);
  void deliver(const platform::KeyEvent& event);

  CWindow* window_;
  CXPoint position_;
  std::array<bool, 256> keysDown_{};
  std::vector<Signal> signals_;
};

}  // namespace footlight
