#pragma once

// What canvases, patterns and masked pictures have in common: they draw others. No such picture may come to
// draw itself, and the drawings that one of them asks for are counted, since they multiply where such
// pictures lie in each other.

#include "foundation/depth.h"
#include "gfx/graphics_object.h"

namespace footlight {

// Whether `whole` would draw itself if it drew `part`.
bool closesCircle(const CGraphicsObject& whole, CGraphicsObject& part);

// Held while a picture draws its parts.
class CompositeGuard {
 public:
  CompositeGuard();
  ~CompositeGuard() { --nested; }
  CompositeGuard(const CompositeGuard&) = delete;
  CompositeGuard& operator=(const CompositeGuard&) = delete;
  // False over the limit: draw nothing.
  explicit operator bool() const { return isAllowed_; }

 private:
  static inline int nested = 0;
  static inline int drawn = 0;  // since the outermost one began
  DepthGuard depth_;
  bool isAllowed_;
};

// Drawing an object elsewhere for a moment: its clip, place and destiny come back with the end of this.
class DrawnElsewhere {
 public:
  // Where `setPosition` would put the object.
  DrawnElsewhere(CGraphicsObject* object, CXPoint place, CGraphicsObject* destiny);
  ~DrawnElsewhere();
  DrawnElsewhere(const DrawnElsewhere&) = delete;
  DrawnElsewhere& operator=(const DrawnElsewhere&) = delete;

 private:
  Ref<CGraphicsObject> object_;
  CXRect clip_;
  CXPoint place_;
  WeakRef<CGraphicsObject> destiny_;
};

}  // namespace footlight
