#pragma once

// The blitters by their formulas alone, one pixel at a time: what all their forms must draw.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "gfx/blit.h"
#include "gfx/pixel_format.h"

namespace footlight::test {

// A picture with all that the blitters look at, and memory of exactly its size.
struct Picture {
  Picture(int w, int h, int format, bool withAlpha)
      : width(w),
        height(h),
        bpp(format),
        data(static_cast<std::size_t>(get_data_size(w, h, format))),
        alpha(withAlpha ? static_cast<std::size_t>(w * h) : 0) {}

  _canvas canvas(int x = 0, int y = 0, CXRect clip = {}) {
    return {data, alpha, bpp, x, y, width, height, clip};
  }
  std::uint32_t pixel(int x, int y) const {
    const std::byte* at = data.data() + static_cast<std::ptrdiff_t>(y * width + x) * get_pixel_size(bpp);
    std::uint32_t value = 0;
    for (int i = get_pixel_size(bpp); i > 0; --i)
      value = value << 8 | std::to_integer<std::uint32_t>(at[i - 1]);
    return value;
  }
  void setPixel(int x, int y, std::uint32_t value) {
    std::byte* at = data.data() + static_cast<std::ptrdiff_t>(y * width + x) * get_pixel_size(bpp);
    for (int i = 0; i < get_pixel_size(bpp); ++i) at[i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
  }
  std::byte& alphaAt(int x, int y) { return alpha[static_cast<std::size_t>(y * width + x)]; }

  int width, height, bpp;
  std::vector<std::byte> data;
  std::vector<std::byte> alpha;
};

enum class Kind { copy, alpha, mask, blend, toCanvas };

struct Case {
  Kind kind;
  int from, to;
  bool alpha;
  bool drawn;  // whether this pair of formats draws
};

inline constexpr Case kCases[] = {
    {Kind::copy, 15, 15, false, true},     {Kind::copy, 16, 16, false, true},
    {Kind::copy, 16, 32, false, true},     {Kind::copy, 16, 24, false, false},
    {Kind::copy, 15, 16, false, false},    {Kind::alpha, 15, 15, true, true},
    {Kind::alpha, 16, 16, true, true},     {Kind::alpha, 16, 32, true, true},
    {Kind::alpha, 16, 24, true, false},    {Kind::alpha, 15, 16, true, false},
    {Kind::mask, 15, 15, true, true},      {Kind::mask, 16, 16, true, true},
    {Kind::blend, 15, 15, false, true},    {Kind::blend, 16, 16, false, true},
    {Kind::blend, 16, 32, false, true},    {Kind::blend, 15, 15, true, true},
    {Kind::blend, 16, 16, true, true},     {Kind::blend, 16, 32, true, true},
    {Kind::blend, 16, 24, true, false},    {Kind::toCanvas, 15, 15, true, true},
    {Kind::toCanvas, 16, 16, true, true},  {Kind::toCanvas, 16, 16, false, true},
    {Kind::toCanvas, 32, 32, true, false},
};

// Draws with the engine, and by the formulas; the source lies at (x, y) of the target, and the part that the
// clip leaves of it lies inside.
bool draw(Kind kind, const _canvas& source, const _canvas& target, int opacity);
void drawPlain(const Case& c, Picture& source, Picture* target, CXPoint at, const CXRect& clip, int opacity);

}  // namespace footlight::test
