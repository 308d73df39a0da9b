#pragma once

// The layouts of 2-byte pixels, and blending in them. For the blit_*.cpp alone.

#include <algorithm>
#include <cstdint>

#include "gfx/blit.h"
#include "gfx/pixel_format.h"

namespace footlight::blit {

struct Rgb555 {
  static constexpr int kGreenBits = 5;
};
struct Rgb565 {
  static constexpr int kGreenBits = 6;
};

template <class Format>
struct Pixel {
  static constexpr std::uint32_t kFive = 0x1F;
  static constexpr std::uint32_t kGreenMax = (1u << Format::kGreenBits) - 1;
  static constexpr int kRedShift = 5 + Format::kGreenBits;

  static constexpr std::uint32_t red(std::uint32_t pixel) { return pixel >> kRedShift & kFive; }
  static constexpr std::uint32_t green(std::uint32_t pixel) { return pixel >> 5 & kGreenMax; }
  static constexpr std::uint32_t blue(std::uint32_t pixel) { return pixel & kFive; }
  static constexpr std::uint16_t of(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return static_cast<std::uint16_t>(red << kRedShift | green << 5 | blue);
  }

  // Plain blending.
  static constexpr std::uint16_t blend(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
    return of(mix(red(s), red(t), a) & kFive, mix(green(s), green(t), a) & kGreenMax,
              mix(blue(s), blue(t), a) & kFive);
  }
  // Blending through an alpha plane adds one to each channel, held at its greatest value.
  static constexpr std::uint16_t blendPlusOne(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
    return of(std::min(mix(red(s), red(t), a) + 1, kFive),
              std::min(mix(green(s), green(t), a) + 1, kGreenMax),
              std::min(mix(blue(s), blue(t), a) + 1, kFive));
  }
};

// A 2-byte pixel onto 32 bits: both sides are taken at 5 bits a channel, and the result loses the
// green's lowest bit.
constexpr std::uint32_t blend32(std::uint32_t s, std::uint32_t d, std::uint32_t a) {
  const std::uint32_t red = mix(s >> 11 & 0x1F, (d & 0xFF0000) >> 19, a) & 0x1F;
  const std::uint32_t green = mix((s & 0x7E0) >> 6, (d & 0xFF00) >> 11, a) & 0x1F;
  const std::uint32_t blue = mix(s & 0x1F, (d & 0xFF) >> 3, a) & 0x1F;
  return toPixel32(static_cast<std::uint16_t>(red << 11 | green << 6 | blue));
}

}  // namespace footlight::blit
