#include "objects/input/mc_mouse.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "platform/platform.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

constexpr int kListenerPriority = 100002;

}  // namespace

CMC_Mouse::CMC_Mouse(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kMouse), window_(container->getWindow()) {
  setName("MOUSE");
  overideSignals(false);
  const platform::CursorPosition cursor = platform::current().input().cursorPosition();
  position_ = {cursor.x, cursor.y};
  if (window_ != nullptr) window_->registerMouseListener(this, kListenerPriority);
  initializeBehaviours(container, element);
}

CMC_Mouse::CMC_Mouse(const CMC_Mouse& other)
    : CMC_Object(other),
      window_(other.window_),
      position_(other.position_),
      lastClick_(other.lastClick_),
      enabled_(other.enabled_),
      signalsEnabled_(other.signalsEnabled_),
      visible_(other.visible_) {
  overideSignals(false);
  if (window_ != nullptr) window_->registerMouseListener(this, kListenerPriority);
}

std::unique_ptr<CMC_Object> CMC_Mouse::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Mouse(*this));
}

CMC_Mouse::~CMC_Mouse() { CMC_Mouse::unlink(); }

void CMC_Mouse::unlink() {
  if (window_ != nullptr) window_->removeMouseListener(this);
}

// The cursor

void CMC_Mouse::enable() {
  enabled_ = true;
  if (window_ != nullptr) window_->enableMouse(true);
}

void CMC_Mouse::disable() {
  enabled_ = false;
  if (window_ != nullptr) window_->enableMouse(false);
}

void CMC_Mouse::show() {
  if (!std::exchange(visible_, true) && window_ != nullptr) window_->ShowCursor();
}

void CMC_Mouse::hide() {
  if (std::exchange(visible_, false) && window_ != nullptr) window_->HideCursor();
}

void CMC_Mouse::set(const CXString& cursor) {
  if (window_ == nullptr) return;
  if (cursor == "ARROW") window_->EndActiveCursor();
  if (cursor == "WAIT") window_->BeginWaitCursor();
  if (cursor == "ACTIVE") window_->BeginActiveCursor();
}

CXPoint CMC_Mouse::screenOrigin() const {
  const CRefreshScreen* screen = window_ != nullptr ? window_->getRefreshScreen() : nullptr;
  return screen != nullptr ? screen->GetPosition() : CXPoint();
}

// The position is one of the desktop until the mouse moves; the machine's cursor counts from
// the screen's corner.
void CMC_Mouse::setPosition(int x, int y) {
  position_ = CXPoint(x, y) + screenOrigin();
  platform::current().input().moveCursor({x, y});
}

void CMC_Mouse::move(CXPoint distance) {
  position_ = position_ + distance;
  const CXPoint place = position_ - screenOrigin();
  platform::current().input().moveCursor({place.x, place.y});
}

// Events

bool CMC_Mouse::onMouseMove(CXPoint point) {
  const Ref<CMC_Mouse> self(this);
  position_ = point;
  if (isHeard()) raise(MouseSignal::onMove);
  return CMouseListener::onMouseMove(point);
}

bool CMC_Mouse::onClick(int button, CXPoint point) {
  const Ref<CMC_Mouse> self(this);
  if (button == 0) lastClick_ = point;
  if (isHeard()) raise(MouseSignal::onClick, getButton(button));
  return CMouseListener::onClick(button, point);
}

bool CMC_Mouse::onRelease(int button, CXPoint point) {
  const Ref<CMC_Mouse> self(this);
  if (isHeard()) raise(MouseSignal::onRelease, getButton(button));
  return CMouseListener::onRelease(button, point);
}

bool CMC_Mouse::onDblClick(CXPoint point) {
  const Ref<CMC_Mouse> self(this);
  if (isHeard()) raise(MouseSignal::onDblClick);
  return CMouseListener::onDblClick(point);
}

}  // namespace footlight
