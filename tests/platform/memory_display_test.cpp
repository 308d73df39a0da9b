#include <cstring>
#include <gtest/gtest.h>

#include "foundation/limits.h"
#include "platform/headless/headless_platform.h"

namespace footlight::platform {
namespace {

void setPixel(Surface& surface, int x, int y, std::uint16_t value) {
  std::memcpy(surface.pixels() + y * surface.pitch() + x * 2, &value, 2);
}

std::uint32_t getPixel(Surface& surface, int x, int y) {
  return static_cast<MemorySurface&>(surface).pixel(x, y);
}

TEST(MemoryDisplay, FormatFollowsDepth) {
  struct Case {
    int bpp;
    int bitCount;
    std::uint32_t masks;
  };
  for (const Case& c : {Case{15, 16, 0x7FFF}, Case{16, 16, 0xFFFF}, Case{32, 32, 0xFFFFFF}}) {
    HeadlessDisplay display(c.bpp, 0, 0);
    ASSERT_EQ(display.openWindow(8, 4), Status::ok);
    const PixelFormat format = display.format();
    EXPECT_EQ(format.bitCount, c.bitCount);
    EXPECT_EQ(format.red | format.green | format.blue, c.masks);
    EXPECT_EQ(format.red & format.green & format.blue, 0U);
  }
  HeadlessDisplay display(16, 0, 0);
  ASSERT_EQ(display.openFullScreen(8, 4, 15), Status::ok);
  EXPECT_EQ(display.format().green, 0x3E0U);
  EXPECT_EQ(display.openFullScreen(8, 4, 8), Status::failed);
  EXPECT_EQ(display.openFullScreen(8, 4, 24), Status::failed);
}

TEST(MemoryDisplay, SizesAreBounded) {
  HeadlessDisplay display(16, 0, 0);
  EXPECT_EQ(display.createSurface(1, 1, false), nullptr) << "no surface before the display is open";
  EXPECT_EQ(display.openWindow(0, 4), Status::failed);
  EXPECT_EQ(display.openWindow(-1, 4), Status::failed);
  EXPECT_EQ(display.openWindow(limits::kPictureSide + 1, 1), Status::failed);
  ASSERT_EQ(display.openWindow(limits::kPictureSide, 1), Status::ok);
  EXPECT_EQ(display.createSurface(limits::kPictureSide, limits::kPictureSide, false), nullptr);
  EXPECT_EQ(display.createSurface(5, 0, false), nullptr);
  EXPECT_NE(display.createSurface(4096, 4096, false), nullptr);
}

class Window : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(display.openWindow(8, 6), Status::ok);
    source = display.createSurface(4, 3, false);
    for (int y = 0; y < 3; ++y) {
      for (int x = 0; x < 4; ++x) setPixel(*source, x, y, static_cast<std::uint16_t>(10 * y + x + 1));
    }
  }

  HeadlessDisplay display{16, 100, 50};
  std::unique_ptr<Surface> source;
};

TEST_F(Window, ShowsAtScreenCoordinatesAndCuts) {
  EXPECT_EQ(display.clientRect().left, 100);
  EXPECT_EQ(display.clientRect().bottom, 56);
  display.recordShown();
  ASSERT_EQ(display.show(99, 49, *source, {0, 0, 4, 3}), Status::ok);
  EXPECT_EQ(display.screen()->pixel(0, 0), 12U);
  EXPECT_EQ(display.screen()->pixel(2, 1), 24U);
  EXPECT_EQ(display.screen()->pixel(3, 0), 0U);
  ASSERT_EQ(display.show(107, 55, *source, {1, 1, 4, 3}), Status::ok);
  EXPECT_EQ(display.screen()->pixel(7, 5), 12U);
  ASSERT_EQ(display.show(2147483647, -2147483647, *source, {0, 0, 4, 3}), Status::ok);
  EXPECT_EQ(display.takeShown().size(), 3U);
  EXPECT_EQ(display.show(100, 50, *source, {0, 0, 5, 3}), Status::failed)
      << "the rectangle leaves the source";
}

TEST_F(Window, CopiesAndFillsWholeRectanglesOrNothing) {
  const auto target = display.createSurface(5, 4, false);
  ASSERT_EQ(display.copy(*target, 1, 1, *source, {0, 0, 4, 3}), Status::ok);
  EXPECT_EQ(getPixel(*target, 4, 3), 24U);
  EXPECT_EQ(getPixel(*target, 0, 0), 0U);
  EXPECT_EQ(display.copy(*target, 2, 1, *source, {0, 0, 4, 3}), Status::failed);
  EXPECT_EQ(display.copy(*target, -1, 0, *source, {0, 0, 1, 1}), Status::failed);
  EXPECT_EQ(display.copy(*target, 0, 0, *source, {2, 0, 1, 1}), Status::failed);
  EXPECT_EQ(getPixel(*target, 1, 1), 1U);

  ASSERT_EQ(display.fill(*target, {3, 2, 5, 4}, 0xABCD), Status::ok);
  EXPECT_EQ(getPixel(*target, 3, 2), 0xABCDU);
  EXPECT_EQ(getPixel(*target, 4, 3), 0xABCDU);
  EXPECT_EQ(getPixel(*target, 2, 2), 12U);
  EXPECT_EQ(display.fill(*target, {3, 2, 6, 4}, 1), Status::failed);
  EXPECT_EQ(display.fill(*target, {2, 2, 2, 4}, 1), Status::ok);
}

TEST_F(Window, CopyWithinOneSurfaceMayOverlap) {
  ASSERT_EQ(display.copy(*source, 1, 1, *source, {0, 0, 3, 2}), Status::ok);
  EXPECT_EQ(getPixel(*source, 1, 1), 1U);
  EXPECT_EQ(getPixel(*source, 3, 2), 13U);
  ASSERT_EQ(display.copy(*source, 0, 0, *source, {1, 1, 4, 3}), Status::ok);
  EXPECT_EQ(getPixel(*source, 2, 1), 13U);
}

TEST_F(Window, LostSurfacesComeBackEmpty) {
  display.loseSurfaces();
  EXPECT_TRUE(source->isLost());
  EXPECT_EQ(source->pixels(), nullptr);
  EXPECT_EQ(display.show(100, 50, *source, {0, 0, 4, 3}), Status::lost);
  EXPECT_EQ(source->restore(), Status::ok);
  EXPECT_EQ(getPixel(*source, 3, 2), 0U);

  display.loseScreen();
  EXPECT_EQ(display.show(100, 50, *source, {0, 0, 4, 3}), Status::lost);
  EXPECT_EQ(display.restoreScreen(), Status::ok);
  EXPECT_EQ(display.show(100, 50, *source, {0, 0, 4, 3}), Status::ok);
}

TEST_F(Window, HasNoFlipChain) {
  EXPECT_EQ(display.createFlipChain(), Status::failed);
  EXPECT_EQ(display.backBuffer(), nullptr);
}

TEST(MemoryDisplay, FlipsAndKeepsTheBackBuffer) {
  HeadlessDisplay display(16, 7, 7);
  ASSERT_EQ(display.openFullScreen(3, 2, 16), Status::ok);
  EXPECT_EQ(display.clientRect().left, 0);
  ASSERT_EQ(display.createFlipChain(), Status::ok);
  Surface* back = display.backBuffer();
  std::byte* pixels = back->pixels();
  setPixel(*back, 2, 1, 77);
  display.faults.busyFlips = 1;
  EXPECT_EQ(display.flip(), Status::busy);
  EXPECT_EQ(display.screen()->pixel(2, 1), 0U);
  EXPECT_EQ(display.flip(), Status::ok);
  EXPECT_EQ(display.screen()->pixel(2, 1), 77U);
  EXPECT_EQ(back->pixels(), pixels);
  EXPECT_EQ(getPixel(*back, 2, 1), 77U);
  display.loseBackBuffer();
  EXPECT_EQ(display.flip(), Status::lost);
  EXPECT_EQ(display.flips(), 1);
}

TEST(HeadlessDisplay, RefusesWhatItIsTold) {
  HeadlessDisplay display(16, 0, 0);
  display.faults.refuseOpen = true;
  EXPECT_EQ(display.openWindow(8, 8), Status::failed);
  EXPECT_EQ(display.openFullScreen(8, 8, 16), Status::failed);
  display.faults = {};
  display.faults.refuseFlipChain = true;
  display.faults.refuseVideoMemory = true;
  ASSERT_EQ(display.openFullScreen(8, 8, 16), Status::ok);
  EXPECT_EQ(display.createFlipChain(), Status::failed);
  EXPECT_EQ(display.createSurface(1, 1, true), nullptr);
  EXPECT_NE(display.createSurface(1, 1, false), nullptr);
}

}  // namespace
}  // namespace footlight::platform
