#include "app/xtimer.h"

#include <algorithm>

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

std::uint32_t now() { return platform::current().clock().ticks(); }

}  // namespace

TimerId CXTimer::append(int interval, std::unique_ptr<CTimerObject> timer, CXObject* receiver) {
  if (isFull()) {
    limitHit("timers");
    return 0;
  }
  timer->id = nextId_++;
  timer->interval = interval;
  timer->last = now();
  timer->receiver = WeakRef<CXObject>(receiver);
  timers_.emplace_back(timer.release());
  return timers_.back()->id;
}

TimerId CXTimer::add(int interval, CUnit6* unit, bool unitMustBeLive) {
  auto timer = std::make_unique<CTimerObject>();
  timer->unit = unit;
  timer->unitMustBeLive = unitMustBeLive;
  return append(interval, std::move(timer), unit);
}

TimerId CXTimer::add(int interval, CWindow* window) {
  auto timer = std::make_unique<CTimerObject>();
  timer->window = window;
  return append(interval, std::move(timer), window);
}

TimerId CXTimer::addNotificator(int interval, CTimerNotificator* notificator, CXObject* receiver) {
  auto timer = std::make_unique<CTimerObject>();
  timer->notificator = notificator;
  return append(interval, std::move(timer), receiver);
}

CTimerObject* CXTimer::find(TimerId id) const {
  // Ids grow, and so stand in order.
  const auto found = std::lower_bound(timers_.begin(), timers_.end(), id,
                                      [](const auto& timer, TimerId wanted) { return timer->id < wanted; });
  const bool isThere = found != timers_.end() && (*found)->id == id && !(*found)->isToDelete();
  return isThere ? found->get() : nullptr;
}

void CXTimer::remove(TimerId id) {
  if (CTimerObject* timer = find(id)) timer->setToDelete();
}

void CXTimer::reset(TimerId id) {
  if (CTimerObject* timer = find(id)) timer->last = now();
}

int CXTimer::domodal() {
  if (!enabled_) return 0;
  std::erase_if(timers_, [](const auto& timer) { return timer->isOver(); });
  std::vector<Ref<CTimerObject>> firing;
  firing.reserve(timers_.size());
  for (const auto& timer : timers_) firing.emplace_back(timer.get());
  for (const Ref<CTimerObject>& timer : firing) {
    if (timer->isOver() || timer->interval < 0) continue;
    if (now() - timer->last < static_cast<std::uint32_t>(timer->interval)) continue;
    ++timer->count;
    fire(timer.get());
    timer->last = now();
  }
  return 0;
}

void CXTimer::fire(CTimerObject* timer) {
  const Ref<CXObject> receiver(timer->receiver.get());
  if (timer->unit != nullptr) {
    CUnit6* unit = timer->unit;
    if (!timer->unitMustBeLive || (unit->isActive() && unit->wasInitiallyUpdated())) unit->onTimer(timer->id);
  } else if (timer->window != nullptr) {
    timer->window->onTimer(timer->id);
  } else {
    timer->notificator->onTimer(timer->id);
  }
}

void CXTimer::pause() {
  const std::uint32_t moment = now();
  for (const auto& timer : timers_) timer->pausedFor = moment - timer->last;
}

void CXTimer::resume() {
  const std::uint32_t moment = now();
  for (const auto& timer : timers_) timer->last = moment - timer->pausedFor;
}

}  // namespace footlight
