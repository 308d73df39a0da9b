// Scripts' methods of MOUSE.

#include "foundation/arithmetic.h"
#include "foundation/depth.h"
#include "gfx/window.h"
#include "input/cursor_clip.h"
#include "objects/input/mc_mouse.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

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

// Clicks in the handlers of clicks nest so far and no further. Where they branch, the whole nest unwinds
// after some refusals, as that of the runs does.
class ClickGuard {
 public:
  ClickGuard()
      : entered_(depth < limits::kNestedClicks && (refusals < limits::kRefusedClicks || depth == 0)) {
    if (entered_) {
      if (depth++ == 0) refusals = 0;
    } else if (refusals < limits::kRefusedClicks) {
      limitHit(++refusals == limits::kRefusedClicks ? "clicks that branch" : "nested clicks");
    }
  }
  ~ClickGuard() {
    if (entered_) --depth;
  }
  ClickGuard(const ClickGuard&) = delete;
  ClickGuard& operator=(const ClickGuard&) = delete;

  explicit operator bool() const { return entered_; }

 private:
  static inline int depth = 0;
  static inline int refusals = 0;
  bool entered_;
};

// The click takes the whole way of a real one, within this call.
Result simulate(const CMC_Mouse& mouse, const Call& call, Handler ButtonRow::*handler) {
  CWindow* window = mouse.getWindow();
  if (window == nullptr) return {};
  const ClickGuard guard;
  if (!guard) return {};
  const CXString word = call.has(2) ? call.text(2) : CXString("LEFT");
  for (const ButtonRow& row : kButtons) {
    if (word == row.word) (window->*(row.*handler))({call.integer(0), call.integer(1)}, 0);
  }
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

Result setClipRect(CMC_Mouse& /*mouse*/, Call& call) {
  const CXRect rect(call.integer(0), call.integer(1), call.integer(2), call.integer(3));
  if (rect == CXRect()) {
    CCursorClip::release(true);
  } else {
    CCursorClip::set(rect);
  }
  return {};
}

Result lockActiveCursor(CMC_Mouse& mouse, Call& call) {
  if (CWindow* window = mouse.getWindow()) window->lockActiveCursor(call.boolean(0));
  return {};
}

constexpr Method kMethods[] = {
    {1, "SHOW", "", method<show>, "Shows the pointer."},
    {2, "HIDE", "", method<hide>, "Hides the pointer."},
    {3, "ENABLE", "", method<enable>, "Lets the game hear the mouse again; the usual pointer comes back."},
    {4, "DISABLE", "", method<disable>,
     "Lets the game hear the mouse no more; the waiting pointer is shown."},
    {5, "GETPOSX", "-> int", method<getPosX>, "The pointer's place from the left, in pixels."},
    {6, "GETPOSY", "-> int", method<getPosY>, "The pointer's place from the top, in pixels."},
    {7, "GETLASTCLICKPOSX", "-> int", method<getLastClickX>,
     "Where the left button was last pressed, in pixels from the left."},
    {8, "GETLASTCLICKPOSY", "-> int", method<getLastClickY>,
     "Where the left button was last pressed, in pixels from the top."},
    {9, "SET", "shape:text", method<set>, "Gives the pointer the shape ARROW, WAIT or ACTIVE."},
    {10, "SETPOSITION", "x:int, y:int", method<setPosition>, "Puts the pointer there, in pixels."},
    {11, "MOVE", "dx:int, dy:int", method<move>, "Moves the pointer by so many pixels."},
    {12, "CLICK", "x:int, y:int, [button:text]", method<click>,
     "Acts at once as if LEFT, MIDDLE or RIGHT were pressed there; LEFT without the word."},
    {13, "ENABLESIGNAL", "", method<enableSignal>, "Its signals come again."},
    {14, "DISABLESIGNAL", "", method<disableSignal>,
     "Its signals come no more; the rest of the game hears the mouse."},
    {15, "MOUSERELEASE", "x:int, y:int, [button:text]", method<release>,
     "Acts at once as if LEFT, MIDDLE or RIGHT were released there; LEFT without the word."},
    {16, "SETCLIPRECT", "left:int, top:int, right:int, bottom:int", method<setClipRect>,
     "Keeps the pointer within, in pixels, until the scene ends; four zeros let it go."},
    {17, "LOCKACTIVECURSOR", "on:bool", method<lockActiveCursor>,
     "With TRUE the pointer keeps its shape over what can be clicked, with FALSE it changes again."},
};

constexpr auto kSignals = signalTable<MouseSignal>({
    {MouseSignal::onMove, "ONMOVE", "The mouse has moved."},
    {MouseSignal::onClick, "ONCLICK",
     "A button was pressed; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT if that is bound."},
    {MouseSignal::onRelease, "ONRELEASE",
     "A button was released; as ONRELEASE^LEFT, ^MIDDLE or ^RIGHT if that is bound."},
    {MouseSignal::onDblClick, "ONDBLCLICK", "The left button was pressed twice in quick succession."},
});

}  // namespace

extern constinit const ScriptType kMouseType = {
    .number = type::kMouse,
    .idWord = "MOUSE",
    .stringWord = "MOUSE",
    .definitionWord = "MOUSE",
    .meaning = "The mouse and its pointer.",
    .pass = 6,
    .isOnceAChain = true,
    .signals = kSignals,
    .methods = kMethods,
    .make = makeFrom<CMC_Mouse>,
};

}  // namespace footlight
