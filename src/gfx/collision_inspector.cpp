#include "gfx/collision_inspector.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gfx/animo.h"
#include "gfx/graphics_object.h"

namespace footlight {

namespace {

bool overlap(const CXRect& a, const CXRect& b) {
  const CXRect common = a.Common(b);
  return common.Width() != 0 && common.Height() != 0;
}

}  // namespace

// All observers as they were at one time, and by the graphic that they hear of, so that nobody else is asked.
struct CCollisionInspector::Hearers {
  using Places = std::vector<std::uint32_t>;

  explicit Hearers(const std::vector<Observer>& observers);
  // The places in `all`, in their order, of those who hear when this graphic moved.
  const Places& of(const CGraphicsObject* graphic) const {
    const auto found = byGraphic.find(graphic);
    return found != byGraphic.end() ? found->second : ofAll;
  }

  std::vector<Observer> all;
  std::unordered_map<const CGraphicsObject*, Places> byGraphic;  // those who hear of all among them
  Places ofAll;
  std::uint64_t usersAge = CGraphicsObject::usersAge();
};

CCollisionInspector::Hearers::Hearers(const std::vector<Observer>& observers) : all(observers) {
  for (std::uint32_t place = 0; place < all.size(); ++place) {
    if (!all[place].object) continue;
    if (const auto only = all[place].observer->onlyHears()) {
      byGraphic.try_emplace(*only, ofAll).first->second.push_back(place);
      continue;
    }
    ofAll.push_back(place);
    for (auto& entry : byGraphic) entry.second.push_back(place);
  }
}

bool TouchingObjects::holds(const CGraphicsObject* object) const {
  const auto found = objects_.find(object);
  return found != objects_.end() && found->second.get() == object;
}

// What has gone leaves when there may be as many again.
void TouchingObjects::enter(CGraphicsObject* object) {
  if (objects_.size() >= sweepAt_) {
    std::erase_if(objects_, [](const auto& entry) { return !entry.second; });
    sweepAt_ = 2 * objects_.size() + 16;
  }
  objects_.insert_or_assign(object, object);
}

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
  if (isListed) return;
  observers_.push_back({observer, object});
  hearers_.reset();
}

void CCollisionInspector::removeNotifier(const CCollisionObserver* observer) {
  const auto left =
      std::erase_if(observers_, [&](const Observer& entry) { return entry.observer == observer; });
  if (left > 0) hearers_.reset();
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

// All others in the order of the list. Observers may add to the list, it shrinks at the tick's end alone. The
// moved one has the box of its turn's start, the others have theirs of the moment: once observers were told,
// who may have moved anything, each one behind is looked at.
void CCollisionInspector::test(CMonitoredObject& moved) {
  const std::size_t end = monitored_.size();
  const CXRect box = moved.object->GetBoundingBox();
  for (std::size_t place = testNear(moved, box); place < end && moved.object; ++place) {
    CMonitoredObject& other = *monitored_[place];
    if (&other == &moved || !other.enabled || !other.object) continue;
    testPair(moved, box, other, other.object->GetBoundingBox());
  }
}

// Without those that neither touch nor touched: to look at each would take the square of their number a tick.
// Ends when observers were told, and gives the place to go on from.
std::size_t CCollisionInspector::testNear(CMonitoredObject& moved, const CXRect& box) {
  lookAtBoxes();
  const std::uint64_t age = age_;
  for (const std::uint32_t place : placesToTest(moved, box)) {
    testPair(moved, box, *monitored_[place], monitored_[place]->box);
    if (age != age_) return std::size_t{place} + 1;
  }
  return monitored_.size();
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

std::vector<std::uint32_t> CCollisionInspector::placesToTest(const CMonitoredObject& moved,
                                                             const CXRect& box) {
  std::vector<std::uint32_t> places;
  grid_.near(box, places);
  std::erase_if(places, [&](std::uint32_t place) { return !overlap(box, monitored_[place]->box); });
  for (const auto& other : moved.touching) {
    if (const CMonitoredObject* entry = find(other.second.get())) places.push_back(entry->place);
  }
  std::erase_if(places, [&](std::uint32_t place) {
    return monitored_[place].get() == &moved || !monitored_[place]->enabled;
  });
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

void CCollisionInspector::testPair(CMonitoredObject& moved, const CXRect& boxA, CMonitoredObject& other,
                                   const CXRect& boxB) {
  if (!other.object) return;
  const Ref<CGraphicsObject> a(moved.object.get());
  const Ref<CGraphicsObject> b(other.object.get());
  const bool isTouching =
      overlap(boxA, boxB) && (!moved.useAlpha || checkAlphaCollision(a.get(), boxA, b.get(), boxB));
  if (isTouching == moved.touching.holds(b.get())) return;
  if (isTouching) {
    moved.touching.enter(b.get());
    other.touching.enter(a.get());
  } else {
    moved.touching.leave(b.get());
    other.touching.leave(a.get());
  }
  notify(isTouching ? 1 : 2, a.get(), b.get());
}

std::shared_ptr<const CCollisionInspector::Hearers> CCollisionInspector::hearers() {
  if (hearers_ == nullptr || hearers_->usersAge != CGraphicsObject::usersAge())
    hearers_ = std::make_shared<const Hearers>(observers_);
  return hearers_;
}

// Those listed now, in their order. When one of them changes who hears of what, all behind it are told: who
// does not care does nothing.
void CCollisionInspector::notify(int kind, CGraphicsObject* a, CGraphicsObject* b) {
  if (kind != 1 && kind != 2) return;
  const std::shared_ptr<const Hearers> hearing = hearers();
  const auto tell = [&](std::size_t place) {
    const Observer& entry = hearing->all[place];
    const Ref<CXObject> object(entry.object.get());
    if (!object) return;
    ++age_;
    if (kind == 1) {
      entry.observer->onCollision(a, b);
    } else {
      entry.observer->onCollisionFinished(a, b);
    }
  };
  for (const std::uint32_t place : hearing->of(a)) {
    tell(place);
    if (hearing->usersAge == CGraphicsObject::usersAge()) continue;
    for (std::size_t next = std::size_t{place} + 1; next < hearing->all.size(); ++next) tell(next);
    return;
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
  if (std::erase_if(observers_, [](const Observer& entry) { return !entry.object; }) > 0) hearers_.reset();
}

}  // namespace footlight
