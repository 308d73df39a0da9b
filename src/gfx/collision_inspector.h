#pragma once

// Finds out which graphic objects under watch touch. Objects report that they moved; once a tick each
// moved one is tested against all others, and the observers hear when a pair begins and ends to touch, the
// moved object first.
//
// Observers run scripts: they may move, hide, end and watch objects while a tick is under way. An object has
// at most one turn a tick; what moved again after its turn has the next one in the next tick. Objects and
// observers are held weakly.

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "gfx/box_grid.h"
#include "gfx/graphics_object.h"

namespace footlight {

class CCollisionObserver {
 public:
  virtual ~CCollisionObserver() = default;
  // The two began, and ended, to touch; the first one moved.
  virtual void onCollision(CGraphicsObject* a, CGraphicsObject* b) = 0;
  virtual void onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) = 0;
  // The one graphic that must be the moved one for this observer to care, null while it has none; nothing
  // when it wants to hear of all. Who changes the answer calls CGraphicsObject::noteUsers.
  virtual std::optional<const CGraphicsObject*> onlyHears() const { return std::nullopt; }
};

// The objects that touch one object now.
class TouchingObjects {
 public:
  bool holds(const CGraphicsObject* object) const;
  void enter(CGraphicsObject* object);
  void leave(const CGraphicsObject* object) { objects_.erase(object); }
  auto begin() const { return objects_.begin(); }
  auto end() const { return objects_.end(); }

 private:
  // One that has gone holds nothing, even if another object took its address.
  std::unordered_map<const CGraphicsObject*, WeakRef<CGraphicsObject>> objects_;
  std::size_t sweepAt_ = 16;
};

// One object under watch.
class CMonitoredObject : public CXObject {
 public:
  CMonitoredObject(CGraphicsObject* watched, bool byAlpha) : object(watched), useAlpha(byAlpha) {}

  WeakRef<CGraphicsObject> object;
  bool useAlpha;  // the other's alpha plane counts as well as the boxes
  bool isMoved = false;
  bool enabled = true;
  std::uint64_t turn = 0;  // the last tick in which it was tested
  // Both as they were when the boxes were looked at last; see CCollisionInspector::lookAtBoxes.
  CXRect box;
  std::uint32_t place = 0;
  TouchingObjects touching;
};

class CCollisionInspector : public CXObject {
 public:
  // An object that is known already is enabled again and keeps its old `useAlpha`.
  void addMonitoredObject(CGraphicsObject* object, bool useAlpha);
  void removeMonitoredObject(const CGraphicsObject* object);
  // `T` is the observer and the engine object whose end ends the observing. Nobody is listed twice.
  template <class T>
  void addNotifier(T* observer) {
    addObserver(observer, observer);
  }
  void removeNotifier(const CCollisionObserver* observer);
  // Null for an object that was never watched.
  CMonitoredObject* find(const CGraphicsObject* object) const;
  // Tests what moved since the last tick.
  void tick();
  int getMonitoredCount() const { return static_cast<int>(monitored_.size()); }

  // Tells every observer of a beginning (1) or an end (2).
  virtual void notify(int kind, CGraphicsObject* a, CGraphicsObject* b);
  // Whether one of eight points on the edge of a's rectangle lies on a pixel of b that is not transparent.
  virtual bool checkAlphaCollision(CGraphicsObject* a, CXRect rectA, CGraphicsObject* b, CXRect rectB);
  virtual void onPositionChanged(CGraphicsObject* object);

 private:
  struct Observer {
    CCollisionObserver* observer;
    WeakRef<CXObject> object;
  };
  struct Hearers;

  void addObserver(CCollisionObserver* observer, CXObject* object);
  void test(CMonitoredObject& moved);
  std::size_t testNear(CMonitoredObject& moved, const CXRect& box);
  void testPair(CMonitoredObject& moved, const CXRect& box, CMonitoredObject& other, const CXRect& otherBox);
  void lookAtBoxes();
  std::vector<std::uint32_t> placesToTest(const CMonitoredObject& moved, const CXRect& box);
  std::shared_ptr<const Hearers> hearers();
  void drop(const CMonitoredObject* entry);
  void dropDead();

  std::vector<Owned<CMonitoredObject>> monitored_;  // in the order of their coming
  std::unordered_map<const CGraphicsObject*, CMonitoredObject*> entries_;
  std::vector<Ref<CMonitoredObject>> moved_;
  std::vector<Observer> observers_;
  std::shared_ptr<const Hearers> hearers_;  // null when the observers changed since it was made
  std::uint64_t tick_ = 0;
  BoxGrid grid_;
  // A new age begins with a tick, and whenever observers may have moved something: boxes keep for one age.
  std::uint64_t age_ = 0;
  std::uint64_t boxesAge_ = 0;
  std::uint64_t gridTick_ = 0;
};

}  // namespace footlight
