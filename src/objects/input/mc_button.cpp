#include "objects/input/mc_button.h"

#include <algorithm>

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "files/archive.h"
#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/sound/mc_sound.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Button::CMC_Button(CMC_ObjectsContainer* container, Owned<CButton> button, CXString name)
    : CMC_Object(std::move(name), type::kButton), button_(std::move(button)) {
  setScene(container);
  button_->addNotifier(this);
}

CMC_Button::CMC_Button(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kButton),
      accent_(element->getPropertyValue("ACCENT")),
      gfxStandard_(element->getPropertyValue("GFXSTANDARD")),
      gfxOnMove_(element->getPropertyValue("GFXONMOVE")),
      gfxOnClick_(element->getPropertyValue("GFXONCLICK")),
      sndStandard_(element->getPropertyValue("SNDSTANDARD")),
      sndOnMove_(element->getPropertyValue("SNDONMOVE")),
      sndOnClick_(element->getPropertyValue("SNDONCLICK")),
      drag_(element->getPropertyValue("DRAG")),
      rect_(element->getPropertyValue("RECT")),
      enable_(element->getPropertyBoolValue("ENABLE")),
      draggable_(element->getPropertyBoolValue("DRAGGABLE")),
      priority_(element->getPropertyIntValue("PRIORITY")) {
  createButton();
  if (button_) button_->SYN();
  initializeBehaviours(container, element);
}

CMC_Button::~CMC_Button() = default;

std::unique_ptr<CMC_Button> CMC_Button::makeBare(CMC_ObjectsContainer* container, CXString name) {
  if (container->getWindow() == nullptr) return nullptr;
  Owned<CButton> button(new CButton(container->getWindow(), CXRect()));
  CUnit6* unit = CMC_Scene::getDefUnit();
  button->setUnit(unit, unit);
  return std::make_unique<CMC_Button>(container, std::move(button), std::move(name));
}

void CMC_Button::unlink() {
  if (isDragged_) setDraggedName(CXString());
  button_.reset();
}

std::unique_ptr<CMC_Object> CMC_Button::copy() const {
  if (!button_) return nullptr;
  Owned<CButton> button(static_cast<CButton*>(button_->clone().release()));
  return std::make_unique<CMC_Button>(getScene(), std::move(button), "cloned");
}

void CMC_Button::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  for (CXString* text : {&accent_, &gfxStandard_, &gfxOnMove_, &gfxOnClick_, &sndStandard_, &sndOnMove_,
                         &sndOnClick_, &drag_, &rect_})
    archive.pass(*text);
  archive.pass(enable_);
  archive.pass(draggable_);
  archive.pass(priority_);
  if (archive.isStoring() || archive.hasFailed()) return;
  createButton();
  if (button_) button_->SYN();
}

// The control
CGraphicsObject* CMC_Button::picture(const CXString& name) const {
  return name.IsString() ? getScene()->getGraphicsObject(name) : nullptr;
}

CSound4* CMC_Button::sound(const CXString& name) const {
  const auto* object = name.IsString() ? object_cast<CMC_Sound>(getScene()->getObject(name)) : nullptr;
  return object != nullptr ? object->getSound() : nullptr;
}

CXRect CMC_Button::area() {
  const CGraphicsObject* graphics = picture(rect_);
  if (graphics == nullptr) return rect_.toRect();
  // A picture that only marks an area is not on the screen.
  if (const CRefreshScreen* screen = getScene()->getWindow()->getRefreshScreen())
    priority_ = std::max(0, screen->GetPriority(graphics));
  return graphics->GetBoundingBox();
}

void CMC_Button::createButton() {
  CWindow* window = getScene()->getWindow();
  if (window == nullptr) return;
  button_.reset(new CButton(window, area()));
  button_->addNotifier(this);
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (unit != nullptr) button_->addNotifier(unit);
  button_->EnableDragging(draggable_);
  button_->setUnit(unit, unit);
  button_->setPriority(priority_);
  setPictures();
  button_->Enable(enable_);
  if (accent_.IsString()) button_->Accent(picture(accent_));
}

void CMC_Button::setPictures() {
  if (draggable_) button_->SetDragging(picture(drag_));
  if (gfxStandard_.IsString()) button_->Set(picture(gfxStandard_), true);
  CSound4* onMove = sound(sndOnMove_);
  if (onMove != nullptr || gfxOnMove_.IsString()) button_->SetOnMove(picture(gfxOnMove_), onMove);
  button_->SetOnClick(picture(gfxOnClick_), sound(sndOnClick_));
}

// Signals
void CMC_Button::setDraggedName(const CXString& name) const {
  if (CMC_Scene* scene = CMC_Scene::around(getScene())) scene->setDraggedName(name);
}

void CMC_Button::signal(ButtonSignal signal) {
  const Ref<CMC_Button> self(this);
  raise(signal);
}

void CMC_Button::onControlFocusOn(CControl* /*control*/, CXPoint /*point*/) {
  signal(ButtonSignal::onFocusOn);
}
void CMC_Button::onControlFocusOff(CControl* /*control*/, CXPoint /*point*/) {
  signal(ButtonSignal::onFocusOff);
}
void CMC_Button::onControlClicked(CControl* /*control*/, CXPoint /*point*/) {
  signal(ButtonSignal::onClicked);
}
void CMC_Button::onControlReleased(CControl* /*control*/, CXPoint /*point*/) {
  signal(ButtonSignal::onReleased);
}
void CMC_Button::onControlAction(CControl* /*control*/, CXPoint /*point*/) { signal(ButtonSignal::onAction); }

void CMC_Button::onStartDragging(CControl* /*control*/, CXPoint /*point*/) {
  const CGraphicsObject* dragged = button_->GetDragging();
  if (dragged == nullptr) dragged = button_->getCurrent();
  isDragged_ = true;
  setDraggedName(getScene()->getGraphicsObjectName(dragged, true));
  signal(ButtonSignal::onStartDragging);
}

void CMC_Button::onDragging(CControl* /*control*/, CXPoint /*point*/) { signal(ButtonSignal::onDragging); }

void CMC_Button::onEndDragging(CControl* /*control*/, CXPoint /*point*/) {
  const Ref<CMC_Button> self(this);
  const WeakRef<CMC_Scene> scene = CMC_Scene::around(getScene());
  isDragged_ = false;
  signal(ButtonSignal::onEndDragging);
  if (CMC_Scene* there = scene.get()) there->setDraggedName(CXString());
}

}  // namespace footlight
