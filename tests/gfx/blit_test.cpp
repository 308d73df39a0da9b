#include "gfx/blit.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "support/plain_blit.h"

namespace footlight {
namespace {

using namespace test;

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
  const std::uint32_t used = bpp == 32 ? 0xFFFFFFFF : 0xFFFF;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) picture.setPixel(x, y, static_cast<std::uint32_t>(random()) & used);
  }
  // Runs of one value beside noise: whole registers of them take ways of their own.
  for (std::size_t i = 0; i < picture.alpha.size();) {
    const bool isRun = upTo(random, 3) == 0;
    const std::byte first = someAlpha(random);
    for (int count = 1 + upTo(random, 90); count > 0 && i < picture.alpha.size(); --count)
      picture.alpha[i++] = isRun ? first : someAlpha(random);
  }
  return picture;
}

constexpr blit::Form kForms[] = {blit::Form::plain, blit::Form::sse2, blit::Form::avx2, blit::Form::avx512};

// A clip inside a picture, or none.
CXRect someClip(Random& random, int width, int height) {
  if (upTo(random, 2) == 0) return {};
  const int left = upTo(random, width - 1);
  const int top = upTo(random, height - 1);
  return {left, top, left + 1 + upTo(random, width - left - 1), top + 1 + upTo(random, height - top - 1)};
}

// Every form that the machine has against the formulas: pictures from narrower than a register to wider than
// some, lying over every side of a target, with the clip that then keeps them inside.
TEST(Blit, DrawsWhatTheFormulasSayInEveryForm) {
  constexpr CXSize kTarget(150, 9);
  Random random(7);
  for (const Case& c : kCases) {
    for (int round = 0; round < 256; ++round) {
      const int width = 1 + upTo(random, 180);
      const int height = 1 + upTo(random, 7);
      const int opacity = c.kind == Kind::blend ? round : 255;
      Picture source = noise(random, width, height, c.from, c.alpha);
      const Picture before = noise(random, kTarget.width, kTarget.height, c.to, c.kind == Kind::toCanvas);
      const CXPoint at(upTo(random, kTarget.width + width - 2) - width + 1,
                       upTo(random, kTarget.height + height - 2) - height + 1);
      const CXRect shown = CXRect(0, 0, kTarget.width, kTarget.height) - at;
      CXRect clip = shown.Common({0, 0, width, height});
      if (const CXRect own = someClip(random, width, height); !own.IsEmpty() && !clip.Common(own).IsEmpty())
        clip = clip.Common(own);
      Picture expected = before;
      drawPlain(c, source, &expected, at, clip, opacity);
      for (const blit::Form form : kForms) {
        if (!blit::useForm(form)) continue;
        Picture target = before;
        draw(c.kind, source.canvas(at.x, at.y, clip), target.canvas(), opacity);
        ASSERT_EQ(target.data == expected.data && target.alpha == expected.alpha, true)
            << "kind " << static_cast<int>(c.kind) << ": " << c.from << " to " << c.to << ", form "
            << static_cast<int>(form) << ", opacity " << opacity << ", round " << round;
      }
    }
  }
  blit::useBestForm();
}

// Each channel value onto each other one with each alpha, and with each opacity.
TEST(Blit, MixesEveryPairOfChannelsWithEveryWeight) {
  for (const Case& c : kCases) {
    if (!c.drawn || c.kind == Kind::copy || c.kind == Kind::mask) continue;
    Picture source(64, 64, c.from, c.alpha);
    Picture before(64, 64, c.to, c.kind == Kind::toCanvas);
    for (int s = 0; s < 64; ++s) {
      for (int t = 0; t < 64; ++t) {
        source.setPixel(
            s, t, static_cast<std::uint32_t>((s / 2) * 0x0801 | s << 5) & (c.from == 15 ? 0x7FFF : 0xFFFF));
        before.setPixel(s, t,
                        static_cast<std::uint32_t>(c.to == 32 ? t * 0x040404 : ((t / 2) * 0x0801 | t << 5)) &
                            (c.to == 15 ? 0x7FFF : 0xFFFFFFFF));
      }
    }
    std::ranges::fill(before.alpha, std::byte{77});
    for (int weight = 0; weight < 256; ++weight) {
      std::ranges::fill(source.alpha, static_cast<std::byte>(weight));
      for (const int opacity :
           c.kind == Kind::blend && c.alpha ? std::vector{1, 128, 254} : std::vector{weight}) {
        Picture expected = before;
        drawPlain(c, source, &expected, {}, {}, opacity);
        for (const blit::Form form : kForms) {
          if (!blit::useForm(form)) continue;
          Picture target = before;
          draw(c.kind, source.canvas(), target.canvas(), opacity);
          ASSERT_EQ(target.data == expected.data && target.alpha == expected.alpha, true)
              << "kind " << static_cast<int>(c.kind) << ", form " << static_cast<int>(form) << ", weight "
              << weight;
        }
      }
    }
  }
  blit::useBestForm();
}

// Drawn onto itself, each pixel comes from what the ones before have left.
TEST(Blit, DrawsAPictureOntoItselfPixelByPixel) {
  Random random(3);
  Picture expected = noise(random, 100, 3, 16, true);
  Picture target = expected;
  const auto at = [](Picture& p) {
    _canvas canvas = p.canvas(1, 0, {0, 0, 99, 3});
    return canvas;
  };
  ASSERT_TRUE(blit::useForm(blit::Form::plain));
  blit::copy_alpha(at(expected), expected.canvas());
  blit::useBestForm();
  blit::copy_alpha(at(target), target.canvas());
  EXPECT_EQ(target.data, expected.data);
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
