#pragma once

// The part of two pictures that a blit touches, checked against both, and what the inner loops take of it.
// For the blit_*.cpp alone.

#include <cstdint>
#include <optional>

#include "gfx/blit_kernels.h"
#include "gfx/canvas.h"
#include "gfx/pixel_format.h"

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

constexpr bool isTwoBytes(int bpp) { return bpp == 15 || bpp == 16; }

// What a source of 2 bytes draws on; nothing for a pair of formats that does not draw.
constexpr std::optional<TargetFormat> targetFormat(const _canvas& source, const _canvas& destination) {
  if (!isTwoBytes(source.bpp)) return std::nullopt;
  if (destination.bpp == 32) return kTo32;
  if (source.bpp != destination.bpp) return std::nullopt;
  return source.bpp == 15 ? kTo15 : kTo16;
}

// The form in use; the plain one, which goes pixel by pixel, for a picture that shares memory with the other.
const Kernels& kernelsFor(const _canvas& source, const _canvas& destination);
Job jobOf(const _canvas& source, const _canvas& destination, const Area& area, std::uint32_t opacity = 255);

}  // namespace footlight::blit
