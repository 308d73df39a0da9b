#pragma once

// The dirty part of a screen: rectangles that do not overlap, or everything. Neighbours are not merged.

#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"

namespace footlight {

class CRefreshRegion : public CXObject {
 public:
  explicit CRefreshRegion(bool full) : full_(full) {}

  // Null, or the rectangle (0, 0, 800, 600), makes the region full; a full region takes nothing more.
  // Otherwise the parts of the rectangle that are not yet in the region are added.
  void add(const CXRect* rect);
  void clear();
  bool isFull() const { return full_; }
  bool isEmpty() const { return !full_ && rects_.empty(); }
  // The rectangles in the order of adding; none when the region is full.
  const std::vector<CXRect>& rects() const { return rects_; }

 private:
  bool full_;
  std::vector<CXRect> rects_;
};

}  // namespace footlight
