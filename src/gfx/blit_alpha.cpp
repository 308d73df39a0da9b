// Copies through the source's alpha plane.

#include <algorithm>

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_kernels.h"

namespace footlight::blit {

namespace {

constexpr std::uint8_t kOpaque = 255;

bool copyOpaqueToCanvas(const _canvas& source, const _canvas& destination) {
  const auto area = areaOf(source, destination);
  if (!area || !copy(source, destination)) return false;
  std::uint8_t* target = alphaOf(destination) + area->targetStart;
  for (int row = 0; row < area->height; ++row)
    std::fill_n(target + row * area->targetStride, area->width, kOpaque);
  return true;
}

}  // namespace

bool copy_alpha(const _canvas& source, const _canvas& destination) {
  if (destination.bpp == 24) return false;
  const auto format = targetFormat(source, destination);
  if (!format || source.alpha.empty()) return true;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  kernelsFor(source, destination).alpha[*format](jobOf(source, destination, *area));
  return true;
}

bool copy_alpha_as_mask(const _canvas& source, const _canvas& destination) {
  if (!isTwoBytes(source.bpp) || source.bpp != destination.bpp || source.alpha.empty()) return false;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  kernelsFor(source, destination).mask(jobOf(source, destination, *area));
  return true;
}

bool copy_to_canvas(const _canvas& source, const _canvas& destination) {
  if (!isTwoBytes(source.bpp) || source.bpp != destination.bpp || destination.alpha.empty()) return true;
  if (source.alpha.empty()) return copyOpaqueToCanvas(source, destination);
  const auto area = areaOf(source, destination);
  if (!area) return false;
  const TargetFormat format = source.bpp == 15 ? kTo15 : kTo16;
  kernelsFor(source, destination).toCanvas[format](jobOf(source, destination, *area));
  return true;
}

}  // namespace footlight::blit
