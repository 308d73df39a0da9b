// Scripts' methods of CANVAS_OBSERVER.

#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/mc_canvas_observer.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// A method on the screen; a window without one makes it a silent null.
template <Result (*F)(CRefreshScreen&, Call&)>
Result onScreen(CMC_CanvasObserver& object, Call& call) {
  CRefreshScreen* screen = object.getScreen();
  return screen != nullptr ? F(*screen, call) : Result();
}

void refreshAll(CRefreshScreen& screen) { screen.Invalidate(static_cast<CXRect*>(nullptr)); }

Result refresh(CRefreshScreen& screen, Call& /*call*/) {
  refreshAll(screen);
  return {};
}

Result add(CRefreshScreen& screen, Call& call) {
  if (CGraphicsObject* object = graphicsArgument(call, 0)) screen.put(object, call.integer(1));
  return {};
}

Result remove(CRefreshScreen& screen, Call& call) {
  if (CGraphicsObject* object = graphicsArgument(call, 0)) screen >> object;
  return {};
}

// A name that is no picture is the name of a file.
Result setBackground(CRefreshScreen& screen, Call& call) {
  const CXString name = call.text(0);
  CGraphicsObject* object = call.scope() != nullptr ? call.scope()->getGraphicsObject(name) : nullptr;
  if (object != nullptr) {
    screen.SetBackground(object);
  } else {
    screen.SetBackground(name);
  }
  refreshAll(screen);
  return {};
}

CGraphicsObject* graphicsAt(CRefreshScreen& screen, const Call& call) {
  const int least = call.has(3) ? call.integer(3) : -1;
  const int most = call.has(4) ? call.integer(4) : -1;
  return screen.getGraphicsAt(call.integer(0), call.integer(1), call.boolean(2), least, most,
                              call.boolean(5));
}

Result nameAt(CRefreshScreen& screen, const Call& call, bool parentsToo) {
  const CGraphicsObject* found = graphicsAt(screen, call);
  if (found == nullptr || call.scope() == nullptr) return Factory::makeString("NULL");
  return Factory::makeString(call.scope()->getGraphicsObjectName(found, parentsToo));
}

Result getGraphicsAt(CRefreshScreen& screen, Call& call) { return nameAt(screen, call, false); }

Result getGraphicsAt2(CRefreshScreen& screen, Call& call) { return nameAt(screen, call, true); }

Result moveBackground(CRefreshScreen& screen, Call& call) {
  if (CDirectDrawSurface* background = screen.getBackgroundIfc())
    background->Move(call.integer(0), call.integer(1));
  refreshAll(screen);
  return {};
}

Result setBackgroundPosition(CRefreshScreen& screen, Call& call) {
  if (CDirectDrawSurface* background = screen.getBackgroundIfc())
    background->SetPosition(call.integer(0), call.integer(1));
  refreshAll(screen);
  return {};
}

Result save(CMC_CanvasObserver& object, Call& call) {
  const CWindow* window = object.getWindow();
  if (window != nullptr && window->getBackSurface() != nullptr) saveCopy(*window->getBackSurface(), call);
  return {};
}

Result enableNotify(CRefreshScreen& screen, Call& call) {
  screen.enableNotifyFlag(call.boolean(0));
  return {};
}

Result redraw(CMC_CanvasObserver& object, Call& /*call*/) {
  if (object.getScreen() == nullptr) return {};
  refreshAll(*object.getScreen());
  object.getWindow()->Redraw();
  return {};
}

Result getBpp(CRefreshScreen& screen, Call& /*call*/) { return Factory::makeInteger(screen.getBpp()); }

Result paste(CRefreshScreen& screen, Call& call) {
  CGraphicsObject* object = graphicsArgument(call, 0);
  CDirectDrawSurface* background = screen.getBackgroundIfc();
  if (object == nullptr || background == nullptr) return {};
  const CXPoint place = object->GetPosition();
  const CXRect clip = object->GetClippingRect();
  object->placeAt({call.integer(1), call.integer(2)});
  object->redraw(background);
  object->placeAt(place);
  object->SetClippingRect(clip);
  return {};
}

constexpr Method kMethods[] = {
    {1, "REFRESH", "", method<onScreen<refresh>>, "Draws the whole screen anew with the next frame."},
    {2, "ADD", "picture:name, [priority:int]", method<onScreen<add>>,
     "Puts a picture on the screen; higher priorities lie on top, 0 without the argument."},
    {3, "REMOVE", "picture:name", method<onScreen<remove>>, "Takes a picture off the screen."},
    {4, "SETBACKGROUND", "picture:text", method<onScreen<setBackground>>,
     "Sets the background: a picture by its name, else the file of that name."},
    {5, "GETGRAPHICSAT", "x:int, y:int, [visible:bool], [least:int], [most:int], [ignoreAlpha:bool] -> text",
     method<onScreen<getGraphicsAt>>,
     "The name of the uppermost picture at a place, \"NULL\" for none. Visible TRUE leaves out hidden ones; "
     "least and most bound the priority, -1 or nothing for no bound; ignoreAlpha TRUE counts transparent "
     "pixels too."},
    {6, "MOVEBKG", "dx:int, dy:int", method<onScreen<moveBackground>>,
     "Moves the background by so many pixels."},
    {7, "SETBKGPOS", "x:int, y:int", method<onScreen<setBackgroundPosition>>,
     "Puts the background's left upper corner there, in pixels."},
    {8, "SAVE", "file:file, [scaleX:real], [scaleY:real], [left:int], [top:int], [right:int], [bottom:int]",
     method<save>,
     "Writes the screen to a picture file, or a part of it in pixels; the scales make it smaller or greater, "
     "1 without them."},
    {9, "ENABLENOTIFY", "on:bool", method<onScreen<enableNotify>>,
     "TRUE lets the signals of drawing come, FALSE keeps them back, as at the start."},
    {10, "REDRAW", "", method<redraw>, "Draws the whole screen at once."},
    {11, "GETBPP", "-> int", method<onScreen<getBpp>>, "How many bits a pixel of the screen has."},
    {12, "PASTE", "picture:name, x:int, y:int", method<onScreen<paste>>,
     "Draws a picture into the background at a place, in pixels; the picture itself stays where it is."},
    {13, "GETGRAPHICSAT2",
     "x:int, y:int, [visible:bool], [least:int], [most:int], [ignoreAlpha:bool] -> text",
     method<onScreen<getGraphicsAt2>>,
     "As GETGRAPHICSAT, and knows the names of pictures of the levels above too."},
};

constexpr auto kSignals = signalTable<CanvasObserverSignal>({
    {CanvasObserverSignal::onInitialUpdate, "ONINITIALUPDATE",
     "The first picture of the scene is about to be drawn."},
    {CanvasObserverSignal::onUpdate, "ONUPDATE", "A picture is about to be drawn."},
    {CanvasObserverSignal::onUpdated, "ONUPDATED", "A picture was drawn."},
    {CanvasObserverSignal::onWindowFocusOn, "ONWINDOWFOCUSON",
     "The game's window has become the active one."},
    {CanvasObserverSignal::onWindowFocusOff, "ONWINDOWFOCUSOFF", "Another window has become the active one."},
    {CanvasObserverSignal::onInitialUpdated, "ONINITIALUPDATED", "The first picture of the scene was drawn."},
});

}  // namespace

extern constinit const ScriptType kCanvasObserverType = {
    .number = type::kCanvasObserver,
    .idWord = "CANVASOBSERVER",
    .stringWord = "CANVAS OBSERVER",
    .definitionWord = "CANVAS_OBSERVER",
    .otherWord = "CANVASOBSERVER",
    .meaning = "The screen: its background, what is on it, and when it is drawn.",
    .pass = 6,
    .isOnceAChain = true,
    .signals = kSignals,
    .methods = kMethods,
    .make = makeFrom<CMC_CanvasObserver>,
};

}  // namespace footlight
