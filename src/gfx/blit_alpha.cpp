// Copies through the source's alpha plane.

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_formats.h"

namespace footlight::blit {

namespace {

constexpr std::uint32_t kOpaque = 255;

template <class Format>
void copyAlpha(const _canvas& source, const _canvas& destination, const Area& area) {
  forEachPixel(area, [s = pixels16(source), alpha = alphaOf(source), t = pixels16(destination)](
                         std::int64_t from, std::int64_t to) {
    const std::uint32_t a = alpha[from];
    if (a == 0) return;
    t[to] = a == kOpaque ? s[from] : Pixel<Format>::blendPlusOne(s[from], t[to], a);
  });
}

void copyAlpha32(const _canvas& source, const _canvas& destination, const Area& area) {
  forEachPixel(area, [s = pixels16(source), alpha = alphaOf(source), t = pixels32(destination)](
                         std::int64_t from, std::int64_t to) {
    const std::uint32_t a = alpha[from];
    if (a == 0) return;
    t[to] = a == kOpaque ? toPixel32(s[from]) : blend32(s[from], t[to], a);
  });
}

template <class Format>
void copyToCanvas(const _canvas& source, const _canvas& destination, const Area& area) {
  forEachPixel(area, [s = pixels16(source), alpha = alphaOf(source), t = pixels16(destination),
                      target = alphaOf(destination)](std::int64_t from, std::int64_t to) {
    const std::uint32_t a = alpha[from];
    const std::uint32_t b = target[to];
    if (a == 0) return;
    if (a == kOpaque || b == 0) {
      t[to] = s[from];
      target[to] = static_cast<std::uint8_t>(a);
      return;
    }
    t[to] = Pixel<Format>::blendPlusOne(s[from], t[to], a);
    target[to] = static_cast<std::uint8_t>(std::min(kOpaque, b + a));
  });
}

}  // namespace

bool copy_alpha(const _canvas& source, const _canvas& destination) {
  if (destination.bpp == 24) return false;
  const bool same = source.bpp == destination.bpp;
  if (!isTwoBytes(source.bpp) || (!same && destination.bpp != 32) || source.alpha.empty()) return true;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  if (!same) {
    copyAlpha32(source, destination, *area);
  } else if (source.bpp == 15) {
    copyAlpha<Rgb555>(source, destination, *area);
  } else {
    copyAlpha<Rgb565>(source, destination, *area);
  }
  return true;
}

bool copy_to_canvas(const _canvas& source, const _canvas& destination) {
  if (!isTwoBytes(source.bpp) || source.bpp != destination.bpp || destination.alpha.empty()) return true;
  if (source.alpha.empty()) {
    const auto area = areaOf(source, destination);
    if (!area || !copy(source, destination)) return false;
    forEachPixel(*area,
                 [target = alphaOf(destination)](std::int64_t, std::int64_t to) { target[to] = kOpaque; });
    return true;
  }
  const auto area = areaOf(source, destination);
  if (!area) return false;
  if (source.bpp == 15) {
    copyToCanvas<Rgb555>(source, destination, *area);
  } else {
    copyToCanvas<Rgb565>(source, destination, *area);
  }
  return true;
}

}  // namespace footlight::blit
