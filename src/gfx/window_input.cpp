// The window's handlers of mouse and keys, its listeners and its pollers.

#include <algorithm>

#include "app/application.h"
#include "gfx/window.h"
#include "input/hot_spot.h"
#include "input/input_poller.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"

namespace footlight {

// Listeners

void CWindow::addMouseListener(CMouseListener* listener, CXObject* object, int priority) {
  unregisterMouseListener(listener);
  const auto place =
      std::ranges::upper_bound(mouseListeners_, priority, {}, &Listener<CMouseListener>::priority);
  mouseListeners_.insert(place, {listener, object, priority});
}

void CWindow::unregisterMouseListener(const CMouseListener* listener) {
  std::erase_if(mouseListeners_,
                [&](const auto& entry) { return entry.listener == listener || !entry.object; });
}

void CWindow::takeMouseCaption(CMouseListener* listener, CXObject* object) {
  std::erase_if(mouseListeners_, [](const auto& entry) { return !entry.object; });
  if (mouseListeners_.empty() || mouseListeners_.back().listener == listener) return;
  const Ref<CXObject> gaining = object;
  const Ref<CXObject> losing = mouseListeners_.back().object.get();
  mouseListeners_.back().listener->onLooseFocus();
  unregisterMouseListener(listener);
  if (object->isDisposed()) return;
  listener->onSetFocus();
  if (!object->isDisposed()) addMouseListener(listener, object, kCaptionPriority);
}

void CWindow::addKeyListener(CKeyListener* listener, CXObject* object) {
  const bool listed =
      std::ranges::any_of(keyListeners_, [&](const auto& entry) { return entry.listener == listener; });
  if (!listed) keyListeners_.push_back({listener, object});
}

void CWindow::unregisterKeyListener(const CKeyListener* listener) {
  std::erase_if(keyListeners_,
                [&](const auto& entry) { return entry.listener == listener || !entry.object; });
}

// Calls the event for each of the snapshot that is still alive and listed, until one answers true.
template <class T, class Event>
void CWindow::walk(const Listeners<T>& snapshot, const Listeners<T>& live, Event event) {
  for (const Listener<T>& entry : snapshot) {
    const Ref<CXObject> object = entry.object.get();
    const bool listed =
        std::ranges::any_of(live, [&](const auto& other) { return other.listener == entry.listener; });
    if (object && listed && event(entry.listener)) return;
  }
}

template <class Event>
void CWindow::tellMouseListeners(Event event) {
  Listeners<CMouseListener> snapshot = mouseListeners_;
  std::ranges::reverse(snapshot);
  walk(snapshot, mouseListeners_, event);
}

template <class Event>
void CWindow::tellKeyListeners(Event event) {
  const Listeners<CKeyListener> snapshot = keyListeners_;
  walk(snapshot, keyListeners_, [&](CKeyListener* listener) {
    event(listener);
    return false;
  });
}

// Mouse
// The hot spots hear first; theirs is the answer.

int CWindow::OnMouseMove(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::move, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onMouseMove(point); });
  return result;
}

int CWindow::OnLButtonDown(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::leftDown, point, flags);
  tellMouseListeners(
      [&](CMouseListener* listener) { return listener->onClick(point) || listener->onClick(0, point); });
  return result;
}

int CWindow::OnLButtonUp(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::leftUp, point, flags);
  tellMouseListeners(
      [&](CMouseListener* listener) { return listener->onRelease(point) || listener->onRelease(0, point); });
  return result;
}

int CWindow::OnLButtonDblClk(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::leftDoubleClick, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onDblClick(point); });
  return result;
}

int CWindow::OnMButtonDown(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::middleDown, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onClick(1, point); });
  return result;
}

int CWindow::OnMButtonUp(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::middleUp, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onRelease(1, point); });
  return result;
}

int CWindow::OnRButtonDown(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::rightDown, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onClick(2, point); });
  return result;
}

int CWindow::OnRButtonUp(CXPoint point, int flags) {
  if (!mouseEnabled_) return 0;
  const int result = CHotSpot::OnMouseEvent(_event::rightUp, point, flags);
  tellMouseListeners([&](CMouseListener* listener) { return listener->onRelease(2, point); });
  return result;
}

void CWindow::enableMouse(bool enabled) {
  mouseEnabled_ = enabled;
  if (enabled) {
    EndWaitCursor();
  } else {
    BeginWaitCursor();
  }
}

// Keys

int CWindow::OnKeyDown(int key, int flags) {
  const int result = application_ != nullptr ? application_->OnKeyDown(key, flags) : 0;
  tellKeyListeners([&](CKeyListener* listener) { listener->onKeyDown(key); });
  return result;
}

int CWindow::OnKeyUp(int key, int /*flags*/) {
  tellKeyListeners([&](CKeyListener* listener) { listener->onKeyUp(key); });
  return 0;
}

int CWindow::OnChar(int character, int /*flags*/) {
  tellKeyListeners([&](CKeyListener* listener) { listener->onChar(static_cast<unsigned char>(character)); });
  return 0;
}

// Pollers

void CWindow::addIPoller(CInputPoller* poller) {
  const std::lock_guard section(criticalSection_);
  if (std::ranges::find(pollers_, poller) == pollers_.end()) pollers_.push_back(poller);
}

void CWindow::removeIPoller(CInputPoller* poller) {
  const std::lock_guard section(criticalSection_);
  std::erase(pollers_, poller);
}

void CWindow::removeAllIPollers() {
  const std::lock_guard section(criticalSection_);
  pollers_.clear();
}

void CWindow::tickPollers() {
  const std::lock_guard section(criticalSection_);
  for (CInputPoller* poller : pollers_) poller->tick();
}

// A handler may end a poller: only those that are still listed are asked.
void CWindow::flushPollers() {
  const std::lock_guard section(criticalSection_);
  const std::vector<CInputPoller*> snapshot = pollers_;
  for (CInputPoller* poller : snapshot) {
    if (std::ranges::find(pollers_, poller) != pollers_.end()) poller->flushSignals(true);
  }
}

}  // namespace footlight
