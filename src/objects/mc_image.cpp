#include "objects/mc_image.h"

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "files/resources_manager.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

// Signals of the type, by their index.
constexpr int kOnCollision = 3;
constexpr int kOnCollisionFinished = 4;
constexpr int kOnFocusOn = 5;
constexpr int kOnFocusOff = 6;
constexpr int kOnClick = 7;
constexpr int kOnRelease = 8;

constexpr int kOffScreen = -1;  // the priority of what is not on the screen

}  // namespace

CMC_Image::CMC_Image(CMC_ObjectsContainer* container) : CMC_Image(container, Owned<CImage>()) {}

CMC_Image::CMC_Image(CMC_ObjectsContainer* container, Owned<CImage> image)
    : CMC_Object(CXString(), type::kImage),
      window_(container != nullptr ? container->getWindow() : nullptr),
      image_(image.get()),
      own_(std::move(image)) {
  setScene(container);
  if (const CImage* picture = getImage(); picture != nullptr) startingPosition_ = picture->GetPosition();
}

CMC_Image::CMC_Image(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kImage),
      window_(container->getWindow()),
      priority_(element->getPropertyIntValue("PRIORITY")),
      monitorCollision_(element->getPropertyBoolValue("MONITORCOLLISION")),
      monitorCollisionAlpha_(element->getPropertyBoolValue("MONITORCOLLISIONALPHA")) {
  const CXString preload = element->getPropertyValue("PRELOAD");
  CMC_Image::load(element->getPropertyValue("FILENAME"), preload.IsEmpty() || preload.toBool());
  if (CImage* image = getImage(); image != nullptr) {
    image->toRelease(element->getPropertyBoolValue("FLUSHAFTERPLAYED"));
    image->Visible(element->getPropertyBoolValue("VISIBLE"));
    startingPosition_ = image->GetPosition();
    if (isMonitored()) monitorCollisions(monitorCollisionAlpha_);
    if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr) screen()->put(image, priority_);
  }
  asButton_ = element->getPropertyBoolValue("ASBUTTON");
  initializeBehaviours(container, element);
}

CMC_Image::~CMC_Image() { CMC_Image::unlink(); }

// --- the picture
// -------------------------------------------------------------------------------------------------

CRefreshScreen* CMC_Image::screen() const {
  return window_ != nullptr ? window_->getRefreshScreen() : nullptr;
}

// Only scenes share pictures.
CResourcesManager* CMC_Image::manager() const {
  const CMC_ObjectsContainer* container = getScene();
  if (container == nullptr || container->getType() != type::kScene) return nullptr;
  const CUnit6* unit = CMC_Scene::getDefUnit();
  return unit != nullptr ? unit->getResourcesManager() : nullptr;
}

void CMC_Image::load(const CXString& name, bool preload) {
  CResourcesManager* resources = manager();
  const int priority = screen() != nullptr ? screen()->GetPriority(getImage()) : kOffScreen;
  if (resources != nullptr && name.IsString()) {
    takeShared(resources, name, preload);
  } else {
    makeOwn(resources, name, preload);
  }
  CImage* image = getImage();
  if (priority == kOffScreen || image == nullptr) return;
  screen()->put(image, priority);
  if (isMonitored()) monitorCollisions(monitorCollisionAlpha_);
  image->setMonitorCollisions(isMonitored());
}

void CMC_Image::takeShared(CResourcesManager* resources, const CXString& name, bool preload) {
  giveBack();
  CFileResolver* known = resources->get(name);
  auto* shared = dynamic_cast<CImage*>(known);
  if (known != nullptr && shared == nullptr)
    resources->remove(known);  // the file is something else to others
  if (shared == nullptr) {
    shared = makeImage(name, preload).release();
    resources->add(shared);
  }
  image_ = shared;
}

void CMC_Image::makeOwn(CResourcesManager* resources, const CXString& name, bool preload) {
  giveBack();
  own_ = makeImage(name, preload);
  image_ = own_.get();
  if (resources != nullptr) resources->add(own_.release());
}

Owned<CImage> CMC_Image::makeImage(const CXString& name, bool preload) const {
  Owned<CImage> image(new CImage(window_));
  image->setFilename(name);
  if (preload && name.IsString()) image->Load(name, true);
  return image;
}

// Lets the picture go: to the manager, which ends it after its last user, or to its end.
void CMC_Image::giveBack() {
  CImage* image = getImage();
  removeCollisionsMonitoring();
  if (image != nullptr && own_ == nullptr) {
    if (CResourcesManager* resources = manager(); resources != nullptr) resources->remove(image);
  }
  if (own_ != nullptr) own_->retire();
  own_.reset();
  image_ = nullptr;
}

std::unique_ptr<CMC_Object> CMC_Image::copy() const {
  const CImage* image = getImage();
  if (image == nullptr) return nullptr;
  Owned<CImage> picture(static_cast<CImage*>(image->clone().release()));
  // The pixels are shared by count, so the clone is no user of the file: nobody would give that use back.
  if (screen() != nullptr && screen()->getIndex(image) >= 0)
    screen()->put(picture.get(), screen()->GetPriority(image));
  return std::make_unique<CMC_Image>(getScene(), std::move(picture));
}

bool CMC_Image::done(bool keep) {
  giveBack();
  return CMC_Object::done(keep);
}

void CMC_Image::unlink() {
  giveBack();
  if (window_ != nullptr) window_->unregisterMouseListener(this);
}

// --- collisions
// ----------------------------------------------------------------------------------------------------

// The scene around the object; a class instance stands in its own scope within one.
CMC_Scene* CMC_Image::level() const {
  CMC_ObjectsContainer* container = getScene();
  while (container != nullptr && object_cast<CMC_Scene>(container) == nullptr)
    container = container->getParent();
  return object_cast<CMC_Scene>(container);
}

void CMC_Image::monitorCollisions(bool useAlpha) {
  CImage* image = getImage();
  CMC_Scene* scene = level();
  if (image != nullptr && scene != nullptr) scene->monitorCollisions(image, useAlpha, this);
}

void CMC_Image::removeCollisionsMonitoring() {
  CImage* image = getImage();
  CMC_Scene* scene = image != nullptr && image->getMonitorCollisionsFlag() ? level() : nullptr;
  if (scene != nullptr) scene->removeMonitorCollisions(image, this);
}

void CMC_Image::signalCollision(int index, const char* signal, CGraphicsObject* a, CGraphicsObject* b) {
  if (!isSignalBound(index) || a != getImage() || getScene() == nullptr) return;
  const Ref<CMC_Image> self(this);
  const CXString own = getScene()->getGraphicsObjectName(a, true);
  const CXString other = getScene()->getGraphicsObjectName(b, true);
  if (!onSignal(CXString(signal) + "^" + other)) onSignal(signal, {own, other});
}

void CMC_Image::onCollision(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(kOnCollision, "ONCOLLISION", a, b);
}

void CMC_Image::onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(kOnCollisionFinished, "ONCOLLISIONFINISHED", a, b);
}

// --- the mouse
// ---------------------------------------------------------------------------------------------------

void CMC_Image::setAsButton(bool asButton, bool changeCursor) {
  asButton_ = asButton;
  changeCursor_ = changeCursor;
}

bool CMC_Image::verifyBehaviour(const CXString& signal) {
  if (signal.startsWith("ONCLICK") || signal.startsWith("ONRELEASE") || signal == "ONFOCUSON" ||
      signal == "ONFOCUSOFF") {
    focus_ = false;
    mouseBound_ = true;
    if (window_ != nullptr) window_->registerMouseListener(this, priority_);
  }
  return true;
}

bool CMC_Image::hearsMouse() const {
  const CImage* image = getImage();
  return asButton_ && mouseBound_ && image != nullptr && image->isVisible();
}

bool CMC_Image::isHit(CXPoint point) const { return getImage()->GetBoundingBox().IsInRect(point); }

bool CMC_Image::onMouseMove(CXPoint point) {
  if (!hearsMouse() || (!isSignalBound(kOnFocusOn) && !isSignalBound(kOnFocusOff))) {
    return CMouseListener::onMouseMove(point);
  }
  const Ref<CMC_Image> self(this);
  const bool isOver = isHit(point);
  if (isOver && !focus_) {
    focus_ = true;
    onSignal("ONFOCUSON");
    if (changeCursor_) window_->BeginActiveCursor();
  } else if (!isOver && focus_) {
    focus_ = false;
    onSignal("ONFOCUSOFF");
    if (changeCursor_) window_->EndActiveCursor();
  }
  return CMouseListener::onMouseMove(point);
}

// The signal with the button's name, else the plain one.
void CMC_Image::signalButton(const char* signal, int button) {
  if (!onSignal(CXString(signal) + "^" + mouseButtonName(button))) onSignal(signal);
}

bool CMC_Image::onClick(int button, CXPoint point) {
  const Ref<CMC_Image> self(this);
  if (hearsMouse() && isSignalBound(kOnClick) && isHit(point)) {
    signalButton("ONCLICK", button);
    if (changeCursor_) window_->EndActiveCursor();
  }
  return CMouseListener::onClick(button, point);
}

bool CMC_Image::onRelease(int button, CXPoint point) {
  const Ref<CMC_Image> self(this);
  if (hearsMouse() && isSignalBound(kOnRelease) && isHit(point)) {
    signalButton("ONRELEASE", button);
  }
  return CMouseListener::onRelease(button, point);
}

}  // namespace footlight
