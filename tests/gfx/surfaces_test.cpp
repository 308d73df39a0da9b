// Canvases, patterns and masked pictures: what no script can ask for.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/limits.h"
#include "gfx/blit_planes.h"
#include "gfx/off_screen_canvas.h"
#include "gfx/pattern.h"
#include "gfx/virtual_graphics_object.h"
#include "support/screen_world.h"

namespace footlight {
namespace {

using test::ScreenWorld;

class Surfaces : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(world.window->CreateSurface(), 0);
    screen = world.window->getRefreshScreen();
    screen->validate();
  }
  Owned<CGraphicsObject> tile(int pixel, CXSize size = {8, 8}) {
    Owned<CGraphicsObject> made(new CGraphicsObject(world.window.get(), size, 16));
    CColor colour(static_cast<std::uint16_t>(pixel), _colormodel::bpp16);
    made->Fill(&colour);
    return made;
  }
  std::uint32_t pixelAfterDrawing(CGraphicsObject& object, int x, int y) {
    CGraphicsObject target(world.window.get(), {64, 48}, 16);
    object.SetDestiny(&target);
    object.Redraw();
    return target.GetPixel(x, y).value();
  }

  ScreenWorld world;
  CRefreshScreen* screen = nullptr;
};

TEST_F(Surfaces, TheTenthChangeOfAFrameDirtiesAllOfACanvas) {
  CCanvas canvas(world.window.get(), {40, 30}, 16, false, false);
  const auto object = tile(7);
  canvas.add(object.get(), 0);
  canvas.Redraw();
  screen->put(&canvas, 0);
  for (int round = 0; round < 2; ++round) {
    canvas.setInvalidated(false);
    for (int change = 1; change < CCanvas::maxRegions; ++change) object->Invalidate();
    EXPECT_FALSE(canvas.isInvalidated());
    object->Invalidate();
    EXPECT_TRUE(canvas.isInvalidated());
    canvas.Redraw();
  }
}

TEST_F(Surfaces, NoPictureDrawsItself) {
  CCanvas first(world.window.get(), {20, 20}, 16, false, false);
  CCanvas second(world.window.get(), {20, 20}, 16, false, false);
  CPattern pattern(world.window.get(), {20, 20}, {5, 5}, 1);
  CVirtualGraphicsObject glass(world.window.get());
  first.add(&first, 0);
  EXPECT_EQ(first.contents().getSize(), 0);
  first.add(&pattern, 0);
  pattern.add("a", 0, 0, 0, &glass, 0, "");
  glass.setSource(&second);
  second.add(&first, 0);
  EXPECT_EQ(second.contents().getSize(), 0);
  glass.setMask(&glass);
  EXPECT_EQ(glass.mask(), nullptr);
  first.Redraw();
}

TEST_F(Surfaces, PatternsThatMultiplyEnd) {
  std::vector<std::unique_ptr<CPattern>> nest;
  const auto leaf = tile(7, {1, 1});
  CGraphicsObject* inner = leaf.get();
  for (int level = 0; level < 6; ++level) {
    nest.push_back(std::make_unique<CPattern>(world.window.get(), CXSize(16, 16), CXSize(1, 1), 1));
    for (int cell = 0; cell < 256; ++cell) nest.back()->add("", cell % 16, cell / 16, 0, inner, 0, "");
    inner = nest.back().get();
  }
  pixelAfterDrawing(*inner, 0, 0);
}

TEST_F(Surfaces, ErasingStopsAtNothingAndAtTheCorner) {
  CCanvas canvas(world.window.get(), {4, 4}, 16, true, true);
  const auto opaque = tile(7, {4, 4});
  canvas.draw(opaque.get(), 0, 0);
  CGraphicsObject rubber(world.window.get(), {2, 2}, 16);
  rubber.AlphaChannel(PixelBlock(std::vector<std::byte>(4, std::byte{200}), 8));
  canvas.erase(&rubber, -9, 3);
  const CGraphicsObject& buffer = *canvas.buffer();
  EXPECT_EQ(static_cast<int>(buffer.AlphaChannel().bytes()[12]), 55);
  EXPECT_EQ(static_cast<int>(buffer.AlphaChannel().bytes()[14]), 255);
  canvas.erase(&rubber, 0, 3);
  EXPECT_EQ(static_cast<int>(buffer.AlphaChannel().bytes()[12]), 0);
  canvas.erase(&canvas, 1, 1);
  canvas.erase(opaque.get(), 0, 0);
  EXPECT_THAT(buffer.AlphaChannel().bytes(), testing::Each(std::byte{0}));
}

TEST_F(Surfaces, PlaneWorkIsExactForAllWeights) {
  std::vector<std::byte> a, b;
  for (int i = 0; i < 65536; ++i) {
    a.push_back(static_cast<std::byte>(i >> 8));
    b.push_back(static_cast<std::byte>(i & 0xFF));
  }
  std::vector<std::byte> product(a.size());
  blit::multiply(a.data(), b.data(), product.data(), a.size());
  std::vector<std::byte> rest = a;
  blit::lessen(rest.data(), b.data(), rest.size());
  for (int i = 0; i < 65536; ++i) {
    const int x = i >> 8;
    const int y = i & 0xFF;
    const int weight = x == 255 ? y : y == 255 ? x : x * y / 256;
    ASSERT_EQ(static_cast<int>(product[static_cast<std::size_t>(i)]), weight);
    ASSERT_EQ(static_cast<int>(rest[static_cast<std::size_t>(i)]), std::max(0, x - y));
  }
}

TEST_F(Surfaces, TilesMoveAndLock) {
  CPattern pattern(world.window.get(), {40, 32}, {8, 8}, 2);
  EXPECT_EQ(pattern.columns(), 5);
  const auto red = tile(0xF800);
  const auto blue = tile(0x1F);
  pattern.add("r", 0, 0, 0, red.get(), 0, "RED");
  pattern.add("b", 0, 2, 0, blue.get(), 0, "BLUE");
  pattern._switch(0, 0, 3, 1);
  EXPECT_EQ(pattern.get(0, 0, 0), nullptr);
  EXPECT_EQ(pattern.getAliasEntry("r")->column, 3);
  pattern._switch(3, 1, 0, 0);
  pattern.moveDown(0, 0, 2);
  EXPECT_FALSE(pattern.contains(blue.get()));
  const CPatternEntry* moved = pattern.get(0, 0, 2);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(moved->alias, "r");
  EXPECT_TRUE(moved->locked);
  EXPECT_EQ(pixelAfterDrawing(pattern, 1, 17), 0u);
  EXPECT_EQ(pattern.getEntryAt(1, 17, CPattern::kAllLayers, true, true), nullptr);
  pattern.lock(0, 2, false);
  EXPECT_EQ(pixelAfterDrawing(pattern, 1, 17), 0xF800u);
  pattern.moveDown(0, 2, 9);
  pattern.moveDown(0, 2, -3);
  EXPECT_EQ(pattern.get(0, 0, 2), moved);
  pattern.setGrid({4, 4});
  EXPECT_EQ(pixelAfterDrawing(pattern, 1, 9), 0xF800u);
  pattern.setGrid({0, -4});
  pixelAfterDrawing(pattern, 0, 0);
}

TEST_F(Surfaces, ATileThatChangesDirtiesItsCellsAlone) {
  CPattern pattern(world.window.get(), {40, 32}, {8, 8}, 1);
  const auto red = tile(0xF800);
  pattern.add("a", 1, 1, 0, red.get(), 0, "");
  pattern.SetPosition(3, 2);
  screen->put(&pattern, 0);
  screen->validate();
  red->SetPosition(900, 900);
  red->Invalidate();
  EXPECT_THAT(screen->getRefreshList()->rects(), testing::ElementsAre(CXRect(11, 10, 19, 18)));
  EXPECT_FALSE(pattern.isInvalidated());
  EXPECT_EQ(red->GetPosition(), CXPoint(900, 900));
}

TEST_F(Surfaces, SizesOutOfBoundsGiveEmptySurfaces) {
  for (const int side : {-1, 0, limits::kPictureSide + 1}) {
    CCanvas canvas(world.window.get(), {side, 8}, 16, true, true);
    EXPECT_FALSE(canvas.pixels());
    canvas.clear(true);
    canvas.capture();
    canvas.Redraw();
  }
  EXPECT_EQ(CPattern(world.window.get(), {40, 40}, {8, 8}, 1000000000).getLayers(), 0);
  EXPECT_EQ(CPattern(world.window.get(), {40, 40}, {0, 8}, 1).getLayers(), 0);
}

}  // namespace
}  // namespace footlight
