#include "foreign.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "jpeg_writer.h"
#include "run.h"
#include "support/test_platform.h"

namespace footlight::image {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::byte> bytesOf(std::initializer_list<int> values) {
  std::vector<std::byte> bytes;
  for (const int value : values) bytes.push_back(static_cast<std::byte>(value));
  return bytes;
}

std::vector<std::uint32_t> pixelsOf(const std::vector<std::byte>& file, const std::string& extension) {
  std::string why;
  const auto picture = readForeign(file, extension, &why);
  return picture ? picture->pixels.pixels : std::vector<std::uint32_t>();
}

TEST(Foreign, TgaOfEveryFormIsRead) {
  // An image id of one byte, runs of 32 bits, from the left upper corner.
  EXPECT_THAT(pixelsOf(bytesOf({1,    0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 1, 0, 32, 0x20, 99,  //
                                0x81, 1, 2,  3, 4, 0, 5, 6, 7, 8}),
                       ".tga"),
              ElementsAre(0x04030201, 0x04030201, 0x08070605));
  // A palette of 24 bits from number 1 on, from the right lower corner.
  EXPECT_THAT(pixelsOf(bytesOf({0, 1, 1, 1, 0, 2, 0, 24, 0, 0, 0, 0, 2, 0, 1, 0, 8, 0x10,  //
                                1, 2, 3, 4, 5, 6, 2, 0}),
                       ".tga"),
              ElementsAre(0xFF000000, 0xFF060504));
  // Gray, from the left lower corner; and 16 bits.
  EXPECT_THAT(pixelsOf(bytesOf({0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 0, 8, 0, 7, 9}), ".tga"),
              ElementsAre(0xFF090909, 0xFF070707));
  EXPECT_THAT(pixelsOf(bytesOf({0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 16, 0, 0x1F, 0x7C}), ".tga"),
              ElementsAre(0xFFFF00FF));
  EXPECT_THAT(pixelsOf(bytesOf({0, 0, 9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 8, 0, 7}), ".tga"),
              testing::IsEmpty());
}

TEST(Foreign, BmpAndJpegAreRead) {
  const auto bmp =
      bytesOf({'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 24,
               0,   0,   0,  0, 0, 4, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 0});
  EXPECT_THAT(pixelsOf(bmp, ".bmp"), ElementsAre(0xFF030201));
  EXPECT_THAT(pixelsOf(bytesOf({'B', 'M', 1}), ".bmp"), testing::IsEmpty());
  const std::vector<std::uint32_t> white(4, 0xFFFFFFFF);
  EXPECT_EQ(pixelsOf(encodeJpeg(2, 2, white, 90), ".jpg"), white);
}

// Two layers of one name, each of one red pixel with alpha, and one without pixels between them.
std::vector<std::byte> document() {
  std::vector<std::byte> file(26 + 4 + 4 + 8);
  const auto add = [&](std::initializer_list<int> values) {
    const auto bytes = bytesOf(values);
    file.insert(file.end(), bytes.begin(), bytes.end());
  };
  add({0, 3});
  for (const int right : {6, 5, 6}) {
    add({0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 5, 0, 0, 0, right, 0, 2, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    file.resize(file.size() + 24);
    add({3, 'a', ' ', 'b'});
  }
  for (const bool isEmpty : {false, true, false}) {
    for (const int value : {77, 200}) {
      add({0, 0});
      if (!isEmpty) add({value});
    }
  }
  return file;
}

TEST(Foreign, LayersBecomePicturesWithTheirPlacesAndTheLinesThatShowThem) {
  const test::TemporaryFolder folder;
  const auto file = document();
  folder.write("scene.psd", {reinterpret_cast<const char*>(file.data()), file.size()});
  Options options;
  options.input = (folder.path() / "scene.psd").string();
  options.isInfo = true;
  EXPECT_THAT(run(options).info, HasSubstr("A_BN2: 1x1, with alpha, at 5 4"));
  options.isInfo = false;
  options.output = folder.path().string();
  ASSERT_EQ(run(options).failure, "");
  options = {.input = (folder.path() / "a_bn2.img").string(), .isInfo = true};
  EXPECT_THAT(run(options).info, HasSubstr("1x1, 16 bits per pixel, packing none, at 5 4, with alpha"));
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "layers.cnv"));
  std::string why;
  EXPECT_EQ(definitionOf(*readLayers(file, &why)),
            "DEF:A_B(TYPE=IMAGE|FILENAME=a_b.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=0)\n"
            "DEF:A_BN2(TYPE=IMAGE|FILENAME=a_bn2.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=1)\n");
  auto cut = file;
  cut.resize(cut.size() - 1);
  EXPECT_FALSE(readLayers(cut, &why));
  EXPECT_THAT(why, HasSubstr("ends early"));
}

}  // namespace
}  // namespace footlight::image
