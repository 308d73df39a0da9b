#pragma once

// A hot spot is an area of the screen that reacts to the mouse: a rectangle, or a picture with its clear
// pixels left out. All hot spots stand in one list, in the order in which they were made. The window hands
// every mouse event to `OnMouseEvent`, which finds the topmost one under the pointer and tells who gains and
// who loses the focus.
//
// The bounds of priorities, both included, shut the others out of the hit tests: a modal layer raises
// the lower one.
//
// Handlers run scripts, which may make, move and end hot spots: each walk goes over a snapshot, skips those
// that have gone, and keeps the one that it calls in memory.

#include <cstdint>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "input/control_unit.h"

namespace footlight {

class CGraphicsObject;
class CWindow;

enum class _event : std::uint8_t {
  move = 1,
  leftDown = 2,
  leftUp = 4,
  rightDown = 8,
  rightUp = 0x10,
  middleDown = 0x20,
  middleUp = 0x40,
  leftDoubleClick = 0x41,
};

class CHotSpot : public CXObject {
 public:
  static constexpr int kFirstMinPriority = 0;
  static constexpr int kFirstMaxPriority = 10000000;

  explicit CHotSpot(CWindow* window);
  ~CHotSpot() override;
  CHotSpot(const CHotSpot&) = delete;
  CHotSpot& operator=(const CHotSpot&) = delete;

  // What the mouse does at a point of the screen; the bases answer 0. An answer above 0 may end a walk.
  virtual int OnMouseMove(CXPoint /*point*/) { return 0; }
  virtual int OnLButtonDown(CXPoint /*point*/) { return 0; }
  virtual int OnLButtonUp(CXPoint /*point*/) { return 0; }
  virtual int OnRButtonDown(CXPoint /*point*/) { return 0; }
  virtual void setPriority(int priority) { priority_ = priority; }
  // With a picture, that of the picture on the screen.
  virtual int getPriority() const;
  virtual int OnFocusOn(CXPoint /*point*/) { return 0; }
  virtual int OnFocusOff(CXPoint /*point*/) { return 0; }

  // Takes the place of a rectangle, or of a picture.
  void Set(CGraphicsObject* graphics);
  void SetActiveRect(const CXRect& rect);
  void takeArea(const CHotSpot& other);
  void setUnit(CControlUnit* unit, CXObject* object);
  CControlUnit* getUnit() const { return unitObject_ ? unit_ : nullptr; }
  CXObject* getUnitObject() const { return unitObject_.get(); }
  bool IsEnabled() const { return enabled_; }
  void Enable(bool enabled);
  // Whether it changes the cursor; at first it does.
  void EnableCursor(bool enabled) { cursorEnabled_ = enabled; }
  virtual bool TestHit(CXPoint point);

  static void setMinPriority(int priority) { minPriority_ = priority; }
  static void setMaxPriority(int priority) { maxPriority_ = priority; }
  static int getMinPriority() { return minPriority_; }
  static int getMaxPriority() { return maxPriority_; }
  static int count() { return static_cast<int>(all().size()); }
  // Back to the state of a fresh engine.
  static void done();
  // Gives what the hot spot answered that the event went to, or `flags` for an event of no meaning here.
  static int OnMouseEvent(_event event, CXPoint point, int flags);

 protected:
  CWindow* window() const { return window_; }

 private:
  using Snapshot = std::vector<WeakRef<CHotSpot>>;

  static std::vector<CHotSpot*>& all();
  static Snapshot snapshot();
  // The highest priority wins, of equals the one that was made first. Null when nothing is hit.
  static Ref<CHotSpot> findAt(CXPoint point);
  static int move(CXPoint point);
  static int pressLeft(CXPoint point);
  static int releaseLeft(CXPoint point);
  static int pressRight(CXPoint point);
  bool isWithinBounds() const { return getPriority() >= minPriority_ && getPriority() <= maxPriority_; }
  bool isUnitActive() const { return getUnit() == nullptr || getUnit()->isActive(); }
  void endCursor() const;

  static inline int minPriority_ = kFirstMinPriority;
  static inline int maxPriority_ = kFirstMaxPriority;

  CWindow* window_;
  CXRect activeRect_;
  WeakRef<CGraphicsObject> graphics_;
  CControlUnit* unit_ = nullptr;
  WeakRef<CXObject> unitObject_;
  int priority_ = 0;
  bool enabled_ = true;
  bool cursorEnabled_ = true;
  bool focused_ = false;  // the pointer is taken to be inside
};

}  // namespace footlight
