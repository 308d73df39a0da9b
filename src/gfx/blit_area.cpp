#include "gfx/blit_area.h"

#include "foundation/diagnose.h"
#include "gfx/pixel_format.h"

namespace footlight::blit {

namespace {

// The first pixel of the area is at `start`, the last one height - 1 strides and width - 1 pixels behind it.
bool fits(std::int64_t start, std::int64_t stride, int width, int height, std::size_t pixels) {
  return start >= 0 && stride >= width &&
         start + (height - 1) * stride + width <= static_cast<std::int64_t>(pixels);
}

}  // namespace

std::optional<Area> areaOf(const _canvas& source, const _canvas& destination) {
  if (source.data.empty() || CXSize(source.width, source.height).AbsSum() == 0) return std::nullopt;
  std::int64_t start = 0;
  std::int64_t skip = 0;
  std::int64_t width = source.width;
  std::int64_t height = source.height;
  const CXRect& clip = source.clip;
  if (!clip.IsEmpty()) {
    start = std::int64_t{clip.top} * source.width + clip.left;
    width = std::int64_t{clip.right} - clip.left;
    height = std::int64_t{clip.bottom} - clip.top;
    skip = source.width - width;
  }
  const CXRect& view = destination.clip;
  if (!view.IsEmpty()) {
    start += std::int64_t{view.top} * width + view.left;
    width = std::int64_t{view.right} - view.left;
    height = std::int64_t{view.bottom} - view.top;
    skip += source.width - width;
  }
  if (width <= 0 || height <= 0) return std::nullopt;

  const std::int64_t left = std::int64_t{clip.IsEmpty() ? 0 : clip.left} + source.x;
  const std::int64_t top = std::int64_t{clip.IsEmpty() ? 0 : clip.top} + source.y;
  const bool inside = left >= 0 && top >= 0 && left + width <= destination.width &&
                      top + height <= destination.height && width <= source.width && height <= source.height;
  if (!inside) {
    guardHit("blit area");
    return std::nullopt;
  }
  const Area area{static_cast<int>(width),        static_cast<int>(height), start, width + skip,
                  top * destination.width + left, destination.width};
  const auto sourcePixels = source.data.size() / static_cast<std::size_t>(get_pixel_size(source.bpp));
  const auto targetPixels =
      destination.data.size() / static_cast<std::size_t>(get_pixel_size(destination.bpp));
  const bool fitsAll = fits(start, area.sourceStride, area.width, area.height, sourcePixels) &&
                       fits(area.targetStart, area.targetStride, area.width, area.height, targetPixels) &&
                       (source.alpha.empty() ||
                        fits(start, area.sourceStride, area.width, area.height, source.alpha.size())) &&
                       (destination.alpha.empty() || fits(area.targetStart, area.targetStride, area.width,
                                                          area.height, destination.alpha.size()));
  if (!fitsAll) {
    guardHit("blit area");
    return std::nullopt;
  }
  return area;
}

}  // namespace footlight::blit
