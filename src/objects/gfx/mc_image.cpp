#include "objects/gfx/mc_image.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Image::CMC_Image(CMC_ObjectsContainer* container) : CMC_Image(container, Owned<CImage>()) {}

CMC_Image::CMC_Image(CMC_ObjectsContainer* container, Owned<CImage> image)
    : CMC_Graphic(container, type::kImage), image_(std::move(image)) {
  if (const CImage* picture = getImage(); picture != nullptr) startingPosition_ = picture->GetPosition();
}

CMC_Image::CMC_Image(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Graphic(container, element, type::kImage) {
  CMC_Image::load(element->getPropertyValue("FILENAME"), preload_);
  if (CImage* image = getImage(); image != nullptr) {
    image->toRelease(element->getPropertyBoolValue("FLUSHAFTERPLAYED"));
    image->Visible(element->getPropertyBoolValue("VISIBLE"));
    startingPosition_ = image->GetPosition();
    monitorIfWanted();
    if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr) screen()->put(image, getPriority());
  }
  initializeBehaviours(container, element);
}

CMC_Image::~CMC_Image() { CMC_Image::unlink(); }

// The picture

void CMC_Image::load(const CXString& name, bool preload) {
  const int priority = screen() != nullptr ? screen()->GetPriority(getImage()) : kOffScreen;
  giveBack();
  image_.take(managerFor(getScene()), name, [&] { return makeImage(name, preload); });
  takePlace(priority);
}

void CMC_Image::show(bool on) {
  CImage* image = getImage();
  if (image == nullptr) return;
  image->Visible(on);
  startingPosition_ = image->GetPosition();
}

Owned<CImage> CMC_Image::makeImage(const CXString& name, bool preload) const {
  Owned<CImage> image(new CImage(window()));
  image->setFilename(name);
  if (preload && name.IsString()) image->Load(name, true);
  return image;
}

void CMC_Image::giveBack() {
  removeCollisionsMonitoring();
  image_.giveBack(managerFor(getScene()));
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
  forgetMouse();
}

// Collisions

void CMC_Image::onCollision(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(ImageSignal::onCollision, a, b);
}

void CMC_Image::onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(ImageSignal::onCollisionFinished, a, b);
}

// The mouse

void CMC_Image::setAsButton(bool asButton, bool changeCursor) {
  asButton_ = asButton;
  changeCursor_ = changeCursor;
}

bool CMC_Image::hearsMouse() const {
  const CImage* image = getImage();
  return asButton_ && mouseBound_ && image != nullptr && image->isVisible();
}

bool CMC_Image::isHit(CXPoint point) const { return getImage()->GetBoundingBox().IsInRect(point); }

bool CMC_Image::onMouseMove(CXPoint point) {
  if (!hearsMouse() || (!isSignalBound(ImageSignal::onFocusOn) && !isSignalBound(ImageSignal::onFocusOff))) {
    return CMouseListener::onMouseMove(point);
  }
  const Ref<CMC_Image> self(this);
  const bool isOver = isHit(point);
  if (isOver && !focus_) {
    focus_ = true;
    raise(ImageSignal::onFocusOn);
    if (changeCursor_) window()->BeginActiveCursor();
  } else if (!isOver && focus_) {
    focus_ = false;
    raise(ImageSignal::onFocusOff);
    if (changeCursor_) window()->EndActiveCursor();
  }
  return CMouseListener::onMouseMove(point);
}

bool CMC_Image::onClick(int button, CXPoint point) {
  const Ref<CMC_Image> self(this);
  if (hearsMouse() && isSignalBound(ImageSignal::onClick) && isHit(point)) {
    signalButton(ImageSignal::onClick, button);
    if (changeCursor_) window()->EndActiveCursor();
  }
  return CMouseListener::onClick(button, point);
}

bool CMC_Image::onRelease(int button, CXPoint point) {
  const Ref<CMC_Image> self(this);
  if (hearsMouse() && isSignalBound(ImageSignal::onRelease) && isHit(point)) {
    signalButton(ImageSignal::onRelease, button);
  }
  return CMouseListener::onRelease(button, point);
}

}  // namespace footlight
