// What gives a graphic object other planes, each on a few pixels.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gfx/graphics_object.h"

namespace footlight {
namespace {

using testing::ElementsAre;
using Values = std::vector<int>;

PixelBlock words(const Values& values) {
  std::vector<std::byte> bytes;
  for (const int value : values) {
    bytes.push_back(static_cast<std::byte>(value & 0xFF));
    bytes.push_back(static_cast<std::byte>(value >> 8));
  }
  return PixelBlock(std::move(bytes), 16);
}

PixelBlock octets(const Values& values, int bpp) {
  std::vector<std::byte> bytes;
  for (const int value : values) bytes.push_back(static_cast<std::byte>(value));
  return PixelBlock(std::move(bytes), bpp);
}

Values octetsOf(std::span<const std::byte> bytes) {
  Values values;
  for (const std::byte byte : bytes) values.push_back(static_cast<int>(byte));
  return values;
}

Values wordsOf(const CGraphicsObject& object) {
  const Values bytes = octetsOf(object.pixels().bytes());
  Values values;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) values.push_back(bytes[i] | bytes[i + 1] << 8);
  return values;
}

Values alphaOf(const CGraphicsObject& object) { return octetsOf(object.AlphaChannel().bytes()); }

// 4 x 3: pixels 1 to 12, alpha 101 to 112.
struct Numbered : CGraphicsObject {
  Numbered() : CGraphicsObject(nullptr, {4, 3}, words({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})) {
    AlphaChannel(octets({101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112}, 8));
  }
};

TEST(Effects, CropKeepsThePartThatLiesInside) {
  Numbered object;
  object.crop({2, 1, 9, 9});
  EXPECT_EQ(object.Size(), CXSize(2, 2));
  EXPECT_THAT(wordsOf(object), ElementsAre(7, 8, 11, 12));
  EXPECT_THAT(alphaOf(object), ElementsAre(107, 108, 111, 112));
  object.crop({5, 5, 6, 6});
  EXPECT_EQ(object.Size(), CXSize(2, 2)) << "nothing of that lies inside";
}

TEST(Effects, ScaleTakesTheNearestPixel) {
  Numbered larger;
  larger.Scale(1.5, 2.0);
  EXPECT_EQ(larger.Size(), CXSize(6, 6));
  const Values pixels = wordsOf(larger);
  EXPECT_THAT(Values(pixels.begin(), pixels.begin() + 6), ElementsAre(1, 1, 2, 3, 3, 4));
  EXPECT_THAT(Values(pixels.end() - 6, pixels.end()), ElementsAre(9, 9, 10, 11, 11, 12));
  Numbered smaller;
  smaller.Scale(0.5, 0.5);
  EXPECT_THAT(wordsOf(smaller), ElementsAre(1, 3));
  EXPECT_THAT(alphaOf(smaller), ElementsAre(101, 103));
  Numbered halved;
  halved.Scale2x();
  EXPECT_EQ(halved.Size(), CXSize(2, 1));
  EXPECT_THAT(wordsOf(halved), ElementsAre(1, 3));
  Numbered none;
  none.Scale(0.1, 1.0);
  EXPECT_EQ(none.Size(), CXSize(4, 3));
}

// Each pixel from the right; the first row from two to the left, which leads before the picture and to its
// first pixel as well: neither counts.
TEST(Effects, DisplacementTakesPixelsFromElsewhere) {
  std::vector<CXPoint> map(12, CXPoint(1, 0));
  std::fill_n(map.begin(), 4, CXPoint(-2, 0));
  Numbered object;
  object.displacementFilter(map, false);
  EXPECT_THAT(wordsOf(object), ElementsAre(0, 0, 0, 2, 6, 7, 8, 9, 10, 11, 12, 0));
  EXPECT_THAT(alphaOf(object)[3], 104) << "the plane stays";
  Numbered both;
  both.displacementFilter(map, true);
  EXPECT_THAT(alphaOf(both), ElementsAre(101, 102, 103, 102, 106, 107, 108, 109, 110, 111, 112, 112));
}

TEST(Effects, OutlinePaintsAnOpaqueFrame) {
  Numbered object;
  object.outline(77, 1);
  EXPECT_THAT(wordsOf(object), ElementsAre(77, 77, 77, 77, 77, 6, 7, 77, 77, 77, 77, 77));
  EXPECT_THAT(alphaOf(object), ElementsAre(255, 255, 255, 255, 255, 106, 107, 255, 255, 255, 255, 255));
  Numbered plain;
  plain.AlphaChannel(PixelBlock());
  plain.outline(77, 1);
  EXPECT_EQ(wordsOf(plain)[0], 1) << "only with an alpha plane";
}

// Each piece of a row ends before the last column. The wall in the middle is gone round below.
TEST(Effects, FloodFillGoesRoundWhatItsMaskShuts) {
  CGraphicsObject object(nullptr, {6, 3}, words(Values(18)));
  std::vector<std::uint16_t> mask(18, 1);
  mask[2] = mask[8] = 0;
  const CXRect box = object.PrepareFloodFill({0, 0}, CColor(0xFFFF, _colormodel::bpp16), mask);
  EXPECT_EQ(box, CXRect(0, 0, 5, 3));
  std::vector<Values> spans;
  for (const _floodfill& span : object.getFFArray()) spans.push_back({span.x, span.y, span.length});
  EXPECT_THAT(spans, ElementsAre(Values{0, 0, 2}, Values{0, 1, 2}, Values{0, 2, 5}, Values{3, 1, 2},
                                 Values{3, 0, 2}));
  EXPECT_EQ(object.getFFEnterances(), 5);
  const int f = 0xFFFF;
  EXPECT_THAT(wordsOf(object), ElementsAre(f, f, 0, f, f, 0, f, f, 0, f, f, 0, f, f, f, f, f, 0));
  object.FloodFill(CColor(0x1234, _colormodel::bpp16));
  EXPECT_EQ(std::ranges::count(wordsOf(object), 0x1234), 13);
  object.PrepareFloodFill({3, 2}, CColor(0x1234, _colormodel::bpp16), mask);
  EXPECT_EQ(object.getFFEnterances(), 1) << "the place itself, though it has the colour";
  EXPECT_EQ(object.PrepareFloodFill({6, 0}, CColor(1, _colormodel::bpp16), mask), CXRect());
}

TEST(Effects, ChannelsComeApartAndTogether) {
  CGraphicsObject object(nullptr, {2, 1}, octets({1, 2, 3, 4, 5, 6}, 24));
  object.Split();
  EXPECT_THAT(octetsOf(object.channelPlane(_channel::blue).bytes()), ElementsAre(1, 4));
  EXPECT_THAT(octetsOf(object.channelPlane(_channel::red).bytes()), ElementsAre(3, 6));
  EXPECT_FALSE(object.pixels());
  object.setChannelPlane(_channel::green, PixelBlock());
  object.JoinChannels();
  EXPECT_EQ(object.getBpp(), 24);
  EXPECT_THAT(octetsOf(object.pixels().bytes()), ElementsAre(1, 0, 3, 4, 0, 6));

  object.setChannelPlane(_channel::alpha, octets({8, 9}, 8));
  std::vector<std::byte> joined = object.Join2Channels();
  EXPECT_THAT(octetsOf(joined), ElementsAre(1, 0, 3, 8, 4, 0, 6, 9));
  joined[5] = std::byte{50};
  object.SplitOn2(joined, 2);
  EXPECT_THAT(octetsOf(object.pixels().bytes()), ElementsAre(1, 0, 3, 4, 50, 6));
  EXPECT_THAT(alphaOf(object), ElementsAre(8, 9));
}

}  // namespace
}  // namespace footlight
