// TGA and PSD files, made byte by byte.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/file.h"
#include "foundation/byte_writer.h"
#include "gfx/image_file.h"
#include "gfx/psd.h"
#include "gfx/psd_format.h"
#include "gfx/targa.h"
#include "gfx/tga_format.h"
#include "support/screen_world.h"

namespace footlight {
namespace {

using Bytes = std::vector<std::byte>;
using test::ScreenWorld;
using testing::ElementsAre;

Bytes bytesOf(std::initializer_list<int> values) {
  Bytes bytes;
  for (const int value : values) bytes.push_back(static_cast<std::byte>(value & 0xFF));
  return bytes;
}

std::string text(const Bytes& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

// Two pixels wide, two rows from the bottom: blue and green below, red and white above.
Bytes tga(int idLength, int kind, int bpp) {
  ByteWriter out;
  out.bytes(bytesOf({idLength, 0, kind, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 2, 0, bpp, 0}));
  return out.bytes(bytesOf({255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255})).take();
}

TEST(Tga, IsTurnedUprightAndShownInTheDisplaysFormat) {
  for (const auto& [bpp, red, green] : {std::tuple{15, 0x7C00, 0x3E0}, {16, 0xF800, 0x7E0}}) {
    const ScreenWorld world({64, 48}, bpp);
    ASSERT_EQ(world.window->CreateSurface(), 0);
    world.folder.write("a.tga", text(tga(0, 2, 24)));
    CImageFile file(world.window.get());
    EXPECT_EQ(file.Load("a.TGA"), _filetype::targa);
    CGraphicsObject& picture = *file.object();
    EXPECT_EQ(picture.LastError(), 0);
    ASSERT_EQ(picture.getBpp(), bpp);
    const CXSize size = picture.Size();
    EXPECT_EQ(size, CXSize(2, 2));
    EXPECT_EQ(picture.GetPixel(0, 0).value(), static_cast<std::uint32_t>(red));
    EXPECT_EQ(picture.GetPixel(1, 1).value(), static_cast<std::uint32_t>(green));
    EXPECT_EQ(picture.GetPixel(0, 1).value(), 0x1Fu);
  }
}

TEST(Tga, OfAnotherFormIsEmptyAndNoError) {
  struct Row {
    int idLength, kind, bpp;
    CXSize size;
  };
  for (const Row& row :
       {Row{1, 2, 24, {0, 0}}, {0, 2, 32, {2, 2}}, {0, 2, 16, {2, 2}}, {0, 10, 24, {2, 2}}}) {
    const auto picture = readTga(tga(row.idLength, row.kind, row.bpp));
    ASSERT_TRUE(picture);
    EXPECT_TRUE(picture->pixels.empty());
    EXPECT_NE(picture->unread, nullptr);
    EXPECT_EQ(picture->size, row.size);
  }
  Bytes cut = tga(0, 2, 24);
  cut.resize(19);
  EXPECT_THAT(readTga(cut)->pixels, testing::Contains(std::byte{0}).Times(11));
  cut.resize(17);
  EXPECT_FALSE(readTga(cut));
  Bytes huge = tga(0, 2, 24);
  huge[13] = huge[15] = std::byte{255};
  EXPECT_TRUE(readTga(huge)->pixels.empty());
}

// A PSD file in its parts; numbers have the highest byte first.
class Psd {
 public:
  Psd& n16(int value) { return raw(bytesOf({value >> 8, value})); }
  Psd& n32(int value) { return raw(bytesOf({value >> 24, value >> 16, value >> 8, value})); }
  Psd& raw(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
  }
  Psd& zeros(std::size_t count) { return raw(Bytes(count)); }
  Psd& head(int layers, int resources = 3) {
    return zeros(26)
        .n32(0)
        .n32(resources)
        .zeros(static_cast<std::size_t>(resources))
        .n32(999)
        .n32(999)
        .n16(layers);
  }
  // With the ids of its channels; `count` is what the record says of them.
  Psd& record(CXRect rect, int count, std::initializer_list<int> ids, const std::string& name, int mask = 0,
              bool hasBlock = false) {
    n32(rect.top).n32(rect.left).n32(rect.bottom).n32(rect.right).n16(count);
    for (const int id : ids) n16(id).n32(77);
    zeros(16).n32(mask).zeros(mask > 0 ? 20 : 0).n32(2).zeros(2);
    raw(bytesOf({static_cast<int>(name.size())}));
    for (const char letter : name) raw(bytesOf({letter}));
    if (!name.empty()) zeros((4 - (name.size() + 1) % 4) % 4);
    if (hasBlock) raw(bytesOf({'8', 'B', 'I', 'M', 'k', 'e', 'y', ' '})).n32(3).zeros(3);
    return *this;
  }
  const Bytes& bytes() const { return bytes_; }

 private:
  Bytes bytes_;
};

constexpr CXRect kFirst(5, 6, 7, 8);  // 2 x 2

// Two layers: the first with all channels, plain and packed, the second says that it has one channel.
Psd twoLayers() {
  Psd psd;
  psd.head(-2).record(kFirst, 4, {-1, 0, 1, 2}, "abc", 9, true).record({0, 0, 1, 1}, 1, {2, 1, 0, 7}, "four");
  psd.n16(0).raw(bytesOf({255, 128, 64, 0}));                  // alpha
  psd.n16(1).n16(2).n16(3).raw(bytesOf({-1, 200, 1, 8, 16}));  // red: 200 200, 8 16
  psd.n16(9);                                                  // green of an unknown coding
  psd.n16(0).raw(bytesOf({1, 2, 3, 4}));                       // blue
  psd.n16(0).raw(bytesOf({50})).n16(0).raw(bytesOf({60})).n16(0).raw(bytesOf({70})).n16(0).raw(bytesOf({80}));
  return psd;
}

TEST(Psd, HasItsLayersNamesAndChannels) {
  const PsdPicture picture = readPsd(twoLayers().bytes());
  EXPECT_EQ(picture.why, nullptr);
  ASSERT_EQ(picture.layers.size(), 2u);
  const PsdLayer& first = picture.layers[0];
  EXPECT_EQ(first.rect, kFirst);
  EXPECT_EQ(first.name, "abc");
  EXPECT_EQ(first.channels[1].plane, bytesOf({200, 200, 8, 16}));
  EXPECT_TRUE(first.channels[2].plane.empty());
  const PsdLayer& second = picture.layers[1];
  EXPECT_EQ(second.name, "four");
  ASSERT_EQ(second.channels.size(), 4u) << "the first layer's number holds";
  EXPECT_EQ(second.channels[3].id, 7);
}

TEST(Psd, ShowsTheSelectedLayer) {
  const ScreenWorld world;
  ASSERT_EQ(world.window->CreateSurface(), 0);
  world.folder.write("a.psd", text(twoLayers().bytes()));
  CPSD psd(world.window.get(), "a.psd");
  EXPECT_EQ(psd.LastError(), 0);
  EXPECT_EQ(psd.GetLayerNo(), 2);
  const CXSize size = psd.Size();
  EXPECT_EQ(size, CXSize(2, 2));
  EXPECT_EQ(psd.GetPosition(), CXPoint(5, 6));
  EXPECT_EQ(psd.GetPixel(0, 0).value(), 0xC800u);
  EXPECT_EQ(psd.GetPixel(_channel::alpha, {1, 0}), 128);
  psd.SelectLayer("none");
  EXPECT_EQ(psd.GetSelLayer(), 0);
  psd.SelectLayer("four");
  EXPECT_EQ(psd.GetSelLayer(), 1);
  EXPECT_EQ(psd.GetLayerName(-1), "four");
  EXPECT_EQ(psd.GetLayerName(0), "abc");
  EXPECT_EQ(psd.GetCurrentLayer()->GetPixel(0, 0).value(), (70u >> 3) << 11 | (60u >> 2) << 5 | 50u >> 3);
  psd.SetPosition(3, -4);
  EXPECT_EQ(psd.GetLayerRect(0), CXRect(3, 0, 3, 1));
}

TEST(Psd, ThatEndsEarlyKeepsItsWholeLayers) {
  const Bytes whole = twoLayers().bytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const PsdPicture picture = readPsd(std::span(whole).first(size));
    EXPECT_NE(picture.why, nullptr) << size;
    EXPECT_EQ(picture.layers.size(), size >= whole.size() - 12 ? 1u : 0u) << size;
  }
}

TEST(Psd, WithLyingNumbersHasNoSuchLayers) {
  EXPECT_TRUE(readPsd(Psd().head(0x7FFF).zeros(50).bytes()).layers.empty());
  EXPECT_TRUE(readPsd(Psd().head(1).record(kFirst, 0xFFFF, {}, "").zeros(99).bytes()).layers.empty());
  Psd back;
  back.head(1).record(kFirst, 0, {}, "").raw(bytesOf({'8', 'B', 'I', 'M', 0, 0, 0, 0})).n32(-12).zeros(99);
  EXPECT_TRUE(readPsd(back.bytes()).layers.empty()) << "a length below 0 leads out of the file";
  const PsdPicture inverted =
      readPsd(Psd().head(1).record({7, 8, 5, 6}, 1, {0}, "x").n16(0).zeros(9).bytes());
  ASSERT_EQ(inverted.layers.size(), 1u);
  EXPECT_TRUE(inverted.layers[0].channels[0].plane.empty());
  const PsdPicture negative =
      readPsd(Psd().head(1).record(kFirst, 1, {0}, "").n16(1).n16(-5).n16(2).raw(bytesOf({-1, 9})).bytes());
  ASSERT_EQ(negative.layers.size(), 1u);
  EXPECT_EQ(negative.layers[0].channels[0].plane, bytesOf({0, 0, 9, 9}));
}

}  // namespace
}  // namespace footlight
