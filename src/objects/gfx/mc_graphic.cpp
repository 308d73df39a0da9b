#include "objects/gfx/mc_graphic.h"

#include "app/mc_scene.h"
#include "files/archive.h"
#include "files/file_resolver.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Graphic::CMC_Graphic(CMC_ObjectsContainer* container, int type)
    : CMC_Object(CXString(), type), window_(container != nullptr ? container->getWindow() : nullptr) {
  setScene(container);
}

CMC_Graphic::CMC_Graphic(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type),
      asButton_(element->getPropertyBoolValue("ASBUTTON")),
      preload_(element->getPropertyValue("PRELOAD").IsEmpty() || element->getPropertyBoolValue("PRELOAD")),
      window_(container->getWindow()),
      priority_(element->getPropertyIntValue("PRIORITY")),
      monitorCollision_(element->getPropertyBoolValue("MONITORCOLLISION")),
      monitorCollisionAlpha_(element->getPropertyBoolValue("MONITORCOLLISIONALPHA")) {}

void CMC_Graphic::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  if (!isOfFile()) return;
  const CFileResolver* source = file();
  CGraphicsObject* graphic = getGraphic();
  CXString name = source != nullptr ? source->getFileName() : CXString();
  const int place = screen() != nullptr ? screen()->GetPriority(graphic) : kOffScreen;
  bool isOnScreen = place != kOffScreen;
  bool isShown = graphic != nullptr && graphic->isVisible();
  int priority = isOnScreen ? place : priority_;
  bool releases = source != nullptr && source->releaseAfterUse();
  for (bool* flag : {&asButton_, &monitorCollision_, &monitorCollisionAlpha_}) archive.pass(*flag);
  archive.pass(name);
  archive.pass(isOnScreen);
  archive.pass(isShown);
  archive.pass(priority);
  archive.pass(releases);
  archive.pass(preload_);
  if (archive.isStoring() || archive.hasFailed()) return;
  priority_ = priority;
  if (mouseBound_ && window_ != nullptr) window_->registerMouseListener(this, priority_);
  load(name, preload_);
  if (CFileResolver* loaded = file()) loaded->toRelease(releases);
  monitorIfWanted();
  if (isOnScreen && screen() != nullptr && getGraphic() != nullptr) screen()->put(getGraphic(), priority);
  show(isShown);
}

CRefreshScreen* CMC_Graphic::screen() const {
  return window_ != nullptr ? window_->getRefreshScreen() : nullptr;
}

void CMC_Graphic::takePlace(int priority) {
  CGraphicsObject* graphic = getGraphic();
  if (priority == kOffScreen || graphic == nullptr) return;
  screen()->put(graphic, priority);
  monitorIfWanted();
  graphic->setMonitorCollisions(isMonitored());
}

// Collisions

void CMC_Graphic::monitorIfWanted() {
  if (isMonitored()) monitorCollisions(monitorCollisionAlpha_);
}

void CMC_Graphic::monitorCollisions(bool useAlpha) {
  CGraphicsObject* graphic = getGraphic();
  CMC_Scene* scene = CMC_Scene::around(getScene());
  if (graphic != nullptr && scene != nullptr) scene->monitorCollisions(graphic, useAlpha, this);
}

void CMC_Graphic::removeCollisionsMonitoring() {
  CGraphicsObject* graphic = getGraphic();
  CMC_Scene* scene =
      graphic != nullptr && graphic->getMonitorCollisionsFlag() ? CMC_Scene::around(getScene()) : nullptr;
  if (scene != nullptr) scene->removeMonitorCollisions(graphic, this);
}

void CMC_Graphic::signalCollision(SignalIndex signal, CGraphicsObject* a, CGraphicsObject* b,
                                  const CXString& event) {
  if (!isSignalBound(signal) || a != getGraphic() || getScene() == nullptr) return;
  const Ref<CMC_Graphic> self(this);
  const CXString own = getScene()->getGraphicsObjectName(a, true);
  const CXString other = getScene()->getGraphicsObjectName(b, true);
  const CXString head = CXString(signalName(signal)) + "^";
  if (event.IsString() && onSignal(head + event + "^" + other)) return;
  if (!onSignal(head + other)) onSignal(signalName(signal), {own, other});
}

// The mouse

bool CMC_Graphic::verifyBehaviour(const CXString& signal) {
  if (signal.startsWith("ONCLICK") || signal.startsWith("ONRELEASE") || signal == "ONFOCUSON" ||
      signal == "ONFOCUSOFF") {
    focus_ = false;
    mouseBound_ = true;
    if (window_ != nullptr) window_->registerMouseListener(this, priority_);
  }
  return true;
}

void CMC_Graphic::signalButton(SignalIndex signal, int button) { raise(signal, mouseButtonName(button)); }

void CMC_Graphic::forgetMouse() {
  if (window_ != nullptr) window_->unregisterMouseListener(this);
}

}  // namespace footlight
