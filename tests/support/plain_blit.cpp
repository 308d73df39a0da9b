#include "support/plain_blit.h"

#include <algorithm>

namespace footlight::test {

namespace {

// The plain reference: one pixel at a time, by the formulas alone.

struct Channels {
  int red, green, blue;
};

Channels split(std::uint32_t p, int bpp) {
  if (bpp == 15)
    return {static_cast<int>(p >> 10 & 31), static_cast<int>(p >> 5 & 31), static_cast<int>(p & 31)};
  return {static_cast<int>(p >> 11 & 31), static_cast<int>(p >> 5 & 63), static_cast<int>(p & 31)};
}

std::uint32_t join(Channels c, int bpp) {
  return static_cast<std::uint32_t>(bpp == 15 ? c.red << 10 | c.green << 5 | c.blue
                                              : c.red << 11 | c.green << 5 | c.blue);
}

std::uint32_t wide(std::uint32_t p) { return (p & 0xF800) << 8 | (p & 0x7E0) << 5 | (p & 0x1F) << 3; }

int mixed(int s, int t, int a) {
  const auto product = static_cast<std::int16_t>((s - t) * a);
  return static_cast<std::uint16_t>(product + (t << 8)) >> 8;
}

std::uint32_t blended(std::uint32_t s, std::uint32_t t, int a, int bpp, bool plusOne) {
  const Channels from = split(s, bpp);
  const Channels to = split(t, bpp);
  const auto channel = [&](int x, int y, int most) {
    const int value = mixed(x, y, a);
    return plusOne ? std::min(value + 1, most) : value;
  };
  return join({channel(from.red, to.red, 31), channel(from.green, to.green, bpp == 15 ? 31 : 63),
               channel(from.blue, to.blue, 31)},
              bpp);
}

std::uint32_t blended32(std::uint32_t s, std::uint32_t d, int a) {
  const int blue = mixed(static_cast<int>(s & 31), static_cast<int>((d & 0xFF) >> 3), a);
  const int green = mixed(static_cast<int>((s & 0x7E0) >> 6), static_cast<int>((d & 0xFF00) >> 11), a);
  const int red = mixed(static_cast<int>(s >> 11), static_cast<int>((d & 0xFF0000) >> 19), a);
  return wide(static_cast<std::uint32_t>(blue | green << 6 | red << 11));
}

std::uint32_t referencePixel(const Case& c, std::uint32_t s, std::uint32_t t, int a, int b, int opacity) {
  const bool wideTarget = c.to == 32;
  const std::uint32_t plain = wideTarget ? wide(s) : s;
  switch (c.kind) {
    case Kind::copy:
      return plain;
    case Kind::mask:
      return a == 0 ? t : plain;
    case Kind::alpha:
      if (a == 0) return t;
      if (a > 254) return plain;
      return wideTarget ? blended32(s, t, a) : blended(s, t, a, c.to, true);
    case Kind::blend: {
      const int weight = c.alpha ? a * opacity >> 8 : opacity;
      if (weight == 0) return t;
      return wideTarget ? blended32(s, t, weight) : blended(s, t, weight, c.to, false);
    }
    case Kind::toCanvas:
      if (c.alpha && a == 0) return t;
      if (!c.alpha || a > 254 || b == 0) return plain;
      return blended(s, t, a, c.to, true);
  }
  return t;
}

int referenceAlpha(const Case& c, int a, int b) {
  if (c.kind != Kind::toCanvas) return b;
  if (!c.alpha) return 255;
  if (a == 0) return b;
  return a > 254 || b == 0 ? a : std::min(255, b + a);
}

}  // namespace

bool draw(Kind kind, const _canvas& source, const _canvas& target, int opacity) {
  switch (kind) {
    case Kind::copy:
      return blit::copy(source, target);
    case Kind::alpha:
      return blit::copy_alpha(source, target);
    case Kind::mask:
      return blit::copy_alpha_as_mask(source, target);
    case Kind::blend:
      return blit::copy_blend(source, target, static_cast<std::uint8_t>(opacity));
    default:
      return blit::copy_to_canvas(source, target);
  }
}

void drawPlain(const Case& c, Picture& source, Picture* target, CXPoint at, const CXRect& clip, int opacity) {
  const CXRect part = clip.IsEmpty() ? CXRect(0, 0, source.width, source.height) : clip;
  for (int sy = part.top; c.drawn && sy < part.bottom; ++sy) {
    for (int sx = part.left; sx < part.right; ++sx) {
      const int x = at.x + sx;
      const int y = at.y + sy;
      const int a = c.alpha ? std::to_integer<int>(source.alphaAt(sx, sy)) : 255;
      const int b = target->alpha.empty() ? 0 : std::to_integer<int>(target->alphaAt(x, y));
      target->setPixel(x, y, referencePixel(c, source.pixel(sx, sy), target->pixel(x, y), a, b, opacity));
      if (!target->alpha.empty()) target->alphaAt(x, y) = static_cast<std::byte>(referenceAlpha(c, a, b));
    }
  }
}

}  // namespace footlight::test
