#pragma once

// What a blitter knows of a picture, one record for the source and one for the destination. The
// records own nothing.
//
// Source: `x` and `y` say where its top-left corner lands on the destination, `width` and `height` are its
// size, `clip` is in its own coordinates. Destination: `width` is its pitch in pixels, `clip` the source's
// viewport. An empty clip means none.

#include <cstddef>
#include <cstdint>
#include <span>

#include "foundation/geometry.h"

namespace footlight {

struct _canvas {
  std::span<std::byte> data;
  std::span<std::byte> alpha;  // one byte a pixel; empty without an alpha plane
  int bpp = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  CXRect clip;
};

}  // namespace footlight
