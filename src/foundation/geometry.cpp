#include "foundation/geometry.h"

#include <algorithm>
#include <array>
#include <string_view>

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

CXRect& CXRect::operator+=(CXPoint shift) { return *this += CXRect(shift.x, shift.y, shift.x, shift.y); }

CXRect& CXRect::operator-=(CXPoint shift) {
  return *this +=
         CXRect(wrap_negate(shift.x), wrap_negate(shift.y), wrap_negate(shift.x), wrap_negate(shift.y));
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

namespace {

// For each way that the other rectangle covers sides of this one (left 1, top 2, right 4, bottom 8): the
// pieces that remain, each as its left, top, right and bottom. A capital names a side of this rectangle, a
// small letter one of the other.
constexpr std::array<std::string_view, 16> kPieces = {
    "LTlB lTRt lbRB rtRb",  // inside
    "LTRt rtRb LbRB",       // bites into the left side
    "LTlB lbrB rTRB",       // ... the top side
    "LbRB rTRb",            // the top-left corner
    "LTRt Ltlb LbRB",       // bites into the right side
    "LTRt LbRB",            // a band across
    "LTlB lbRB",            // the top-right corner
    "LbRB",                 // the top part
    "LTlB lTrt rTRB",       // bites into the bottom side
    "LTRt rtRB",            // the bottom-left corner
    "LTlB rTRB",            // a band down
    "rTRB",                 // the left part
    "LTlB lTRt",            // the bottom-right corner
    "LTRt",                 // the bottom part
    "LTlB",                 // the right part
    "",                     // everything
};

int side(const CXRect& capital, const CXRect& small, char name) {
  switch (name) {
    case 'L':
      return capital.left;
    case 'T':
      return capital.top;
    case 'R':
      return capital.right;
    case 'B':
      return capital.bottom;
    case 'l':
      return small.left;
    case 't':
      return small.top;
    case 'r':
      return small.right;
    default:
      return small.bottom;
  }
}

}  // namespace

std::vector<CXRect> CXRect::sub(const CXRect& other) const {
  std::vector<CXRect> pieces;
  if (Common(other).IsEmpty()) return pieces;
  const std::size_t covered =
      static_cast<std::size_t>((other.left <= left ? 1 : 0) | (other.top <= top ? 2 : 0) |
                               (other.right >= right ? 4 : 0) | (other.bottom >= bottom ? 8 : 0));
  for (std::string_view names = kPieces[covered]; names.size() >= 4;
       names.remove_prefix(std::min<std::size_t>(5, names.size()))) {
    addRect(&pieces, side(*this, other, names[0]), side(*this, other, names[1]), side(*this, other, names[2]),
            side(*this, other, names[3]));
  }
  return pieces;
}

void CXRect::addRect(std::vector<CXRect>* list, int l, int t, int r, int b) {
  if (t < b && l < r) list->emplace_back(l, t, r, b);
}

}  // namespace footlight
