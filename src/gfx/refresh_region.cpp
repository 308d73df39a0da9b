#include "gfx/refresh_region.h"

#include <algorithm>

#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr CXRect kWholeScreen(0, 0, 800, 600);  // whatever the size of the screen

// What of `rect` lies outside `hole`, as bands: left, above, below, right. Pushed so that the first comes off
// first.
void pushRemainder(std::vector<CXRect>* pending, const CXRect& rect, const CXRect& hole) {
  const int left = std::max(rect.left, hole.left);
  const int right = std::min(rect.right, hole.right);
  CXRect::addRect(pending, hole.right, rect.top, rect.right, rect.bottom);
  CXRect::addRect(pending, left, hole.bottom, right, rect.bottom);
  CXRect::addRect(pending, left, rect.top, right, hole.top);
  CXRect::addRect(pending, rect.left, rect.top, hole.left, rect.bottom);
}

}  // namespace

void CRefreshRegion::add(const CXRect* rect) {
  if (full_) return;
  if (rect == nullptr || *rect == kWholeScreen) {
    clear();
    full_ = true;
    return;
  }
  std::vector<CXRect> pending{*rect};
  while (!pending.empty()) {
    const CXRect piece = pending.back();
    const auto hit =
        std::ranges::find_if(rects_, [&](const CXRect& r) { return !r.Common(piece).IsEmpty(); });
    if (hit == rects_.end()) {
      pending.pop_back();
      rects_.push_back(piece);
    } else if (piece.IsPartOf(*hit)) {
      pending.pop_back();
    } else if (hit->IsPartOf(piece)) {
      rects_.erase(hit);
    } else {
      const CXRect hole = *hit;
      pending.pop_back();
      pushRemainder(&pending, piece, hole);
    }
  }
  if (rects_.size() <= limits::kDirtyRects) return;
  guardHit("dirty rectangles");
  add(nullptr);
}

void CRefreshRegion::clear() {
  full_ = false;
  rects_.clear();
}

}  // namespace footlight
