#include "platform/png_file.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/headless/headless_platform.h"

namespace footlight::platform {
namespace {

const std::vector<std::uint32_t> kPixels{0xFF102030, 0x80FF0000, 0x0000FF00,
                                         0xFF0000FF, 0xFFFFFFFF, 0xFF000000};

std::filesystem::path scratchFolder() {
  const auto folder = std::filesystem::temp_directory_path() / ("footlight_png_" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  return folder;
}

TEST(PngFile, RoundTripWithAndWithoutAlpha) {
  for (const PngChannels channels : {PngChannels::rgba, PngChannels::rgb}) {
    const auto bytes = encodePng(3, 2, kPixels, channels);
    ASSERT_TRUE(bytes);
    const auto picture = decodePng(*bytes);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 3);
    EXPECT_EQ(picture->height, 2);
    for (std::size_t i = 0; i < kPixels.size(); ++i) {
      const std::uint32_t expected = channels == PngChannels::rgba ? kPixels[i] : kPixels[i] | 0xFF000000;
      EXPECT_EQ(picture->pixels[i], expected) << i;
    }
  }
}

TEST(PngFile, RefusesWhatDoesNotFit) {
  EXPECT_FALSE(encodePng(2, 2, kPixels, PngChannels::rgb));
  EXPECT_FALSE(encodePng(0, 0, {}, PngChannels::rgb));
  EXPECT_FALSE(encodePng(-3, -2, kPixels, PngChannels::rgb));
  auto bytes = encodePng(3, 2, kPixels, PngChannels::rgb);
  ASSERT_TRUE(bytes);
  for (std::size_t length = 0; length + 12 < bytes->size(); ++length) {  // the last chunk may be missing
    EXPECT_FALSE(decodePng(std::span(*bytes).first(length))) << length;
  }
  (*bytes)[16] = std::byte{0x7F};  // an enormous width
  EXPECT_FALSE(decodePng(*bytes));
}

TEST(PngFile, AFailedWriteLeavesTheOldFileAndNoOther) {
  const auto folder = scratchFolder();
  const std::string name = (folder / "shot.png").string();
  ASSERT_EQ(writePngFile(name, 3, 2, kPixels), "");
  EXPECT_NE(writePngFile(name, 3, 3, kPixels), "");
  EXPECT_EQ(writePngFile((folder / "none" / "shot.png").string(), 3, 2, kPixels), "there is no such folder");
  const auto picture = readPngFile(name);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels[0], 0xFF102030U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  EXPECT_FALSE(readPngFile((folder / "absent.png").string()));
  std::filesystem::remove_all(folder);
}

TEST(HeadlessShell, PrintsIntoItsFolder) {
  const auto folder = scratchFolder();
  HeadlessShell shell(folder.string());
  EXPECT_TRUE(shell.print({"DocPrint", 3, 2, kPixels}));
  EXPECT_TRUE(readPngFile((folder / "DocPrint.png").string()));
  EXPECT_FALSE(shell.print({"../DocPrint", 3, 2, kPixels}));
  EXPECT_FALSE(shell.print({"", 3, 2, kPixels}));
  EXPECT_FALSE(HeadlessShell("").print({"DocPrint", 3, 2, kPixels}));
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace footlight::platform
