#include "objects/gfx/mc_surface.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Surface::CMC_Surface(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type),
      window_(container->getWindow()),
      priority_(element->getPropertyIntValue("PRIORITY")) {}

CRefreshScreen* CMC_Surface::screen() const {
  return window_ != nullptr ? window_->getRefreshScreen() : nullptr;
}

void CMC_Surface::leaveScreen() {
  if (CGraphicsObject* graphic = getGraphic(); graphic != nullptr) {
    graphic->Invalidate();
    if (screen() != nullptr) screen()->remove(graphic);
  }
  if (window_ != nullptr) window_->unregisterMouseListener(this);
}

void CMC_Surface::setAsButton(bool changesCursor, bool announces) {
  changeCursor_ = changesCursor;
  announce_ = announces;
}

bool CMC_Surface::verifyBehaviour(const CXString& signal) {
  if (signal.startsWith("ONCLICK") || signal.startsWith("ONRELEASE") || signal == "ONFOCUSON" ||
      signal == "ONFOCUSOFF") {
    if (window_ != nullptr) window_->registerMouseListener(this, priority_);
  }
  return true;
}

bool CMC_Surface::isHit(CXPoint point) const {
  const CGraphicsObject* graphic = getGraphic();
  return graphic != nullptr && graphic->GetBoundingBox().IsInRect(point);
}

bool CMC_Surface::onMouseMove(CXPoint point) {
  const Ref<CMC_Surface> self(this);
  const bool isOver = isHit(point);
  if (isOver != inside_) {
    inside_ = isOver;
    if (announce_) raise(isOver ? SurfaceSignal::onFocusOn : SurfaceSignal::onFocusOff);
    if (changeCursor_ && isOver) window_->BeginActiveCursor();
    if (changeCursor_ && !isOver) window_->EndActiveCursor();
  }
  return CMouseListener::onMouseMove(point);
}

void CMC_Surface::signalButton(SurfaceSignal signal, int button, CXPoint point) {
  const Ref<CMC_Surface> self(this);
  if (announce_ && isHit(point)) raise(signal, mouseButtonName(button));
}

bool CMC_Surface::onClick(int button, CXPoint point) {
  signalButton(SurfaceSignal::onClick, button, point);
  return false;
}

bool CMC_Surface::onRelease(int button, CXPoint point) {
  signalButton(SurfaceSignal::onRelease, button, point);
  return false;
}

}  // namespace footlight
