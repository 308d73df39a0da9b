#include "gfx/collision_inspector.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gfx/animo.h"
#include "gfx/graphics_object.h"

namespace footlight {

namespace {

using Touching = std::vector<WeakRef<CGraphicsObject>>;

auto findIn(Touching& list, const CGraphicsObject* object) {
  return std::find_if(list.begin(), list.end(), [object](const auto& item) { return item.get() == object; });
}

void enter(Touching& list, CGraphicsObject* object) {
  if (findIn(list, object) == list.end()) list.emplace_back(object);
}

void leave(Touching& list, const CGraphicsObject* object) {
  const auto place = findIn(list, object);
  if (place != list.end()) list.erase(place);
}

bool overlap(const CXRect& a, const CXRect& b) {
  const CXRect common = a.Common(b);
  return common.Width() != 0 && common.Height() != 0;
}

}  // namespace

CMonitoredObject* CCollisionInspector::find(const CGraphicsObject* object) const {
  const auto found = entries_.find(object);
  const bool isKnown = found != entries_.end() && found->second->object.get() == object;
  return isKnown ? found->second : nullptr;
}

void CCollisionInspector::addMonitoredObject(CGraphicsObject* object, bool useAlpha) {
  if (object == nullptr) return;
  if (CMonitoredObject* known = find(object)) {
    known->enabled = true;
    return;
  }
  monitored_.emplace_back(new CMonitoredObject(object, useAlpha));
  entries_[object] = monitored_.back().get();
}

void CCollisionInspector::removeMonitoredObject(const CGraphicsObject* object) {
  if (CMonitoredObject* entry = find(object)) entry->enabled = false;
}

void CCollisionInspector::addObserver(CCollisionObserver* observer, CXObject* object) {
  const bool isListed = std::any_of(observers_.begin(), observers_.end(), [&](const Observer& entry) {
    return entry.observer == observer && entry.object;
  });
  if (!isListed) observers_.push_back({observer, object});
}

void CCollisionInspector::removeNotifier(const CCollisionObserver* observer) {
  std::erase_if(observers_, [&](const Observer& entry) { return entry.observer == observer; });
}

void CCollisionInspector::onPositionChanged(CGraphicsObject* object) {
  CMonitoredObject* entry = find(object);
  if (entry == nullptr || entry->isMoved) return;
  entry->isMoved = true;
  moved_.emplace_back(entry);
}

// The list grows while observers run.
void CCollisionInspector::tick() {
  if (monitored_.empty()) return;
  ++tick_;
  ++age_;
  std::vector<Ref<CMonitoredObject>> later;
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    const Ref<CMonitoredObject> entry = moved_[i];
    if (entry->turn == tick_) {
      later.push_back(entry);
      continue;
    }
    entry->turn = tick_;
    if (entry->enabled && entry->object) test(*entry);
    entry->isMoved = false;
  }
  const std::vector<Ref<CMonitoredObject>> done = std::exchange(moved_, std::move(later));
  for (const Ref<CMonitoredObject>& entry : done) {
    if (!entry->enabled) drop(entry.get());
  }
  dropDead();
}

// All others in the order of the list, without those that neither touch nor touched: to look at each would
// take the square of their number a tick. Observers may add to the list, it shrinks at the tick's end alone.
// The moved one has the box of its turn's start, the others have theirs of the moment.
void CCollisionInspector::test(CMonitoredObject& moved) {
  const std::size_t end = monitored_.size();
  const CXRect box = moved.object->GetBoundingBox();
  std::size_t next = 0;
  while (next < end && moved.object) {
    lookAtBoxes();
    const std::vector<std::uint32_t> places = placesToTest(moved, box, next, end);
    const std::uint64_t age = age_;
    next = end;
    for (const std::uint32_t place : places) {
      testPair(moved, box, *monitored_[place]);
      if (age == age_) continue;
      next = std::size_t{place} + 1;
      break;
    }
  }
}

// Within a tick the grid only grows: where a box has been before does no harm, and few boxes change.
void CCollisionInspector::lookAtBoxes() {
  if (boxesAge_ == age_) return;
  boxesAge_ = age_;
  const bool isFresh = gridTick_ != tick_ || grid_.count() > 4 * monitored_.size();
  if (isFresh) grid_.clear();
  gridTick_ = tick_;
  for (std::uint32_t place = 0; place < monitored_.size(); ++place) {
    CMonitoredObject& entry = *monitored_[place];
    entry.place = place;
    const CXRect box = entry.object ? entry.object->GetBoundingBox() : CXRect();
    if (!isFresh && box == entry.box) continue;
    entry.box = box;
    grid_.add(place, box);
  }
}

std::vector<std::uint32_t> CCollisionInspector::placesToTest(const CMonitoredObject& moved, const CXRect& box,
                                                             std::size_t from, std::size_t end) {
  std::vector<std::uint32_t> places;
  grid_.near(box, places);
  std::erase_if(places, [&](std::uint32_t place) { return !overlap(box, monitored_[place]->box); });
  for (const auto& other : moved.touching) {
    if (const CMonitoredObject* entry = find(other.get())) places.push_back(entry->place);
  }
  std::erase_if(places, [&](std::uint32_t place) {
    return place < from || place >= end || monitored_[place].get() == &moved || !monitored_[place]->enabled;
  });
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

void CCollisionInspector::testPair(CMonitoredObject& moved, const CXRect& boxA, CMonitoredObject& other) {
  if (!other.object) return;
  const CXRect boxB = other.box;
  const Ref<CGraphicsObject> a(moved.object.get());
  const Ref<CGraphicsObject> b(other.object.get());
  const bool isTouching =
      overlap(boxA, boxB) && (!moved.useAlpha || checkAlphaCollision(a.get(), boxA, b.get(), boxB));
  const bool wasTouching = findIn(moved.touching, b.get()) != moved.touching.end();
  if (isTouching == wasTouching) return;
  if (isTouching) {
    enter(moved.touching, b.get());
    enter(other.touching, a.get());
  } else {
    leave(moved.touching, b.get());
    leave(other.touching, a.get());
  }
  notify(isTouching ? 1 : 2, a.get(), b.get());
}

void CCollisionInspector::notify(int kind, CGraphicsObject* a, CGraphicsObject* b) {
  if ((kind != 1 && kind != 2) || observers_.empty()) return;
  ++age_;
  const std::vector<Observer> snapshot = observers_;
  for (const Observer& entry : snapshot) {
    const Ref<CXObject> object(entry.object.get());
    if (!object) continue;
    if (kind == 1) {
      entry.observer->onCollision(a, b);
    } else {
      entry.observer->onCollisionFinished(a, b);
    }
  }
}

bool CCollisionInspector::checkAlphaCollision(CGraphicsObject* a, CXRect rectA, CGraphicsObject* b,
                                              CXRect rectB) {
  // An animation may have changed its frame since it was drawn.
  if (b->getGfxType() == CAnimo::kType) b->unpack();
  if (!b->hasAlpha() || b->getCompression() != _compression::none) return false;
  const int width = a->Width();
  const int height = a->Height();
  const std::array<CXPoint, 8> places = {{{0, 0},
                                          {width / 2, 0},
                                          {width - 1, 0},
                                          {width - 1, height / 2},
                                          {width - 1, height - 1},
                                          {width / 2, height - 1},
                                          {0, height - 1},
                                          {0, height / 2}}};
  return std::any_of(places.begin(), places.end(), [&](CXPoint place) {
    const CXPoint point = rectA.LeftTop() + place;
    return rectB.IsInRect(point) && b->GetPixel(_channel::alpha, point - rectB.LeftTop()) != 0;
  });
}

void CCollisionInspector::drop(const CMonitoredObject* entry) {
  const auto known = std::find_if(entries_.begin(), entries_.end(),
                                  [entry](const auto& item) { return item.second == entry; });
  if (known != entries_.end()) entries_.erase(known);
  std::erase_if(monitored_, [entry](const auto& item) { return item.get() == entry; });
}

// Objects and observers that ended since.
void CCollisionInspector::dropDead() {
  std::erase_if(entries_, [](const auto& item) { return !item.second->object; });
  std::erase_if(monitored_, [](const auto& item) { return !item->object; });
  std::erase_if(observers_, [](const Observer& entry) { return !entry.object; });
  for (const auto& entry : monitored_) {
    std::erase_if(entry->touching, [](const auto& other) { return !other; });
  }
}

}  // namespace footlight
