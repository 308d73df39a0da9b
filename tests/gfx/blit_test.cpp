#include "gfx/blit.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "gfx/pixel_format.h"

namespace footlight {
namespace {

// A picture with all that the blitters look at, and memory of exactly its size.
struct Picture {
  Picture(int w, int h, int format, bool withAlpha)
      : width(w),
        height(h),
        bpp(format),
        data(static_cast<std::size_t>(get_data_size(w, h, format))),
        alpha(withAlpha ? static_cast<std::size_t>(w * h) : 0) {}

  _canvas canvas(int x = 0, int y = 0, CXRect clip = {}) {
    return {data, alpha, bpp, x, y, width, height, clip};
  }
  std::uint32_t pixel(int x, int y) const {
    const std::byte* at = data.data() + static_cast<std::ptrdiff_t>(y * width + x) * get_pixel_size(bpp);
    std::uint32_t value = 0;
    for (int i = get_pixel_size(bpp); i > 0; --i)
      value = value << 8 | std::to_integer<std::uint32_t>(at[i - 1]);
    return value;
  }
  void setPixel(int x, int y, std::uint32_t value) {
    std::byte* at = data.data() + static_cast<std::ptrdiff_t>(y * width + x) * get_pixel_size(bpp);
    for (int i = 0; i < get_pixel_size(bpp); ++i) at[i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
  }
  std::byte& alphaAt(int x, int y) { return alpha[static_cast<std::size_t>(y * width + x)]; }

  int width, height, bpp;
  std::vector<std::byte> data;
  std::vector<std::byte> alpha;
};

using Random = std::mt19937;

int upTo(Random& random, int n) { return std::uniform_int_distribution<int>(0, n)(random); }

// Alpha planes are mostly edges: transparent, opaque and their neighbours.
std::byte someAlpha(Random& random) {
  constexpr std::array<int, 6> kEdges = {0, 1, 2, 253, 254, 255};
  return static_cast<std::byte>(upTo(random, 1) == 0 ? kEdges[static_cast<std::size_t>(upTo(random, 5))]
                                                     : upTo(random, 255));
}

Picture noise(Random& random, int width, int height, int bpp, bool withAlpha) {
  Picture picture(width, height, bpp, withAlpha);
  const std::uint32_t used = bpp == 15 ? 0x7FFF : bpp == 16 ? 0xFFFF : 0xFFFFFF;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) picture.setPixel(x, y, static_cast<std::uint32_t>(random()) & used);
  }
  for (std::byte& value : picture.alpha) value = someAlpha(random);
  return picture;
}

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

enum class Kind { copy, alpha, mask, blend, toCanvas };

struct Case {
  Kind kind;
  int from, to;
  bool alpha;
  bool drawn;  // whether this pair of formats draws
};

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

constexpr Case kCases[] = {
    {Kind::copy, 15, 15, false, true},     {Kind::copy, 16, 16, false, true},
    {Kind::copy, 16, 32, false, true},     {Kind::copy, 16, 24, false, false},
    {Kind::copy, 15, 16, false, false},    {Kind::alpha, 15, 15, true, true},
    {Kind::alpha, 16, 16, true, true},     {Kind::alpha, 16, 32, true, true},
    {Kind::alpha, 16, 24, true, false},    {Kind::alpha, 15, 16, true, false},
    {Kind::mask, 15, 15, true, true},      {Kind::mask, 16, 16, true, true},
    {Kind::blend, 15, 15, false, true},    {Kind::blend, 16, 16, false, true},
    {Kind::blend, 16, 32, false, true},    {Kind::blend, 15, 15, true, true},
    {Kind::blend, 16, 16, true, true},     {Kind::blend, 16, 32, true, true},
    {Kind::blend, 16, 24, true, false},    {Kind::toCanvas, 15, 15, true, true},
    {Kind::toCanvas, 16, 16, true, true},  {Kind::toCanvas, 16, 16, false, true},
    {Kind::toCanvas, 32, 32, true, false},
};

TEST(Blit, DrawsWhatTheFormulasSayForEveryPairOfFormats) {
  Random random(7);
  for (const Case& c : kCases) {
    for (int round = 0; round < 60; ++round) {
      const int width = 1 + upTo(random, 12);
      const int height = 1 + upTo(random, 7);
      Picture source = noise(random, width, height, c.from, c.alpha);
      Picture target = noise(random, 16, 12, c.to, c.kind == Kind::toCanvas);
      const int opacity =
          round < 3 ? std::array{0, 1, 254}[static_cast<std::size_t>(round)] : upTo(random, 254);
      // A clip inside both pictures; every third one is none, with the picture wholly inside.
      CXRect clip;
      int x = upTo(random, 16 - width);
      int y = upTo(random, 12 - height);
      if (round % 3 != 0) {
        clip.left = upTo(random, width - 1);
        clip.top = upTo(random, height - 1);
        clip.right = clip.left + 1 + upTo(random, width - clip.left - 1);
        clip.bottom = clip.top + 1 + upTo(random, height - clip.top - 1);
        x = upTo(random, 16 - clip.Width()) - clip.left;
        y = upTo(random, 12 - clip.Height()) - clip.top;
      }
      Picture expected = target;
      const CXRect part = clip.IsEmpty() ? CXRect(0, 0, width, height) : clip;
      for (int sy = part.top; c.drawn && sy < part.bottom; ++sy) {
        for (int sx = part.left; sx < part.right; ++sx) {
          const int a = c.alpha ? std::to_integer<int>(source.alphaAt(sx, sy)) : 255;
          const int b = target.alpha.empty() ? 0 : std::to_integer<int>(target.alphaAt(x + sx, y + sy));
          expected.setPixel(
              x + sx, y + sy,
              referencePixel(c, source.pixel(sx, sy), target.pixel(x + sx, y + sy), a, b, opacity));
          if (!expected.alpha.empty())
            expected.alphaAt(x + sx, y + sy) = static_cast<std::byte>(referenceAlpha(c, a, b));
        }
      }
      draw(c.kind, source.canvas(x, y, clip), target.canvas(), opacity);
      ASSERT_EQ(target.data, expected.data) << static_cast<int>(c.kind) << ": " << c.from << " to " << c.to
                                            << ", opacity " << opacity << ", round " << round;
      ASSERT_EQ(target.alpha, expected.alpha)
          << static_cast<int>(c.kind) << ": " << c.from << ", round " << round;
    }
  }
}

TEST(Blit, ClampsTheExtraOneAtFullChannelsAndAddsItAtEmptyOnes) {
  Picture source(2, 1, 16, true);
  Picture target(2, 1, 16, false);
  source.setPixel(0, 0, 0xFFFF);
  target.setPixel(0, 0, 0xFFFF);
  source.alpha = {std::byte{254}, std::byte{1}};
  EXPECT_TRUE(blit::copy_alpha(source.canvas(), target.canvas()));
  EXPECT_EQ(target.pixel(0, 0), 0xFFFFu);
  EXPECT_EQ(target.pixel(1, 0), (1u << 11 | 1u << 5 | 1u));
}

TEST(Blit, AnswersByThePairOfFormats) {
  Picture source(2, 2, 16, true);
  Picture deep(2, 2, 24, false);
  Picture other(2, 2, 15, false);
  EXPECT_TRUE(blit::copy(source.canvas(), deep.canvas()));
  EXPECT_FALSE(blit::copy_alpha(source.canvas(), deep.canvas()));
  EXPECT_FALSE(blit::copy_blend(source.canvas(), deep.canvas(), 100));
  EXPECT_FALSE(blit::copy(source.canvas(), other.canvas()));
  EXPECT_TRUE(blit::copy_alpha(source.canvas(), other.canvas()));
  EXPECT_FALSE(blit::copy(deep.canvas(), deep.canvas()));
}

TEST(Blit, RefusesWhatLeavesEitherPicture) {
  Picture source(4, 4, 16, true);
  Picture target(4, 4, 16, true);
  std::fill(source.data.begin(), source.data.end(), std::byte{0x55});
  const Picture before = target;
  _canvas shortData = source.canvas();
  shortData.data = shortData.data.first(31);
  _canvas shortAlpha = source.canvas();
  shortAlpha.alpha = shortAlpha.alpha.first(15);
  const _canvas bad[] = {
      source.canvas(1, 0),
      source.canvas(0, -1),
      source.canvas(-1, 0),
      source.canvas(0, 1),
      source.canvas(0, 0, {0, 0, 5, 4}),
      source.canvas(0, 0, {3, 0, 1, 4}),
      source.canvas(0, 0, {-1, 0, 3, 4}),
      source.canvas(0x7FFFFFFF, 0x7FFFFFFF),
      shortData,
      shortAlpha,
  };
  for (const _canvas& canvas : bad) {
    for (const Kind kind : {Kind::copy, Kind::alpha, Kind::mask, Kind::blend, Kind::toCanvas}) {
      draw(kind, canvas, target.canvas(), 200);
    }
  }
  EXPECT_EQ(target.data, before.data);
  EXPECT_EQ(target.alpha, before.alpha);
}

TEST(Blit, ConvertsBetweenTheTwoByteFormats) {
  std::vector<std::byte> pixels(10);
  auto* words = reinterpret_cast<std::uint16_t*>(pixels.data());
  const std::array<std::uint16_t, 5> before = {0x7FFF, 0x0020, 0x0041, 0x7C00, 0x7FFF};
  std::ranges::copy(before, words);
  EXPECT_TRUE(blit::convert_bpp(pixels, 15, 16));
  // The lowest green bit is lost, and an odd last pixel stays.
  const std::array<std::uint16_t, 5> after = {0xFF9F, 0x0000, 0x0081, 0xF800, 0x7FFF};
  EXPECT_TRUE(std::ranges::equal(after, std::span(words, 5)));
  EXPECT_TRUE(blit::convert_bpp(pixels, 16, 15));
  EXPECT_EQ(words[0], 0x7FDF);
  EXPECT_EQ(words[2], 0x0041);
  EXPECT_TRUE(blit::convert_bpp(pixels, 16, 16));
  EXPECT_FALSE(blit::convert_bpp(pixels, 24, 16));
}

}  // namespace
}  // namespace footlight
