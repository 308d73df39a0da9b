#include "input/button.h"

#include <algorithm>
#include <vector>

#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

// What stood behind the picture shows again.
void takeOff(CRefreshScreen& screen, CGraphicsObject* graphics) {
  if (graphics == nullptr) return;
  graphics->Invalidate();
  screen.remove(graphics);
}

}  // namespace

// The hot spot
CButtonHotSpot::CButtonHotSpot(CWindow* window, CButton* owner) : CHotSpot(window), owner_(owner) {}

bool CButtonHotSpot::isUnitReady() const {
  const CControlUnit* unit = getUnit();
  return unit == nullptr || (unit->isActive() && !unit->isDragging());
}

int CButtonHotSpot::OnMouseMove(CXPoint point) {
  if (const Ref<CButton> owner = owner_.get()) owner->onMouseMove(point);
  return 0;
}

int CButtonHotSpot::OnFocusOn(CXPoint point) {
  const Ref<CButton> owner = owner_.get();
  if (!owner || !owner->IsEnabled() || !isUnitReady()) return 0;
  if (getUnit() == nullptr || getUnit()->wasInitiallyUpdated()) {
    CButton::show(owner->gfxOnMove_, true);
    if (!entered_) CButton::play(owner->sndOnMove_);
    entered_ = true;
    owner->onMouseMove(point);
    if (owner->isDisposed()) return 0;
  }
  owner->onFocusOn(point);
  owner->outside_ = false;
  return 0;
}

int CButtonHotSpot::OnFocusOff(CXPoint point) {
  const Ref<CButton> owner = owner_.get();
  if (!owner) return 0;
  if (owner->IsEnabled() && isUnitReady()) {
    owner->Force(false);
    if (!owner->frozen_) CButton::show(owner->gfxOnMove_, false);
    CSound4* sound = owner->sndOnMove_.get();
    if (sound != nullptr && sound->isPlaying()) sound->Stop();
    entered_ = false;
  }
  owner->outside_ = true;
  owner->onFocusOff(point);
  return 0;
}

int CButtonHotSpot::OnLButtonDown(CXPoint point) {
  const Ref<CButton> owner = owner_.get();
  if (!owner || !owner->IsEnabled() || (getUnit() != nullptr && getUnit()->isDragging())) return 0;
  owner->OnClick(point);
  // Even where a handler, or a drag, has disabled it: such a button looks pressed until it is enabled.
  if (!owner->isDisposed()) owner->Force(true);
  return 1;
}

int CButtonHotSpot::OnLButtonUp(CXPoint point) {
  const Ref<CButton> owner = owner_.get();
  if (!owner || !isUnitReady() || !owner->IsEnabled()) return 0;
  owner->click_ = point;
  owner->Force(false);
  owner->onRelease(point);
  if (!owner->isDisposed()) owner->onAction(point);
  return 1;
}

int CButtonHotSpot::OnRButtonDown(CXPoint point) {
  const Ref<CButton> owner = owner_.get();
  if (owner && owner->IsEnabled()) owner->onRClick(point);
  return 0;
}

// The button
CButton::CButton(CWindow* window, const CXRect& rect)
    : CControl(window), activeRect_(rect), hotSpot_(new CButtonHotSpot(window, this)) {
  hotSpot_->SetActiveRect(rect);
}

CButton::~CButton() {
  CRefreshScreen* screen = window()->getRefreshScreen();
  if (screen == nullptr || isClone_) return;
  for (const auto* picture : {&gfxStandard_, &gfxOnMove_, &gfxOnClick_}) takeOff(*screen, picture->get());
}

std::unique_ptr<CXObject> CButton::clone() const {
  auto made = std::make_unique<CButton>(window(), activeRect_);
  made->isClone_ = true;
  made->hotSpot_->setUnit(hotSpot_->getUnit(), hotSpot_->getUnitObject());
  made->gfxStandard_ = gfxStandard_;
  made->gfxOnMove_ = gfxOnMove_;
  made->gfxOnClick_ = gfxOnClick_;
  made->gfxCurrent_ = gfxCurrent_;
  made->gfxDrag_ = gfxDrag_;
  made->sndOnMove_ = sndOnMove_;
  made->sndOnClick_ = sndOnClick_;
  made->draggingEnabled_ = draggingEnabled_;
  made->hotSpot_->takeArea(*hotSpot_);
  made->hotSpot_->setPriority(hotSpot_->getPriority());
  made->setEnabled(IsEnabled());
  made->hotSpot_->Enable(hotSpot_->IsEnabled());
  return made;
}

void CButton::show(const WeakRef<CGraphicsObject>& graphics, bool visible) {
  if (CGraphicsObject* picture = graphics.get()) picture->Visible(visible);
}

// From where it was paused, else from its begin.
void CButton::play(const WeakRef<CSound4>& sound) {
  if (CSound4* playable = sound.get()) playable->Play();
}

void CButton::Set(CGraphicsObject* graphics, bool replaces) {
  CRefreshScreen* screen = window()->getRefreshScreen();
  if (screen != nullptr) {
    if (replaces) takeOff(*screen, gfxStandard_.get());
    *screen << graphics;
  }
  gfxStandard_ = graphics;
  if (activeRect_.Width() == 0 || activeRect_.Height() == 0) Accent(graphics);
}

void CButton::Accent(CGraphicsObject* graphics) {
  gfxCurrent_ = gfxDrag_ = graphics;
  hotSpot_->Set(graphics);
}

void CButton::putHidden(CGraphicsObject* graphics) {
  CRefreshScreen* screen = window()->getRefreshScreen();
  if (graphics == nullptr || screen == nullptr) return;
  *screen << graphics;
  graphics->Visible(false);
}

void CButton::SetOnMove(CGraphicsObject* graphics, CSound4* sound) {
  gfxOnMove_ = graphics;
  sndOnMove_ = sound;
  putHidden(graphics);
}

void CButton::SetOnClick(CGraphicsObject* graphics, CSound4* sound) {
  gfxOnClick_ = graphics;
  sndOnClick_ = sound;
  putHidden(graphics);
}

void CButton::SetActiveRect(const CXRect& rect) {
  activeRect_ = rect;
  hotSpot_->SetActiveRect(rect);
}

void CButton::Enable(bool enabled) {
  CControl::Enable(enabled);
  show(gfxStandard_, enabled);
  if (!enabled) {
    window()->EndWaitCursor();
    frozen_ = false;
    show(gfxOnMove_, false);
    show(gfxOnClick_, false);
  }
  hotSpot_->Enable(enabled);
}

void CButton::DisableButVisible() {
  setEnabled(false);
  window()->EndWaitCursor();
  show(gfxOnClick_, false);
  show(gfxOnMove_, false);
  show(gfxStandard_, true);
  hotSpot_->Enable(false);
}

void CButton::Force(bool down) {
  if (forced_ == down) return;
  forced_ = down;
  if (!down) {
    show(gfxOnClick_, false);
    show(gfxOnMove_ ? gfxOnMove_ : gfxStandard_, true);
    return;
  }
  if (gfxOnMove_ && gfxOnMove_->isVisible() && gfxOnClick_) show(gfxOnMove_, false);
  show(gfxOnClick_, true);
  play(sndOnClick_);
}

void CButton::Freeze(bool frozen) {
  frozen_ = frozen;
  show(gfxOnMove_, frozen);
}

void CButton::SYN() {
  const platform::CursorPosition mouse = platform::current().input().cursorPosition();
  outside_ = hotSpot_->TestHit({mouse.x, mouse.y});
}

void CButton::Move(CXPoint distance) {
  std::vector<CGraphicsObject*> moved;
  for (const auto* picture : {&gfxStandard_, &gfxOnMove_, &gfxOnClick_, &gfxCurrent_, &gfxDrag_}) {
    CGraphicsObject* graphics = picture->get();
    if (graphics == nullptr || std::ranges::find(moved, graphics) != moved.end()) continue;
    moved.push_back(graphics);
    graphics->Move(distance);
  }
  if (!gfxCurrent_) SetActiveRect(activeRect_ + distance);
}

int CButton::startDragging(CXPoint point) {
  CControlUnit* unit = hotSpot_->getUnit();
  if (!draggingEnabled_ || unit == nullptr) return 0;
  for (const auto* picture : {&gfxDrag_, &gfxStandard_, &gfxOnMove_}) {
    CGraphicsObject* graphics = picture->get();
    if (graphics == nullptr) continue;
    Enable(false);
    graphics->Visible(true);
    return unit->onStartDragging(graphics, point, this) ? 1 : 0;
  }
  return 0;
}

int CButton::OnClick(CXPoint point) {
  const int result = startDragging(point);
  if (isDisposed()) return result;
  play(sndOnClick_);
  if (!isDisposed()) onClick(point);
  return result;
}

}  // namespace footlight
