#include "foundation/xtimer.h"

#include <algorithm>

#include "foundation/diagnose.h"
#include "platform/platform.h"

namespace footlight {

namespace {

std::uint32_t now() { return platform::current().clock().ticks(); }

}  // namespace

TimerId CXTimer::append(int interval, CTimerNotificator* notificator, CXObject* receiver, bool mustBeLive) {
  if (isFull()) {
    limitHit("timers");
    return 0;
  }
  auto timer = std::make_unique<CTimerObject>();
  timer->id = nextId_++;
  timer->interval = interval;
  timer->last = now();
  timer->notificator = notificator;
  timer->receiver = WeakRef<CXObject>(receiver);
  timer->mustBeLive = mustBeLive;
  timers_.emplace_back(timer.release());
  return timers_.back()->id;
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
  if (!timer->mustBeLive || timer->notificator->isLive()) timer->notificator->onTimer(timer->id);
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
