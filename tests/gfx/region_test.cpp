#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "foundation/diagnose.h"
#include "foundation/geometry.h"
#include "foundation/limits.h"
#include "gfx/refresh_region.h"

namespace footlight {

// For messages.
static void PrintTo(const CXRect& r, std::ostream* out) {
  *out << "(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ")";
}

namespace {

constexpr CXRect kA(10, 10, 50, 40);

TEST(Rect, SubGivesThePiecesOfEachPlaceInTheirOrder) {
  struct Row {
    const char* place;
    CXRect other;
    std::vector<CXRect> pieces;
  };
  const Row rows[] = {
      {"covers", {10, 10, 50, 40}, {}},
      {"apart", {60, 10, 70, 40}, {}},
      {"touching", {50, 10, 70, 40}, {}},
      {"left part", {0, 10, 20, 40}, {{20, 10, 50, 40}}},
      {"right part", {30, 0, 60, 50}, {{10, 10, 30, 40}}},
      {"top part", {0, 0, 60, 20}, {{10, 20, 50, 40}}},
      {"bottom part", {10, 30, 50, 60}, {{10, 10, 50, 30}}},
      {"top-left corner", {0, 0, 20, 20}, {{10, 20, 50, 40}, {20, 10, 50, 20}}},
      {"bottom-left corner", {0, 30, 20, 50}, {{10, 10, 50, 30}, {20, 30, 50, 40}}},
      {"top-right corner", {30, 0, 60, 20}, {{10, 10, 30, 40}, {30, 20, 50, 40}}},
      {"bottom-right corner", {30, 30, 60, 60}, {{10, 10, 30, 40}, {30, 10, 50, 30}}},
      {"band across", {0, 20, 60, 30}, {{10, 10, 50, 20}, {10, 30, 50, 40}}},
      {"band down", {20, 0, 30, 60}, {{10, 10, 20, 40}, {30, 10, 50, 40}}},
      {"left bite", {0, 20, 20, 30}, {{10, 10, 50, 20}, {20, 20, 50, 30}, {10, 30, 50, 40}}},
      {"right bite", {40, 20, 60, 30}, {{10, 10, 50, 20}, {10, 20, 40, 30}, {10, 30, 50, 40}}},
      {"top bite", {20, 0, 30, 20}, {{10, 10, 20, 40}, {20, 20, 30, 40}, {30, 10, 50, 40}}},
      {"bottom bite", {20, 30, 30, 50}, {{10, 10, 20, 40}, {20, 10, 30, 30}, {30, 10, 50, 40}}},
      {"inside", {20, 20, 30, 30}, {{10, 10, 20, 40}, {20, 10, 50, 20}, {20, 30, 50, 40}, {30, 20, 50, 30}}},
  };
  for (const Row& row : rows) EXPECT_EQ(kA.sub(row.other), row.pieces) << row.place;
}

constexpr int kSide = 24;
using Bits = std::vector<int>;

void paint(Bits* bits, const CXRect& rect) {
  for (int y = rect.top; y < rect.bottom; ++y) {
    for (int x = rect.left; x < rect.right; ++x) ++(*bits)[static_cast<std::size_t>(y * kSide + x)];
  }
}

TEST(Region, CoversWhatWasAddedWithoutOverlaps) {
  std::mt19937 random(3);
  const auto upTo = [&](int n) { return std::uniform_int_distribution<int>(0, n)(random); };
  for (int round = 0; round < 300; ++round) {
    CRefreshRegion region(false);
    Bits wanted(kSide * kSide);
    for (int i = 0; i < 12; ++i) {
      const int left = upTo(kSide - 1);
      const int top = upTo(kSide - 1);
      const CXRect rect(left, top, left + upTo(kSide - left), top + upTo(kSide - top));
      region.add(&rect);
      paint(&wanted, rect);
    }
    Bits covered(kSide * kSide);
    for (const CXRect& rect : region.rects()) paint(&covered, rect);
    for (std::size_t i = 0; i < covered.size(); ++i) ASSERT_EQ(covered[i], wanted[i] > 0 ? 1 : 0) << round;
  }
}

// The procedure word for word: the first rectangle that overlaps decides, and what is left starts anew.
void addLiterally(std::vector<CXRect>* list, const CXRect& rect) {
  const auto overlaps = [&](const CXRect& e) { return !e.Common(rect).IsEmpty(); };
  const auto hit = std::ranges::find_if(*list, overlaps);
  if (hit == list->end()) return list->push_back(rect);
  const CXRect e = *hit;
  if (rect.IsPartOf(e)) return;
  if (e.IsPartOf(rect)) {
    list->erase(hit);
    return addLiterally(list, rect);
  }
  const int left = std::max(rect.left, e.left);
  const int right = std::min(rect.right, e.right);
  const CXRect bands[] = {{rect.left, rect.top, e.left, rect.bottom},
                          {left, rect.top, right, e.top},
                          {left, e.bottom, right, rect.bottom},
                          {e.right, rect.top, rect.right, rect.bottom}};
  for (const CXRect& band : bands) {
    if (band.left < band.right && band.top < band.bottom) addLiterally(list, band);
  }
}

TEST(Region, HoldsTheRectanglesOfTheProcedureInItsOrder) {
  std::mt19937 random(9);
  const auto upTo = [&](int n) { return std::uniform_int_distribution<int>(0, n)(random); };
  for (int round = 0; round < 400; ++round) {
    CRefreshRegion region(false);
    std::vector<CXRect> expected;
    const int side = round % 2 == 0 ? 40 : 900;
    const int most = round % 3 == 0 ? side : side / 6;
    for (int i = 0; i < 60; ++i) {
      const int left = upTo(side) - side / 8;
      const int top = upTo(side) - side / 8;
      const CXRect rect(left, top, left + 1 + upTo(most), top + 1 + upTo(most));
      region.add(&rect);
      addLiterally(&expected, rect);
      if (i % 16 == 7) region.compact();
      ASSERT_EQ(region.rects(), expected) << round;
    }
    // A walk meets what overlaps, in the same order.
    const CXRect area(side / 4, side / 4, side / 2, side / 2);
    std::vector<CXRect> met;
    for (int at = region.findFrom(0, area); at >= 0; at = region.findFrom(at + 1, area))
      met.push_back(region.at(at));
    std::erase_if(expected, [&](const CXRect& r) { return r.Common(area).IsEmpty(); });
    ASSERT_EQ(met, expected) << round;
  }
}

TEST(Region, KeepsWhatItHasAndGivesWayToWhatContainsIt) {
  CRefreshRegion region(false);
  const CXRect small(5, 5, 8, 8);
  const CXRect apart(20, 20, 22, 22);
  const CXRect large(0, 0, 10, 10);
  region.add(&small);
  region.add(&apart);
  region.add(&large);
  EXPECT_EQ(region.rects(), (std::vector<CXRect>{apart, large}));
  region.add(&small);
  EXPECT_EQ(region.rects(), (std::vector<CXRect>{apart, large}));
}

TEST(Region, IsFullAfterTheUsualScreenSize) {
  CRefreshRegion region(false);
  const CXRect some(1, 1, 2, 2);
  const CXRect screen(0, 0, 800, 600);
  EXPECT_TRUE(region.isEmpty());
  region.add(&some);
  region.add(&screen);
  EXPECT_TRUE(region.isFull());
  EXPECT_TRUE(region.rects().empty());
  region.add(&some);
  EXPECT_TRUE(region.rects().empty());
  region.clear();
  EXPECT_TRUE(region.isEmpty());
}

TEST(Region, TurnsFullPastItsLimit) {
  resetGuardHits();
  CRefreshRegion region(false);
  const auto add = [&](int i) {
    const CXRect dot(i % 100 * 2, i / 100 * 2, i % 100 * 2 + 1, i / 100 * 2 + 1);
    region.add(&dot);
  };
  for (int i = 0; i < limits::kDirtyRects; ++i) add(i);
  EXPECT_FALSE(region.isFull());
  EXPECT_EQ(guardHits("dirty rectangles"), 0);
  add(limits::kDirtyRects);
  EXPECT_TRUE(region.isFull());
  EXPECT_EQ(guardHits("dirty rectangles"), 1);
}

}  // namespace
}  // namespace footlight
