// Copies without blending, the choice of a blitter, and the change of format.

#include <cstring>

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_kernels.h"

namespace footlight::blit {

namespace {

void copyRows(const _canvas& source, const _canvas& destination, const Area& area) {
  const std::uint16_t* from = pixels16(source) + area.sourceStart;
  std::uint16_t* to = pixels16(destination) + area.targetStart;
  for (int row = 0; row < area.height; ++row) {
    std::memmove(to, from, static_cast<std::size_t>(area.width) * 2);
    from += area.sourceStride;
    to += area.targetStride;
  }
}

void convertPixels(std::span<std::byte> data, auto function) {
  auto* pixels = reinterpret_cast<std::uint16_t*>(data.data());
  const std::size_t count = data.size() / 4 * 2;
  for (std::size_t i = 0; i < count; ++i) pixels[i] = static_cast<std::uint16_t>(function(pixels[i]));
}

}  // namespace

bool copy(const _canvas& source, const _canvas& destination) {
  if (!isTwoBytes(source.bpp)) return false;
  const bool same = source.bpp == destination.bpp;
  if (!same && destination.bpp != 24 && destination.bpp != 32) return false;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  if (same) copyRows(source, destination, *area);
  if (destination.bpp == 32) kernelsFor(source, destination).copy32(jobOf(source, destination, *area));
  return true;
}

bool compose(const _canvas& source, const _canvas& destination, std::uint8_t opacity, bool alphaAsMask) {
  if (opacity != 255) return copy_blend(source, destination, opacity);
  if (!destination.alpha.empty()) return copy_to_canvas(source, destination);
  if (source.alpha.empty()) return copy(source, destination);
  return alphaAsMask ? copy_alpha_as_mask(source, destination) : copy_alpha(source, destination);
}

// The lowest green bit of a 5-5-5 pixel and of a 5-6-5 pixel alike does not survive.
bool convert_bpp(std::span<std::byte> data, int from, int to) {
  if (from == to) return true;
  if (from == 15 && to == 16) {
    convertPixels(data, [](std::uint32_t p) { return (p & 0x1F) | (p & 0xFFC0) << 1; });
    return true;
  }
  if (from == 16 && to == 15) {
    convertPixels(data, [](std::uint32_t p) { return (p & 0x1F) | (p & 0xFFC0) >> 1; });
    return true;
  }
  return false;
}

}  // namespace footlight::blit
