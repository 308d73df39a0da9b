#pragma once

// Pixel formats are named by their bits per pixel: 15 (5-5-5), 16 (5-6-5), 24 (bytes in the order of their
// source), 32 (0x00RRGGBB), anything else one byte a pixel. Rows have no padding.

#include <cstdint>

namespace footlight {

constexpr int get_pixel_size(int bpp) {
  switch (bpp) {
    case 15:
    case 16:
      return 2;
    case 24:
      return 3;
    case 32:
      return 4;
    default:
      return 1;
  }
}

// Bytes of a picture; 0 for a size below 0.
constexpr std::int64_t get_data_size(int width, int height, int bpp) {
  return width < 0 || height < 0 ? 0 : std::int64_t{width} * height * get_pixel_size(bpp);
}

// The code for a format in some files, and back; 0 for what has none.
constexpr int GetFlagBpp(int bpp) {
  switch (bpp) {
    case 2:
      return 256;
    case 4:
      return 512;
    case 8:
      return 1;
    case 15:
      return 2;
    case 16:
      return 4;
    case 24:
      return 8;
    default:
      return 0;
  }
}
constexpr int GetRealBpp(int flag) {
  switch (flag) {
    case 1:
      return 8;
    case 2:
      return 15;
    case 4:
      return 16;
    case 8:
      return 24;
    case 256:
      return 2;
    case 512:
      return 4;
    default:
      return 0;
  }
}

// A 5-6-5 pixel as 0x00RRGGBB, the low bits of each channel zero.
constexpr std::uint32_t toPixel32(std::uint16_t pixel) {
  return (pixel & 0xF800u) << 8 | (pixel & 0x7E0u) << 5 | (pixel & 0x1Fu) << 3;
}

}  // namespace footlight
