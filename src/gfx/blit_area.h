#pragma once

// The part of two pictures that a blit touches, checked against both, and the walk over it. For the
// blit_*.cpp alone.

#include <cstdint>
#include <optional>

#include "gfx/canvas.h"

namespace footlight::blit {

struct Area {
  int width;
  int height;
  std::int64_t sourceStart;  // all in pixels
  std::int64_t sourceStride;
  std::int64_t targetStart;
  std::int64_t targetStride;
};

// Nothing when there is nothing to draw, or when the area leaves the memory of one of the two.
std::optional<Area> areaOf(const _canvas& source, const _canvas& destination);

inline std::uint16_t* pixels16(const _canvas& canvas) {
  return reinterpret_cast<std::uint16_t*>(canvas.data.data());
}
inline std::uint32_t* pixels32(const _canvas& canvas) {
  return reinterpret_cast<std::uint32_t*>(canvas.data.data());
}
inline std::uint8_t* alphaOf(const _canvas& canvas) {
  return reinterpret_cast<std::uint8_t*>(canvas.alpha.data());
}

// Calls the function with each row's first pixel in the source and in the destination.
template <class Function>
void forEachRow(const Area& area, Function function) {
  std::int64_t source = area.sourceStart;
  std::int64_t target = area.targetStart;
  for (int row = 0; row < area.height; ++row) {
    function(source, target);
    source += area.sourceStride;
    target += area.targetStride;
  }
}

template <class Function>
void forEachPixel(const Area& area, Function function) {
  forEachRow(area, [&](std::int64_t source, std::int64_t target) {
    for (int column = 0; column < area.width; ++column) function(source + column, target + column);
  });
}

constexpr bool isTwoBytes(int bpp) { return bpp == 15 || bpp == 16; }

}  // namespace footlight::blit
