#include "foundation/geometry.h"

#include <algorithm>

namespace footlight {

CXRect& CXRect::Sum(const CXRect& other) {
  left = std::min(left, other.left);
  top = std::min(top, other.top);
  right = std::max(right, other.right);
  bottom = std::max(bottom, other.bottom);
  return *this;
}

CXRect CXRect::Common(const CXRect& other) const {
  const CXRect common(std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                      std::min(bottom, other.bottom));
  return common.left > common.right || common.top > common.bottom ? CXRect() : common;
}

void CXRect::Explode(int dx, int dy) {
  left = wrap_sub(left, dx);
  top = wrap_sub(top, dy);
  right = wrap_add(right, dx);
  bottom = wrap_add(bottom, dy);
}

CXRect& CXRect::operator+=(CXPoint shift) {
  return *this += CXRect(shift.x, shift.y, shift.x, shift.y);
}

CXRect& CXRect::operator-=(CXPoint shift) {
  return *this += CXRect(wrap_negate(shift.x), wrap_negate(shift.y), wrap_negate(shift.x), wrap_negate(shift.y));
}

CXRect& CXRect::operator+=(const CXRect& sides) {
  left = wrap_add(left, sides.left);
  top = wrap_add(top, sides.top);
  right = wrap_add(right, sides.right);
  bottom = wrap_add(bottom, sides.bottom);
  return *this;
}

CXRect& CXRect::operator+=(CXSize growth) {
  right = wrap_add(right, growth.width);
  bottom = wrap_add(bottom, growth.height);
  return *this;
}

}  // namespace footlight
