#pragma once

// Finds among many boxes those near another one, without looking at each: the plane is cut into squares, and
// each square lists the boxes that reach into it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/geometry.h"

namespace footlight {

class BoxGrid {
 public:
  void clear();
  // `place` is what `near` gives for this box.
  void add(std::uint32_t place, const CXRect& box);
  // How many were added since it was clear.
  std::size_t count() const { return count_; }
  // Appends the places of all boxes that overlap this one and of some that do not; a place may come twice.
  void near(const CXRect& box, std::vector<std::uint32_t>& places) const;

 private:
  static constexpr int kSideBits = 6;   // squares of 64 pixels
  static constexpr int kSquares = 32;   // a side; what lies outside counts to the squares at the edge
  static constexpr int kMostEach = 16;  // a box over more squares is near everything

  struct Span {
    int left, top, right, bottom;  // squares, all four within
    int count() const { return (right - left + 1) * (bottom - top + 1); }
  };

  static Span squaresOf(const CXRect& box);

  std::array<std::vector<std::uint32_t>, std::size_t{kSquares} * kSquares> squares_;
  std::vector<std::uint32_t> large_;
  std::size_t count_ = 0;
};

}  // namespace footlight
