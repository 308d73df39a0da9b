// Copies at an opacity.

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_formats.h"

namespace footlight::blit {

namespace {

template <class Format>
struct Blend16 {
  static std::uint16_t* pixels(const _canvas& destination) { return pixels16(destination); }
  static std::uint16_t blend(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
    return Pixel<Format>::blend(s, t, a);
  }
};

struct Blend32 {
  static std::uint32_t* pixels(const _canvas& destination) { return pixels32(destination); }
  static std::uint32_t blend(std::uint32_t s, std::uint32_t t, std::uint32_t a) { return blend32(s, t, a); }
};

template <class Target>
void copyBlend(const _canvas& source, const _canvas& destination, const Area& area, std::uint32_t opacity) {
  if (opacity == 0) return;
  forEachPixel(area,
               [s = pixels16(source), t = Target::pixels(destination), opacity](
                   std::int64_t from, std::int64_t to) { t[to] = Target::blend(s[from], t[to], opacity); });
}

template <class Target>
void copyAlphaBlend(const _canvas& source, const _canvas& destination, const Area& area,
                    std::uint32_t opacity) {
  forEachPixel(area, [s = pixels16(source), alpha = alphaOf(source), t = Target::pixels(destination),
                      opacity](std::int64_t from, std::int64_t to) {
    const std::uint32_t a = alpha[from] * opacity >> 8;
    if (a != 0) t[to] = Target::blend(s[from], t[to], a);
  });
}

template <class Target>
void blendOnto(const _canvas& source, const _canvas& destination, const Area& area, std::uint32_t opacity) {
  if (source.alpha.empty()) {
    copyBlend<Target>(source, destination, area, opacity);
  } else {
    copyAlphaBlend<Target>(source, destination, area, opacity);
  }
}

}  // namespace

bool copy_blend(const _canvas& source, const _canvas& destination, std::uint8_t opacity) {
  if (destination.bpp == 24) return false;
  const bool same = source.bpp == destination.bpp;
  if (!isTwoBytes(source.bpp) || (!same && destination.bpp != 32)) return true;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  if (!same) {
    blendOnto<Blend32>(source, destination, *area, opacity);
  } else if (source.bpp == 15) {
    blendOnto<Blend16<Rgb555>>(source, destination, *area, opacity);
  } else {
    blendOnto<Blend16<Rgb565>>(source, destination, *area, opacity);
  }
  return true;
}

}  // namespace footlight::blit
