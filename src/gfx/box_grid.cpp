#include "gfx/box_grid.h"

#include <algorithm>

namespace footlight {

BoxGrid::Span BoxGrid::squaresOf(const CXRect& box) {
  const auto square = [](int position) { return std::clamp(position >> kSideBits, 0, kSquares - 1); };
  return {square(box.left), square(box.top), square(box.right), square(box.bottom)};
}

void BoxGrid::clear() {
  for (auto& square : squares_) square.clear();
  large_.clear();
  count_ = 0;
}

void BoxGrid::add(std::uint32_t place, const CXRect& box) {
  ++count_;
  const Span span = squaresOf(box);
  if (box.Width() <= 0 || box.Height() <= 0 || span.count() > kMostEach) {
    large_.push_back(place);
    return;
  }
  for (int y = span.top; y <= span.bottom; ++y) {
    for (int x = span.left; x <= span.right; ++x) squares_[y * kSquares + x].push_back(place);
  }
}

void BoxGrid::near(const CXRect& box, std::vector<std::uint32_t>& places) const {
  places.insert(places.end(), large_.begin(), large_.end());
  const Span span = squaresOf(box);
  for (int y = span.top; y <= span.bottom; ++y) {
    for (int x = span.left; x <= span.right; ++x) {
      const auto& square = squares_[y * kSquares + x];
      places.insert(places.end(), square.begin(), square.end());
    }
  }
}

}  // namespace footlight
