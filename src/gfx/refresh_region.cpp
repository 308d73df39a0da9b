#include "gfx/refresh_region.h"

#include <algorithm>

#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr CXRect kWholeScreen(0, 0, 800, 600);  // whatever the size of the screen
constexpr int kManyCells = 64;  // a rectangle over more of them is sooner found without the grid

bool hasArea(const CXRect& rect) { return rect.left < rect.right && rect.top < rect.bottom; }

// What of `rect` lies outside `hole`, as bands: left, above, below, right. Last first.
std::vector<CXRect> remainder(const CXRect& rect, const CXRect& hole) {
  const int left = std::max(rect.left, hole.left);
  const int right = std::min(rect.right, hole.right);
  std::vector<CXRect> bands;
  CXRect::addRect(&bands, hole.right, rect.top, rect.right, rect.bottom);
  CXRect::addRect(&bands, left, hole.bottom, right, rect.bottom);
  CXRect::addRect(&bands, left, rect.top, right, hole.top);
  CXRect::addRect(&bands, rect.left, rect.top, hole.left, rect.bottom);
  return bands;
}

}  // namespace

void CRefreshRegion::add(const CXRect* rect) {
  if (full_) return;
  if (rect == nullptr || *rect == kWholeScreen) {
    clear();
    full_ = true;
    return;
  }
  std::vector<Piece> pending{{*rect, 0}};
  while (!pending.empty()) {
    addPiece(&pending);
    if (living_ <= limits::kDirtyRects && slots_.size() <= 4 * std::size_t{limits::kDirtyRects}) continue;
    guardHit("dirty rectangles");
    add(nullptr);
    return;
  }
}

// Brings the last piece one step further. What lies in front of the rectangle that was found stays apart from
// the piece and all that is cut out of it, so the search goes on from there.
void CRefreshRegion::addPiece(std::vector<Piece>* pending) {
  const Piece piece = pending->back();
  const int found = findFrom(piece.place, piece.rect);
  if (found < 0) {
    pending->pop_back();
    append(piece.rect);
    return;
  }
  const CXRect hit = at(found);
  if (!piece.rect.IsPartOf(hit) && hit.IsPartOf(piece.rect)) {
    remove(found);
    pending->back().place = found + 1;
    return;
  }
  pending->pop_back();
  if (piece.rect.IsPartOf(hit)) return;
  for (const CXRect& band : remainder(piece.rect, hit)) pending->push_back({band, found + 1});
}

int CRefreshRegion::findFrom(int place, const CXRect& area) const {
  if (!hasArea(area) || grid_.empty()) return -1;
  const auto [left, top, right, bottom] = cellsOf(area);
  const int end = static_cast<int>(slots_.size());
  if ((right - left + 1) * (bottom - top + 1) > kManyCells) {
    for (int i = place; i < end; ++i) {
      const Slot& slot = slots_[static_cast<std::size_t>(i)];
      if (slot.isLiving && hasArea(slot.rect.Common(area))) return i;
    }
    return -1;
  }
  int first = end;
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) {
      const int found = findIn(grid_[cellIndex(x, y)], place, area);
      if (found >= 0) first = std::min(first, found);
    }
  }
  return first < end ? first : -1;
}

int CRefreshRegion::findIn(const std::vector<int>& places, int place, const CXRect& area) const {
  for (auto i = std::ranges::lower_bound(places, place); i != places.end(); ++i) {
    const Slot& slot = slots_[static_cast<std::size_t>(*i)];
    if (slot.isLiving && hasArea(slot.rect.Common(area))) return *i;
  }
  return -1;
}

CRefreshRegion::CellRange CRefreshRegion::cellsOf(const CXRect& rect) {
  const auto index = [](int at) { return std::clamp(at >> kCellShift, 0, kCells - 1); };
  return {index(rect.left), index(rect.top), index(rect.right - 1), index(rect.bottom - 1)};
}

template <class Function>
void CRefreshRegion::forEachCell(const CXRect& rect, Function function) {
  if (!hasArea(rect)) return;
  const auto [left, top, right, bottom] = cellsOf(rect);
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) function(grid_[cellIndex(x, y)]);
  }
}

void CRefreshRegion::append(const CXRect& rect) {
  const int place = static_cast<int>(slots_.size());
  slots_.push_back({rect, true});
  ++living_;
  if (isListGood_) list_.push_back(rect);
  if (grid_.empty()) grid_.resize(std::size_t{kCells} * kCells);
  forEachCell(rect, [place](std::vector<int>& places) { places.push_back(place); });
}

void CRefreshRegion::remove(int place) {
  slots_[static_cast<std::size_t>(place)].isLiving = false;
  --living_;
  isListGood_ = false;
}

const std::vector<CXRect>& CRefreshRegion::rects() const {
  if (!isListGood_) {
    list_.clear();
    for (const Slot& slot : slots_) {
      if (slot.isLiving) list_.push_back(slot.rect);
    }
    isListGood_ = true;
  }
  return list_;
}

void CRefreshRegion::compact() {
  if (full_ || living_ == static_cast<int>(slots_.size())) return;
  const std::vector<CXRect> kept = rects();
  clear();
  for (const CXRect& rect : kept) append(rect);
}

void CRefreshRegion::clear() {
  for (const Slot& slot : slots_) {
    forEachCell(slot.rect, [](std::vector<int>& places) { places.clear(); });
  }
  full_ = false;
  living_ = 0;
  slots_.clear();
  list_.clear();
  isListGood_ = true;
}

}  // namespace footlight
