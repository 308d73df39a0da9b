#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "font/letters.h"
#include "font/run.h"
#include "platform/posix/atomic_file.h"
#include "support/test_platform.h"

namespace footlight::font {
namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kMachineFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Rows of a strip; "#" is a pixel of a letter, "+" one too faint to count as set.
platform::PngPicture picture(const std::vector<std::string>& rows) {
  platform::PngPicture strip{static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), {}};
  for (const std::string& row : rows) {
    for (const char c : row) strip.pixels.push_back(c == '#' ? 0xFFF80000U : c == '+' ? 0x14F80000U : 0U);
  }
  return strip;
}

FntFont made(const platform::PngPicture& strip, const std::string& text) {
  std::string why;
  auto font = fromStrip(strip, text, &why);
  EXPECT_TRUE(font) << why;
  return font ? std::move(*font) : FntFont();
}

TEST(Letters, KerningIsOneLessWhatALetterCanGoUnder) {
  // Cells of 6: an L, a T, a dot high up, one that touches only in the next row.
  const FntFont font = made(picture({"......"
                                     "......"
                                     "......"
                                     "......",
                                     ".#...."
                                     ".###.."
                                     ".#...."
                                     "......",
                                     ".#...."
                                     "..#..."
                                     "......"
                                     ".#....",
                                     ".###.."
                                     "..#..."
                                     "......"
                                     "......",
                                     "......"
                                     "......"
                                     "......"
                                     "......"}),
                            "letters LT\nletters .,\n");
  EXPECT_THAT(font.left, ElementsAre(1, 1, 1, 1));
  EXPECT_THAT(font.right, ElementsAre(2, 2, 4, 4));
  // L before L: the foot meets the stem. L before T: the bar slides to one column
  // off the stem, which is two rows away from the foot. T before a dot at its bar's height: met at once.
  EXPECT_THAT(std::vector<int>(font.kerning.begin(), font.kerning.begin() + 4), ElementsAre(1, -1, -1, 0));
  EXPECT_THAT(std::vector<int>(font.kerning.begin() + 4, font.kerning.begin() + 8), ElementsAre(1, 1, 1, 0));
}

TEST(Letters, APictureAndATextComeBack) {
  FntFont font =
      made(picture({"........", ".##..#..", ".+......", "........"}), "\xC4\x85!");  // a with a tail
  EXPECT_THAT(font.letters, ElementsAre(0xB9, '!'));
  EXPECT_THAT(font.right, ElementsAre(1, 2));
  font.kerning = {0, -3, 127, -128};
  font.right[1] = 1;
  const FntFont again = made(toStrip(font), toText(font));
  EXPECT_EQ(writeFnt(again), writeFnt(font)) << toText(font);
}

TEST(Letters, AnOpaquePictureGivesItsLightness) {
  platform::PngPicture strip = picture({"....", "....", "....", "...."});
  for (std::uint32_t& pixel : strip.pixels) pixel = 0xFF000000U;
  strip.pixels[5] = 0xFF404000U;
  const FntFont font = made(strip, "x");
  EXPECT_EQ(font.alpha[5], std::byte{0x40});
  EXPECT_EQ(font.colour[10], std::byte{0xFF});
}

TEST(Letters, BadTextsAreNamed) {
  const auto strip = picture({"......", ".#..#.", "......"});
  for (const auto& [text, reason] :
       std::vector<std::pair<std::string, std::string>>{{"", "no letters"},
                                                        {"abca", "a stands there twice"},
                                                        {"\xE4\xB8\xAD", "code page"},
                                                        {"\xFF", "UTF-8"},
                                                        {"abcd", "6 pixels wide"},
                                                        {"letters ab\nkerning a c 1\n", "kerning a c 1"},
                                                        {"letters ab\nleft a 128\n", "left a 128"},
                                                        {"letters ab\nright a 1 2\n", "right a 1 2"},
                                                        {"letters ab\nabc\n", "abc"}}) {
    std::string why;
    EXPECT_FALSE(fromStrip(strip, text, &why)) << text;
    EXPECT_THAT(why, HasSubstr(reason)) << text;
  }
}

Parsed parse(std::vector<const char*> words) {
  words.insert(words.begin(), "footlight-font");
  return parseWords(static_cast<int>(words.size()), words.data());
}

Outcome runWords(const std::vector<const char*>& words) {
  const Parsed parsed = parse(words);
  EXPECT_TRUE(parsed.words) << parsed.message;
  return parsed.words ? run(*parsed.words) : Outcome();
}

TEST(FontTool, DrawsAFontOfTheMachineAndTakesItApart) {
  const TemporaryFolder folder;
  const std::string font = folder.path().string() + "/a.fnt", png = folder.path().string() + "/a.png";
  const std::string list = folder.path().string() + "/list.txt", text = folder.path().string() + "/a.txt";
  const std::string wanted = "Wi\xC4\x85\xE2\x82\xAC\n";
  ASSERT_EQ(platform::writeAtomically(list, std::as_bytes(std::span(wanted))), "");
  Outcome outcome = runWords({"make", kMachineFont, font.c_str(), "--size", "16", "--letters", list.c_str()});
  ASSERT_EQ(outcome.failure, "");
  EXPECT_THAT(outcome.info, HasSubstr("4 letters"));
  ASSERT_EQ(runWords({"unpack", font.c_str(), png.c_str(), text.c_str()}).failure, "");
  const auto strip = platform::readPngFile(png);
  ASSERT_TRUE(strip);
  const auto inked =
      std::ranges::count_if(strip->pixels, [](std::uint32_t pixel) { return pixel >> 24 > 200; });
  EXPECT_GT(inked, 60) << "letters of 16 pixels";
  EXPECT_EQ(runWords({"strip", png.c_str(), text.c_str(), (font + "2").c_str()}).failure, "");
  EXPECT_EQ(runWords({"info", (font + "2").c_str()}).info.substr(font.size() + 1),
            runWords({"info", font.c_str()}).info.substr(font.size()));
}

TEST(FontTool, SaysWhatIsWrong) {
  const TemporaryFolder folder;
  const std::string output = folder.path().string() + "/a.fnt", missing = folder.path().string() + "/none";
  EXPECT_THAT(runWords({"info", missing.c_str()}).failure, HasSubstr("cannot be read"));
  EXPECT_THAT(runWords({"info", "/etc/passwd"}).failure, HasSubstr("/etc/passwd: "));
  EXPECT_THAT(runWords({"make", "/etc/passwd", output.c_str(), "--size", "9"}).failure,
              HasSubstr("is no font"));
  EXPECT_THAT(runWords({"make", kMachineFont, output.c_str(), "--size", "9", "--face", "7"}).failure,
              HasSubstr("is no font"));
  EXPECT_THAT(runWords({"make", kMachineFont, output.c_str(), "--size", "256"}).failure, HasSubstr("strip"));
  EXPECT_THAT(runWords({"strip", "/etc/passwd", "/etc/passwd", output.c_str()}).failure, HasSubstr("PNG"));
  EXPECT_EQ(parse({"make", kMachineFont, output.c_str()}).exitStatus, kNoWork) << "no size";
  EXPECT_EQ(parse({}).exitStatus, kNoWork);
  EXPECT_THAT(parse({"--help"}).message, HasSubstr("strip"));
}

}  // namespace
}  // namespace footlight::font
