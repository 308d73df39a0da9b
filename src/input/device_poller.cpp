#include "input/device_poller.h"

#include <utility>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

using platform::KeyEvent;
using platform::MouseButton;
using platform::MouseEvent;
using platform::MouseEventKind;

void CDevicePoller::tick() {
  platform::InputDevices& devices = platform::current().input();
  for (const MouseEvent& event : devices.takeMouseEvents()) {
    if (event.kind == MouseEventKind::move || event.kind == MouseEventKind::doubleClick) {
      position_ = {event.x, event.y};
    }
    queue(Mouse{event.kind, event.button, position_});
  }
  for (const KeyEvent& event : devices.takeKeyEvents()) {
    const auto key = static_cast<std::size_t>(event.scanCode);
    if (key >= keysDown_.size() || std::exchange(keysDown_[key], event.down) == event.down) continue;
    queue(event);
  }
}

void CDevicePoller::queue(const Signal& signal) {
  if (signals_.size() >= static_cast<std::size_t>(limits::kInputEvents)) {
    guardHit("input events");
    return;
  }
  signals_.push_back(signal);
}

void CDevicePoller::flushSignals(bool deliver) {
  const std::vector<Signal> signals = std::exchange(signals_, {});
  if (!deliver) return;
  for (const Signal& signal : signals) {
    std::visit([this](const auto& event) { this->deliver(event); }, signal);
  }
}

void CDevicePoller::deliver(const Mouse& event) {
  using Handler = int (CWindow::*)(CXPoint, int);
  constexpr Handler kDown[] = {&CWindow::OnLButtonDown, &CWindow::OnMButtonDown, &CWindow::OnRButtonDown};
  constexpr Handler kUp[] = {&CWindow::OnLButtonUp, &CWindow::OnMButtonUp, &CWindow::OnRButtonUp};
  const auto button = static_cast<std::size_t>(event.button);
  switch (event.kind) {
    case MouseEventKind::move:
      window_->OnMouseMove(event.point, 0);
      break;
    case MouseEventKind::buttonDown:
      (window_->*kDown[button])(event.point, 0);
      break;
    case MouseEventKind::buttonUp:
      (window_->*kUp[button])(event.point, 0);
      break;
    case MouseEventKind::doubleClick:
      window_->OnLButtonDblClk(event.point, 0);
      break;
  }
}

void CDevicePoller::deliver(const KeyEvent& event) {
  if (event.down) {
    window_->OnKeyDown(event.scanCode, 0);
  } else {
    window_->OnKeyUp(event.scanCode, 0);
  }
}

}  // namespace footlight
