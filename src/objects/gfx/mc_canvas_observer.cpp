#include "objects/gfx/mc_canvas_observer.h"

#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"

namespace footlight {

CMC_CanvasObserver::CMC_CanvasObserver(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kCanvasObserver), window_(container->getWindow()) {
  if (CRefreshScreen* screen = getScreen()) screen->addNotifier(this);
  initializeBehaviours(container, element);
}

CMC_CanvasObserver::CMC_CanvasObserver(const CMC_CanvasObserver& other)
    : CMC_Object(other), window_(other.window_) {
  if (CRefreshScreen* screen = getScreen()) screen->addNotifier(this);
}

std::unique_ptr<CMC_Object> CMC_CanvasObserver::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_CanvasObserver(*this));
}

CMC_CanvasObserver::~CMC_CanvasObserver() { CMC_CanvasObserver::unlink(); }

CRefreshScreen* CMC_CanvasObserver::getScreen() const {
  return window_ != nullptr ? window_->getRefreshScreen() : nullptr;
}

void CMC_CanvasObserver::unlink() {
  if (CRefreshScreen* screen = getScreen()) screen->removeNotifier(this);
}

CGraphicsObject* CMC_CanvasObserver::getGraphic() const {
  return window_ != nullptr ? window_->getBackSurface() : nullptr;
}

void CMC_CanvasObserver::signal(CanvasObserverSignal signal) {
  const Ref<CMC_CanvasObserver> self(this);
  raise(signal);
}

}  // namespace footlight
