#pragma once

// The picture behind everything. It lies in a device surface and is copied back wherever the screen is dirty.
// Moving the surface scrolls it; in which directions it then wraps is the scroll mode.

#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_region.h"

namespace footlight {

class CRefreshScreen;

class CBackgroundManager : public CXObject {
 public:
  enum class ScrollMode { none = 0, horizontal = 1, vertical = 2, both = 3 };

  CBackgroundManager(CWindow* window, CRefreshScreen* owner) : window_(window), owner_(owner) {}

  // One colour over the whole screen; null is the usual one.
  void SetBackground(CColor* colour);
  // A picture of the object; null takes the background away. The object is drawn again if the
  // surface is lost.
  void SetBackground(CGraphicsObject* object);
  // Takes over a ready surface.
  void setBackground(Owned<CDirectDrawSurface> surface);
  CDirectDrawSurface* surface() const { return surface_.get(); }
  ScrollMode scrollMode() const { return scrollMode_; }

  // Copies the background into the dirty part of the destination.
  void Redraw(CDirectDrawSurface* destination, const CRefreshRegion& region);

 private:
  void checkScrollMode();
  CXPoint wrapPosition();
  void restore(CDirectDrawSurface* destination, const CXRect& rect, CXPoint position);

  CWindow* window_;
  CRefreshScreen* owner_;
  Owned<CDirectDrawSurface> surface_;
  ScrollMode scrollMode_ = ScrollMode::both;
};

}  // namespace footlight
