#pragma once

// Integer geometry in pixels. The right and bottom sides of a rectangle lie outside of it; where a clip is
// asked for, the all-zero rectangle means "no clipping". Sums wrap in 32 bits.

#include <vector>

#include "foundation/arithmetic.h"

namespace footlight {

class CXPoint {
 public:
  constexpr CXPoint() = default;
  constexpr CXPoint(int px, int py) : x(px), y(py) {}
  friend constexpr bool operator==(const CXPoint&, const CXPoint&) = default;
  friend constexpr CXPoint operator+(CXPoint a, CXPoint b) {
    return {wrap_add(a.x, b.x), wrap_add(a.y, b.y)};
  }
  friend constexpr CXPoint operator-(CXPoint a, CXPoint b) {
    return {wrap_sub(a.x, b.x), wrap_sub(a.y, b.y)};
  }

  int x = 0;
  int y = 0;
};

class CXSize {
 public:
  constexpr CXSize() = default;
  constexpr CXSize(int w, int h) : width(w), height(h) {}
  friend constexpr bool operator==(const CXSize&, const CXSize&) = default;
  constexpr int mul() const { return wrap_mul(width, height); }
  constexpr int Sum() const { return wrap_add(width, height); }
  constexpr int AbsSum() const {
    return wrap_add(width < 0 ? wrap_negate(width) : width, height < 0 ? wrap_negate(height) : height);
  }

  int width = 0;
  int height = 0;
};

class CXRect {
 public:
  constexpr CXRect() = default;
  constexpr explicit CXRect(int side) : CXRect(side, side, side, side) {}
  constexpr CXRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
  friend constexpr bool operator==(const CXRect&, const CXRect&) = default;

  constexpr void Set(int l, int t, int r, int b) { *this = CXRect(l, t, r, b); }
  constexpr void Empty() { *this = CXRect(); }
  constexpr int Width() const { return wrap_sub(right, left); }
  constexpr int Height() const { return wrap_sub(bottom, top); }
  constexpr CXSize Size() const { return {Width(), Height()}; }
  constexpr bool IsEmpty() const { return right == left || bottom == top; }
  constexpr bool IsInRect(int x, int y) const { return left <= x && x < right && top <= y && y < bottom; }
  constexpr bool IsInRect(CXPoint point) const { return IsInRect(point.x, point.y); }
  // This rectangle lies wholly inside the other, borders included.
  constexpr bool IsPartOf(const CXRect& other) const {
    return left >= other.left && top >= other.top && right <= other.right && bottom <= other.bottom;
  }
  constexpr bool isInside(const CXRect& other) const { return IsPartOf(other); }

  // The bounding rectangle of both, in place.
  CXRect& Sum(const CXRect& other);
  // The intersection. All zero when left passes right or top passes bottom; rectangles that just touch give
  // one of zero width or height.
  CXRect Common(const CXRect& other) const;
  // Moves each side outward.
  void Explode(int d) { Explode(d, d); }
  void Explode(int dx, int dy);
  void Explode(CXSize d) { Explode(d.width, d.height); }

  constexpr CXPoint LeftTop() const { return {left, top}; }
  constexpr CXPoint RightTop() const { return {right, top}; }
  constexpr CXPoint LeftBottom() const { return {left, bottom}; }
  constexpr CXPoint BottomRight() const { return {right, bottom}; }
  constexpr CXPoint CenterPoint() const { return {wrap_add(left, Width() / 2), wrap_add(top, Height() / 2)}; }
  // The top-left corner that centres something of this size in the rectangle.
  constexpr CXPoint GetCenteredPosition(CXSize size) const {
    return {wrap_add(left, wrap_sub(Width(), size.width) / 2),
            wrap_add(top, wrap_sub(Height(), size.height) / 2)};
  }

  CXRect& operator+=(CXPoint shift);
  CXRect& operator-=(CXPoint shift);
  CXRect& operator+=(const CXRect& sides);
  CXRect& operator+=(CXSize growth);  // moves the right and bottom sides
  friend CXRect operator+(CXRect rect, CXPoint shift) { return rect += shift; }
  friend CXRect operator-(CXRect rect, CXPoint shift) { return rect -= shift; }

  // Pieces without overlaps that together cover this rectangle minus `other`; none when the two
  // do not overlap.
  std::vector<CXRect> sub(const CXRect& other) const;
  // Adds the rectangle to the list unless it is empty.
  static void addRect(std::vector<CXRect>* list, int l, int t, int r, int b);

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

}  // namespace footlight
