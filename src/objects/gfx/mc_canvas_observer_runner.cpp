// Scripts' methods of CANVAS_OBSERVER.

#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/mc_canvas_observer.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

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
    {1, "REFRESH", 0, 0, method<onScreen<refresh>>},
    {2, "ADD", 1, 2, method<onScreen<add>>},
    {3, "REMOVE", 1, 1, method<onScreen<remove>>},
    {4, "SETBACKGROUND", 1, 1, method<onScreen<setBackground>>},
    {5, "GETGRAPHICSAT", 2, 6, method<onScreen<getGraphicsAt>>},
    {6, "MOVEBKG", 2, 2, method<onScreen<moveBackground>>},
    {7, "SETBKGPOS", 2, 2, method<onScreen<setBackgroundPosition>>},
    {8, "SAVE", 1, 7, method<save>},
    {9, "ENABLENOTIFY", 1, 1, method<onScreen<enableNotify>>},
    {10, "REDRAW", 0, 0, method<redraw>},
    {11, "GETBPP", 0, 0, method<onScreen<getBpp>>},
    {12, "PASTE", 3, 3, method<onScreen<paste>>},
    {13, "GETGRAPHICSAT2", 2, 6, method<onScreen<getGraphicsAt2>>},
};

}  // namespace

std::span<const Method> methods::canvasObserver() { return kMethods; }

}  // namespace footlight
