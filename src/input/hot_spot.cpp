#include "input/hot_spot.h"

#include <algorithm>

#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

CHotSpot::CHotSpot(CWindow* window) : window_(window) { all().push_back(this); }

CHotSpot::~CHotSpot() { std::erase(all(), this); }

std::vector<CHotSpot*>& CHotSpot::all() {
  static std::vector<CHotSpot*> list;
  return list;
}

void CHotSpot::done() {
  minPriority_ = kFirstMinPriority;
  maxPriority_ = kFirstMaxPriority;
}

int CHotSpot::getPriority() const {
  const CGraphicsObject* graphics = graphics_.get();
  if (graphics == nullptr) return priority_;
  const CRefreshScreen* screen = window_->getRefreshScreen();
  return screen != nullptr ? screen->GetPriority(graphics) : priority_;
}

void CHotSpot::Set(CGraphicsObject* graphics) {
  graphics_ = graphics;
  activeRect_ = {};
}

void CHotSpot::SetActiveRect(const CXRect& rect) {
  activeRect_ = rect;
  graphics_ = nullptr;
}

void CHotSpot::takeArea(const CHotSpot& other) {
  activeRect_ = other.activeRect_;
  graphics_ = other.graphics_;
}

void CHotSpot::setUnit(CControlUnit* unit, CXObject* object) {
  unit_ = unit;
  unitObject_ = object;
}

void CHotSpot::endCursor() const {
  if (cursorEnabled_) window_->EndWaitCursor();
}

void CHotSpot::Enable(bool enabled) {
  if (!enabled && enabled_ && !focused_) endCursor();
  enabled_ = enabled;
}

bool CHotSpot::TestHit(CXPoint point) {
  if (!enabled_) return false;
  if (activeRect_.Width() != 0 && activeRect_.Height() != 0) return activeRect_.IsInRect(point);
  CGraphicsObject* graphics = graphics_.get();
  return graphics != nullptr && graphics->testHit(point);
}

// Events
CHotSpot::Snapshot CHotSpot::snapshot() {
  const std::vector<CHotSpot*>& list = all();
  return Snapshot(list.begin(), list.end());
}

Ref<CHotSpot> CHotSpot::findAt(CXPoint point) {
  Ref<CHotSpot> found;
  int best = -1;
  for (CHotSpot* spot : all()) {
    const int priority = spot->isDisposed() ? -1 : spot->getPriority();
    if (priority <= best || !spot->isWithinBounds() || !spot->isUnitActive() || !spot->TestHit(point))
      continue;
    found = spot;
    best = priority;
  }
  return found;
}

int CHotSpot::move(CXPoint point) {
  int result = 0;
  for (const WeakRef<CHotSpot>& listed : snapshot()) {
    const Ref<CHotSpot> spot = listed.get();
    if (!spot || !spot->enabled_ || !spot->focused_ || !spot->isWithinBounds() || spot->TestHit(point))
      continue;
    spot->endCursor();
    spot->focused_ = false;
    result = spot->OnFocusOff(point);
    if (result > 0) break;
  }
  const Ref<CHotSpot> target = findAt(point);
  if (!target) return result;
  if (target->cursorEnabled_) target->window_->BeginActiveCursor();
  if (target->focused_) return target->OnMouseMove(point);
  target->focused_ = true;
  target->OnMouseMove(point);
  return target->isDisposed() ? 0 : target->OnFocusOn(point);
}

int CHotSpot::pressLeft(CXPoint point) {
  const Ref<CHotSpot> target = findAt(point);
  if (!target) return 0;
  target->focused_ = true;
  return target->OnLButtonDown(point);
}

int CHotSpot::releaseLeft(CXPoint point) {
  const Ref<CHotSpot> target = findAt(point);
  if (!target) return 0;
  target->focused_ = false;
  return target->OnLButtonUp(point);
}

int CHotSpot::pressRight(CXPoint point) {
  for (const WeakRef<CHotSpot>& listed : snapshot()) {
    const Ref<CHotSpot> spot = listed.get();
    if (!spot || !spot->TestHit(point)) continue;
    spot->endCursor();
    spot->focused_ = true;
    const int result = spot->OnRButtonDown(point);
    if (result > 0) return result;
  }
  return 0;
}

int CHotSpot::OnMouseEvent(_event event, CXPoint point, int flags) {
  switch (event) {
    case _event::move:
      return move(point);
    case _event::leftDown:
      return pressLeft(point);
    case _event::leftUp:
      return releaseLeft(point);
    case _event::rightDown:
      return pressRight(point);
    case _event::rightUp:
    case _event::middleDown:
    case _event::middleUp:
    case _event::leftDoubleClick:
      return 0;
  }
  return flags;
}

}  // namespace footlight
