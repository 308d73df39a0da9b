#include "input/dx_mouse.h"

#include <algorithm>
#include <utility>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

using platform::MouseEvent;
using platform::MouseEventKind;

CDXMouse::CDXMouse(CWindow* window) : window_(window) { window_->addIPoller(this); }

CDXMouse::~CDXMouse() { window_->removeIPoller(this); }

// A full queue loses moves rather than buttons.
void CDXMouse::tick() {
  for (const MouseEvent& event : platform::current().input().takeMouseEvents()) {
    const bool isMove = event.kind == MouseEventKind::move;
    if (isMove || event.kind == MouseEventKind::doubleClick) position_ = {event.x, event.y};
    if (signals_.size() >= static_cast<std::size_t>(limits::kInputEvents)) {
      guardHit("input events");
      const auto move = std::find_if(signals_.begin(), signals_.end(), [](const Signal& signal) {
        return signal.kind == MouseEventKind::move;
      });
      if (isMove || move == signals_.end()) continue;
      signals_.erase(move);
    }
    signals_.push_back({event.kind, event.button, position_});
  }
}

void CDXMouse::flushSignals(bool deliver) {
  for (const Signal& signal : std::exchange(signals_, {})) {
    if (deliver) this->deliver(signal);
  }
}

void CDXMouse::deliver(const Signal& signal) {
  using Handler = int (CWindow::*)(CXPoint, int);
  constexpr Handler kDown[] = {&CWindow::OnLButtonDown, &CWindow::OnMButtonDown, &CWindow::OnRButtonDown};
  constexpr Handler kUp[] = {&CWindow::OnLButtonUp, &CWindow::OnMButtonUp, &CWindow::OnRButtonUp};
  const auto button = static_cast<std::size_t>(signal.button);
  switch (signal.kind) {
    case MouseEventKind::move:
      window_->OnMouseMove(signal.point, 0);
      break;
    case MouseEventKind::buttonDown:
      (window_->*kDown[button])(signal.point, 0);
      break;
    case MouseEventKind::buttonUp:
      (window_->*kUp[button])(signal.point, 0);
      break;
    case MouseEventKind::doubleClick:
      window_->OnLButtonDblClk(signal.point, 0);
      break;
  }
}

}  // namespace footlight
