#include "gfx/animation_manager.h"

#include <algorithm>

#include "gfx/animo6.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr int kUsualFps = 10;  // of a playable that names none

std::uint32_t ticksNow() { return platform::current().clock().ticks(); }

std::uint32_t periodOf(const CPlayable& playable) {
  const int fps = playable.getFPS();
  return static_cast<std::uint32_t>(1000 / (fps > 0 ? fps : kUsualFps));
}

}  // namespace

void CAnimationManager::add(CPlayable* playable, CRefreshScreen* screen) {
  entries_.push_back(
      std::make_shared<Entry>(Entry{playable, playable->asObject(), screen, false, false, ticksNow()}));
}

void CAnimationManager::remove(const CPlayable* playable) {
  // What came last often goes first.
  const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                  [&](const auto& entry) { return entry->playable == playable; });
  if (found == entries_.rend()) return;
  (*found)->removed = true;
  entries_.erase(std::next(found).base());
}

CAnimationManager::Entries CAnimationManager::live() const {
  Entries found;
  found.reserve(entries_.size());
  std::ranges::copy_if(entries_, std::back_inserter(found),
                       [](const auto& entry) { return static_cast<bool>(entry->object); });
  return found;
}

int CAnimationManager::domodal() {
  const std::uint32_t now = ticksNow();
  const Entries pass = live();
  for (const auto& entry : pass) {
    if (!entry->playable->isPlaying() || now - entry->lastTick < periodOf(*entry->playable)) continue;
    entry->lastTick = ticksNow();
    entry->due = true;
  }
  for (const auto& entry : pass) {
    const bool isDue = std::exchange(entry->due, false);
    const Ref<CXObject> object(entry->object.get());
    if (isDue && object && !entry->removed) entry->playable->next();
  }
  return 0;
}

void CAnimationManager::pause() {
  for (const auto& entry : live()) {
    const Ref<CXObject> object(entry->object.get());
    if (object && !entry->removed && entry->playable->isPlaying()) entry->playable->pause();
  }
}

void CAnimationManager::resume(const Choice& belongs) {
  for (const auto& entry : live()) {
    const Ref<CXObject> object(entry->object.get());
    if (!object || entry->removed || !entry->playable->isPaused()) continue;
    if (!belongs || belongs(*entry->playable)) entry->playable->resume();
  }
}

}  // namespace footlight
