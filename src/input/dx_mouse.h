#pragma once

// The mouse: takes the device's events and plays them back as calls of the window's handlers, in their order.
// A button event bears the place of the last move.

#include <vector>

#include "foundation/geometry.h"
#include "input/input_poller.h"
#include "platform/input_devices.h"

namespace footlight {

class CWindow;

class CDXMouse : public CInputPoller {
 public:
  // One of the window's pollers as long as it lives.
  explicit CDXMouse(CWindow* window);
  ~CDXMouse() override;

  void tick() override;
  void flushSignals(bool deliver) override;
  // The last place that a move told, in pixels of the screen.
  CXPoint getPosition() const { return position_; }

 private:
  struct Signal {
    platform::MouseEventKind kind;
    platform::MouseButton button;
    CXPoint point;
  };

  void deliver(const Signal& signal);

  CWindow* window_;
  CXPoint position_;
  std::vector<Signal> signals_;
};

}  // namespace footlight
