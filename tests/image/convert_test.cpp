#include "convert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "run.h"
#include "support/test_platform.h"
#include "words.h"

namespace footlight::image {
namespace {

using test::TemporaryFolder;
using testing::HasSubstr;

// Smooth colours, flat parts and noise; with every kind of alpha.
Picture drawing(bool hasAlpha) {
  Picture picture;
  picture.pixels = {37, 23, {}};
  picture.hasAlpha = hasAlpha;
  std::mt19937 random(1);
  for (std::uint32_t i = 0; i < 37 * 23; ++i) {
    const std::uint32_t colour = i % 5 == 0 ? static_cast<std::uint32_t>(random()) : i / 60 * 0x0B1107;
    const std::uint32_t alpha = hasAlpha ? i / 3 % 256 : 255;
    picture.pixels.pixels.push_back(alpha << 24 | (colour & 0xFFFFFF));
  }
  return picture;
}

Picture read(const std::vector<std::byte>& file) {
  std::string why;
  auto picture = readPicture(file, &why);
  EXPECT_TRUE(picture) << why;
  return picture ? std::move(*picture) : Picture();
}

std::vector<std::byte> img(const Picture& picture, const Form& form) {
  std::string why;
  return toImg(picture, form, &why).value_or(std::vector<std::byte>());
}

// A channel of so many bits fills eight.
std::uint32_t shown(std::uint32_t value, int bits) {
  const std::uint32_t upper = value >> (8 - bits);
  return upper << (8 - bits) | upper >> (2 * bits - 8);
}

TEST(Convert, KeepsWhatTheFormatHoldsInEveryPacking) {
  for (const int bpp : {15, 16}) {
    for (const PackingWord& row : kPackings) {
      if (row.packing == _compression::jpeg) continue;
      for (const bool hasAlpha : {false, true}) {
        Picture picture = drawing(hasAlpha);
        picture.position = {-7, 300};
        const std::vector<std::byte> file = img(picture, {.bpp = bpp, .packing = row.packing});
        const Picture back = read(file);
        EXPECT_EQ(back.position, CXPoint(-7, 300));
        EXPECT_EQ(back.bpp, bpp);
        EXPECT_EQ(back.packing, row.packing);
        EXPECT_EQ(back.hasAlpha, hasAlpha);
        ASSERT_EQ(back.pixels.pixels.size(), picture.pixels.pixels.size());
        for (std::size_t i = 0; i < back.pixels.pixels.size(); ++i) {
          const std::uint32_t p = picture.pixels.pixels[i];
          ASSERT_EQ(back.pixels.pixels[i], (p & 0xFF000000) | shown(p >> 16 & 0xFF, 5) << 16 |
                                               shown(p >> 8 & 0xFF, bpp == 15 ? 5 : 6) << 8 |
                                               shown(p & 0xFF, 5))
              << row.word << " " << i;
        }
        EXPECT_EQ(img(back, {.bpp = bpp, .packing = row.packing}), file) << "there and back again";
        std::string why;
        EXPECT_EQ(read(*toPng(back, &why)).pixels.pixels, back.pixels.pixels);
      }
    }
  }
}

TEST(Convert, PacksJpegColoursCloseToTheirOwn) {
  Picture picture = drawing(true);
  for (std::uint32_t i = 0; i < picture.pixels.pixels.size(); ++i)
    picture.pixels.pixels[i] = (picture.pixels.pixels[i] & 0xFF000000) | (0x204080 + i % 37 * 0x030201);
  const std::vector<std::byte> fine = img(picture, {.packing = _compression::jpeg});
  const std::vector<std::byte> coarse = img(picture, {.packing = _compression::jpeg, .quality = 10});
  EXPECT_LT(coarse.size(), fine.size());
  const Picture back = read(fine);
  ASSERT_EQ(back.pixels.pixels.size(), picture.pixels.pixels.size());
  for (std::size_t i = 0; i < back.pixels.pixels.size(); ++i) {
    for (int shift = 0; shift < 24; shift += 8) {
      const int difference = static_cast<int>(back.pixels.pixels[i] >> shift & 0xFF) -
                             static_cast<int>(picture.pixels.pixels[i] >> shift & 0xFF);
      EXPECT_LE(std::abs(difference), 16) << i;
    }
    EXPECT_EQ(back.pixels.pixels[i] >> 24, picture.pixels.pixels[i] >> 24);
  }
}

TEST(Convert, WritesAnAlphaPlaneAsAskedFor) {
  EXPECT_FALSE(read(img(drawing(false), {})).hasAlpha);
  EXPECT_TRUE(read(img(drawing(false), {.alpha = AlphaPlane::always})).hasAlpha);
  EXPECT_FALSE(read(img(drawing(true), {.alpha = AlphaPlane::never})).hasAlpha);
}

std::string failureOf(const Options& options) { return run(options).failure; }

TEST(Run, NamesTheFileAndWhatIsWrong) {
  const TemporaryFolder folder;
  const auto at = [&](const char* name) { return (folder.path() / name).string(); };
  folder.write("empty.png", "");
  folder.write("bad.png", "\x89PNG\r\n\x1a\nno more");
  folder.write("cut.img", std::string("PIK\0\2\0\0\0", 8));
  folder.makeFolder("folder.img");
  std::string why;
  const auto png = *toPng(drawing(true), &why);
  folder.write("good.png", {reinterpret_cast<const char*>(png.data()), png.size()});

  EXPECT_EQ(failureOf({.input = at("none.png"), .output = at("a.img")}), at("none.png") + ": cannot be read");
  EXPECT_EQ(failureOf({.input = at("empty.png"), .output = at("a.img")}),
            at("empty.png") + ": the file is no picture");
  EXPECT_THAT(failureOf({.input = at("bad.png"), .output = at("a.img")}),
              HasSubstr("bad.png: the PNG picture is damaged"));
  EXPECT_EQ(failureOf({.input = at("cut.img"), .output = at("a.png")}),
            at("cut.img") + ": the picture's header is cut off");
  EXPECT_EQ(failureOf({.input = at("good.png"), .output = at("a.bmp")}),
            at("a.bmp") + ": only files that end in .img or .png are written");
  EXPECT_EQ(failureOf({.input = at("good.png"), .output = at("folder.img")}),
            at("folder.img") + ": is a folder");
  std::filesystem::create_symlink("outside", at("link.img"));
  EXPECT_EQ(failureOf({.input = at("good.png"), .output = at("link.img")}),
            at("link.img") + ": is a link, which is not written through");
  EXPECT_FALSE(folder.exists("a.img") || folder.exists("outside"));

  EXPECT_EQ(failureOf({.input = at("good.png"), .output = at("a.IMG"), .position = CXPoint(4, 5)}), "");
  EXPECT_EQ(run({.input = at("a.IMG"), .isInfo = true}).info,
            at("a.IMG") + ": 37x23, 16 bits per pixel, packing none, at 4 5, with alpha");
}

TEST(Words, RefuseWhatMeansNothing) {
  const auto parsed = [](std::vector<const char*> words) {
    words.insert(words.begin(), "footlight-image");
    return parseWords(static_cast<int>(words.size()), words.data());
  };
  const std::vector<const char*> bad[] = {{},
                                          {"a.png"},
                                          {"a.png", "b.img", "c.img"},
                                          {"a.png", "b.img", "--format", "24"},
                                          {"a.png", "b.img", "--compression", "zip"},
                                          {"a.png", "b.img", "--quality", "0"},
                                          {"a.png", "b.img", "--alpha", "maybe"},
                                          {"a.png", "b.img", "--position", "4"},
                                          {"a.png", "b.img", "--info"}};
  for (const auto& words : bad) {
    const Parsed result = parsed(words);
    EXPECT_FALSE(result.options);
    EXPECT_EQ(result.exitStatus, kNoWork);
    EXPECT_THAT(result.message, HasSubstr("footlight-image: "));
  }
  const Parsed good = parsed({"a.png", "b.img", "--format", "15", "--compression", "lzo-rle", "--alpha",
                              "never", "--quality", "80", "--position", "-3", "12"});
  ASSERT_TRUE(good.options) << good.message;
  EXPECT_EQ(good.options->form.bpp, 15);
  EXPECT_EQ(good.options->form.packing, _compression::lzwOverRle);
  EXPECT_EQ(good.options->form.alpha, AlphaPlane::never);
  EXPECT_EQ(good.options->form.quality, 80);
  EXPECT_EQ(good.options->position, CXPoint(-3, 12));
  EXPECT_THAT(parsed({"--help"}).message, HasSubstr("--compression"));
}

}  // namespace
}  // namespace footlight::image
