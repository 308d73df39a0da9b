#include "gfx/collision_inspector.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/screen_world.h"

namespace footlight {
namespace {

constexpr int kCount = 60;

// Keeps watch by looking at every pair: what the inspector must tell, in its order.
class PlainWatch {
 public:
  explicit PlainWatch(const std::vector<Owned<CGraphicsObject>>& objects) : objects_(objects) {
    for (int i = 0; i < kCount; ++i) enable(i, true);
  }

  void enable(int i, bool on) {
    const bool isKnown = std::find(order_.begin(), order_.end(), i) != order_.end();
    if (on && !isKnown) order_.push_back(i);
    enabled_[i] = on;
  }

  void report(int i) {
    if (isMoved_[i] || std::find(order_.begin(), order_.end(), i) == order_.end()) return;
    isMoved_[i] = true;
    moved_.push_back(i);
  }

  template <class Tell>
  void tick(const Tell& tell) {
    std::vector<int> later;
    std::array<bool, kCount> hadTurn{};
    for (std::size_t at = 0; at < moved_.size(); ++at) {
      const int a = moved_[at];
      if (hadTurn[a]) {
        later.push_back(a);
        continue;
      }
      hadTurn[a] = true;
      const std::vector<int> others = order_;
      const CXRect box = objects_[a]->GetBoundingBox();
      if (enabled_[a]) {
        for (const int b : others) compare(a, box, b, tell);
      }
      isMoved_[a] = false;
    }
    for (const int a : std::exchange(moved_, later)) {
      if (!enabled_[a]) forget(a);
    }
  }

 private:
  // It comes back as a new one, at the end.
  void forget(int a) {
    std::erase(order_, a);
    std::erase(moved_, a);
    std::erase_if(pairs_, [a](const auto& pair) { return pair.first == a; });
    isMoved_[a] = false;
  }

  template <class Tell>
  void compare(int a, const CXRect& box, int b, const Tell& tell) {
    if (a == b || !enabled_[b]) return;
    const CXRect common = box.Common(objects_[b]->GetBoundingBox());
    const bool touches = common.Width() != 0 && common.Height() != 0;
    if (touches == pairs_.contains({a, b})) return;
    for (const auto& pair : {std::pair(a, b), std::pair(b, a)}) {
      if (touches) {
        pairs_.insert(pair);
      } else {
        pairs_.erase(pair);
      }
    }
    tell(touches, a, b);
  }

  const std::vector<Owned<CGraphicsObject>>& objects_;
  std::vector<int> moved_;
  std::vector<int> order_;
  std::array<bool, kCount> enabled_{};
  std::array<bool, kCount> isMoved_{};
  std::set<std::pair<int, int>> pairs_;
};

// What a handler does depends only on what it heard, so that two watches hear the same handlers.
class Handler {
 public:
  explicit Handler(std::vector<Owned<CGraphicsObject>>& objects) : objects_(objects) {}

  template <class Report, class Enable>
  void hear(bool begins, int a, int b, const Report& report, const Enable& enable) {
    said << (begins ? '+' : '-') << a << ',' << b << ' ';
    const int other = (a * 7 + b) % kCount;
    if (++heard_ % 3 == 0) {
      objects_[other]->Move(a - 30, b - 30);
      report(other);
    }
    if (heard_ % 11 == 0) objects_[other]->Move(b - 30, 0);  // moved, but not told
    if (heard_ % 5 == 0) enable(other, begins);
  }

  std::ostringstream said;

 private:
  std::vector<Owned<CGraphicsObject>>& objects_;
  int heard_ = 0;
};

class Listener final : public CXObject, public CCollisionObserver {
 public:
  Listener(CCollisionInspector& inspector, std::vector<Owned<CGraphicsObject>>& objects)
      : inspector_(inspector), objects_(objects), handler(objects) {}
  void onCollision(CGraphicsObject* a, CGraphicsObject* b) override { hear(true, a, b); }
  void onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) override { hear(false, a, b); }

 private:
  int indexOf(const CGraphicsObject* object) const {
    int index = 0;
    while (objects_[index].get() != object) ++index;
    return index;
  }
  void hear(bool begins, const CGraphicsObject* a, const CGraphicsObject* b) {
    handler.hear(
        begins, indexOf(a), indexOf(b), [&](int i) { inspector_.onPositionChanged(objects_[i].get()); },
        [&](int i, bool enable) {
          if (enable) {
            inspector_.addMonitoredObject(objects_[i].get(), false);
          } else {
            inspector_.removeMonitoredObject(objects_[i].get());
          }
        });
  }

  CCollisionInspector& inspector_;
  std::vector<Owned<CGraphicsObject>>& objects_;

 public:
  Handler handler;
};

// Hears of one object alone, and not always of the same one.
class Narrow final : public CXObject, public CCollisionObserver {
 public:
  Narrow(CGraphicsObject* graphic, std::vector<std::pair<bool, CGraphicsObject*>>& heard)
      : graphic_(graphic), heard_(heard) {}
  std::optional<const CGraphicsObject*> onlyHears() const override { return graphic_; }
  void onCollision(CGraphicsObject* a, CGraphicsObject*) override { hear(true, a); }
  void onCollisionFinished(CGraphicsObject* a, CGraphicsObject*) override { hear(false, a); }
  void trade(Narrow& other) {
    std::swap(graphic_, other.graphic_);
    CGraphicsObject::noteUsers();
  }

 private:
  void hear(bool begins, CGraphicsObject* a) {
    if (a == graphic_) heard_.emplace_back(begins, a);
  }

  CGraphicsObject* graphic_;
  std::vector<std::pair<bool, CGraphicsObject*>>& heard_;
};

// Of all sizes, empty and wider than the screen among them, on the screen and far from it.
std::vector<Owned<CGraphicsObject>> scatter(test::ScreenWorld& world, unsigned seed) {
  std::mt19937 chance(seed);
  std::vector<Owned<CGraphicsObject>> objects;
  for (int i = 0; i < kCount; ++i) {
    const int side = i % 20 == 0 ? 900 : 1 + static_cast<int>(chance() % 90);
    const int far = i % 6 == 0 ? 5000 : 400;
    const CXPoint at(static_cast<int>(chance() % far) - far / 4, static_cast<int>(chance() % 300) - 60);
    objects.push_back(test::plate(world.window.get(), {at.x, at.y, at.x + side, at.y + side}, 0));
  }
  return objects;
}

TEST(CollisionInspector, TellsWhatLookingAtEveryPairTells) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    test::ScreenWorld world({800, 600});
    world.open();
    auto objects = scatter(world, seed);
    auto twins = scatter(world, seed);
    CCollisionInspector inspector;
    Listener listener(inspector, objects);
    std::vector<std::pair<bool, CGraphicsObject*>> heard;
    std::vector<std::unique_ptr<Narrow>> narrow;
    for (const auto& object : objects) {
      narrow.push_back(std::make_unique<Narrow>(object.get(), heard));
      inspector.addNotifier(narrow.back().get());
      if (narrow.size() == kCount / 2) inspector.addNotifier(&listener);
    }
    PlainWatch plain(twins);
    Handler handler(twins);
    for (const auto& object : objects) inspector.addMonitoredObject(object.get(), false);

    std::mt19937 chance(seed);
    for (int tick = 0; tick < 40; ++tick) {
      for (int moves = 0; moves < 12; ++moves) {
        const auto i = static_cast<int>(chance() % kCount);
        const CXPoint by(static_cast<int>(chance() % 81) - 40, static_cast<int>(chance() % 81) - 40);
        objects[i]->Move(by.x, by.y);
        inspector.onPositionChanged(objects[i].get());
        twins[i]->Move(by.x, by.y);
        plain.report(i);
      }
      narrow[chance() % kCount]->trade(*narrow[chance() % kCount]);
      inspector.tick();
      plain.tick([&](bool begins, int a, int b) {
        handler.hear(
            begins, a, b, [&](int i) { plain.report(i); },
            [&](int i, bool enable) { plain.enable(i, enable); });
      });
      ASSERT_EQ(listener.handler.said.str(), handler.said.str()) << "seed " << seed << " tick " << tick;
    }
    const std::string said = handler.said.str();
    EXPECT_EQ(std::ssize(heard), std::count(said.begin(), said.end(), ' '))
        << "one of the narrow hears of each";
    EXPECT_GT(handler.said.str().size(), 2000u) << "much must have happened";
  }
}

}  // namespace
}  // namespace footlight
