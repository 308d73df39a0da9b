#pragma once

// SCROLL: pictures that are moved together and are seen through a window on the screen, the viewport. What
// lies outside of it is hidden, what crosses its edge is cut. It does not own its pictures.

#include "foundation/geometry.h"
#include "gfx/graphics_object.h"
#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kScroll = 2022;
}

class CMC_Scroll : public CMC_Object {
 public:
  CMC_Scroll(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kScroll; }

  void add(CGraphicsObject* object);
  // It gets an empty clip back.
  void remove(CGraphicsObject* object);
  // Moves what it holds.
  void scroll(int dx, int dy);
  void setViewport(const CXRect& viewport);
  void moveViewport(int dx, int dy) { setViewport(viewport_ + CXPoint(dx, dy)); }
  // Moves viewport and pictures together.
  void move(int dx, int dy);
  CXRect getViewport() const { return viewport_; }
  CXPoint getOffset() const { return offset_; }  // the sum of all scrolling

 private:
  void cutAll(CXPoint step);
  void cut(CGraphicsObject& object) const;
  void invalidateScreen() const;

  CWindow* window_;
  CXRect viewport_;
  CXPoint offset_;
  std::vector<WeakRef<CGraphicsObject>> objects_;
};

}  // namespace footlight
