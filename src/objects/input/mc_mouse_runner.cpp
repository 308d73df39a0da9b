// Scripts' methods of MOUSE.

#include "foundation/arithmetic.h"
#include "foundation/depth.h"
#include "gfx/window.h"
#include "objects/input/mc_mouse.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

Result show(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.show();
  return {};
}

Result hide(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.hide();
  return {};
}

Result enable(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.enable();
  return {};
}

Result disable(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.disable();
  return {};
}

Result getPosX(CMC_Mouse& mouse, Call& /*call*/) { return Factory::makeInteger(mouse.getPosition().x); }
Result getPosY(CMC_Mouse& mouse, Call& /*call*/) { return Factory::makeInteger(mouse.getPosition().y); }
Result getLastClickX(CMC_Mouse& mouse, Call& /*call*/) {
  return Factory::makeInteger(mouse.getLastClick().x);
}
Result getLastClickY(CMC_Mouse& mouse, Call& /*call*/) {
  return Factory::makeInteger(mouse.getLastClick().y);
}

Result set(CMC_Mouse& mouse, Call& call) {
  mouse.set(call.text(0));
  return {};
}

Result setPosition(CMC_Mouse& mouse, Call& call) {
  mouse.setPosition(call.integer(0), call.integer(1));
  return {};
}

Result move(CMC_Mouse& mouse, Call& call) {
  const CXPoint position = mouse.getPosition();
  mouse.setPosition(wrap_add(call.integer(0), position.x), wrap_add(call.integer(1), position.y));
  return {};
}

using Handler = int (CWindow::*)(CXPoint, int);
struct ButtonRow {
  const char* word;
  Handler down;
  Handler up;
};
constexpr ButtonRow kButtons[] = {
    {"LEFT", &CWindow::OnLButtonDown, &CWindow::OnLButtonUp},
    {"MIDDLE", &CWindow::OnMButtonDown, &CWindow::OnMButtonUp},
    {"RIGHT", &CWindow::OnRButtonDown, &CWindow::OnRButtonUp},
};

// The click takes the whole way of a real one, within this call; clicks in its handlers nest so far and no
// further.
Result simulate(const CMC_Mouse& mouse, const Call& call, Handler ButtonRow::*handler) {
  static int depth = 0;
  CWindow* window = mouse.getWindow();
  if (window == nullptr) return {};
  if (depth >= limits::kNestedClicks) {
    limitHit("nested clicks");
    return {};
  }
  ++depth;
  const CXString word = call.has(2) ? call.text(2) : CXString("LEFT");
  for (const ButtonRow& row : kButtons) {
    if (word == row.word) (window->*(row.*handler))({call.integer(0), call.integer(1)}, 0);
  }
  --depth;
  return {};
}

Result click(CMC_Mouse& mouse, Call& call) { return simulate(mouse, call, &ButtonRow::down); }

Result release(CMC_Mouse& mouse, Call& call) { return simulate(mouse, call, &ButtonRow::up); }

Result enableSignal(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.enableSignals(true);
  return {};
}

Result disableSignal(CMC_Mouse& mouse, Call& /*call*/) {
  mouse.enableSignals(false);
  return {};
}

Result setClipRect(CMC_Mouse& mouse, Call& call) {
  const CXRect rect(call.integer(0), call.integer(1), call.integer(2), call.integer(3));
  if (rect == CXRect()) {
    CMC_Mouse::reset(true);
  } else {
    mouse.setClipRect(rect);
  }
  return {};
}

Result lockActiveCursor(CMC_Mouse& mouse, Call& call) {
  if (CWindow* window = mouse.getWindow()) window->lockActiveCursor(call.boolean(0));
  return {};
}

constexpr Method kMethods[] = {
    {1, "SHOW", 0, 0, method<show>},
    {2, "HIDE", 0, 0, method<hide>},
    {3, "ENABLE", 0, 0, method<enable>},
    {4, "DISABLE", 0, 0, method<disable>},
    {5, "GETPOSX", 0, 0, method<getPosX>},
    {6, "GETPOSY", 0, 0, method<getPosY>},
    {7, "GETLASTCLICKPOSX", 0, 0, method<getLastClickX>},
    {8, "GETLASTCLICKPOSY", 0, 0, method<getLastClickY>},
    {9, "SET", 1, 1, method<set>},
    {10, "SETPOSITION", 2, 2, method<setPosition>},
    {11, "MOVE", 2, 2, method<move>},
    {12, "CLICK", 2, 3, method<click>},
    {13, "ENABLESIGNAL", 0, 0, method<enableSignal>},
    {14, "DISABLESIGNAL", 0, 0, method<disableSignal>},
    {15, "MOUSERELEASE", 2, 3, method<release>},
    {16, "SETCLIPRECT", 4, 4, method<setClipRect>},
    {17, "LOCKACTIVECURSOR", 1, 1, method<lockActiveCursor>},
};

}  // namespace

std::span<const Method> methods::mouse() { return kMethods; }

}  // namespace footlight
