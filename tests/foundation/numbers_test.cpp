#include <gtest/gtest.h>

#include "foundation/arithmetic.h"
#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/code_page.h"
#include "foundation/geometry.h"
#include "foundation/xobject.h"

namespace footlight {
namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

TEST(Arithmetic, HasDefinedResults) {
  EXPECT_EQ(wrap_add(kMost, 1), kLeast);
  EXPECT_EQ(wrap_sub(kLeast, 1), kMost);
  EXPECT_EQ(wrap_mul(65536, 65536), 0);
  EXPECT_EQ(wrap_negate(kLeast), kLeast);
  EXPECT_EQ(divide(7, 0), 0);
  EXPECT_EQ(divide(kLeast, -1), kLeast);
  EXPECT_EQ(divide(-7, 2), -3);
  EXPECT_EQ(remainder(-7, 2), -1);
  EXPECT_EQ(remainder(kLeast, -1), 0);
  EXPECT_EQ(remainder(1, 0), 0);
  EXPECT_EQ(to_int(-2.9), -2);
  EXPECT_EQ(to_int(1e300), kMost);
  EXPECT_EQ(to_int(-1e300), kLeast);
  EXPECT_EQ(to_int(std::nan("")), 0);
  EXPECT_FALSE(checked_mul(std::uint64_t{1} << 32, std::uint64_t{1} << 32));
  EXPECT_EQ(checked_mul(0, ~std::uint64_t{0}), 0u);
  EXPECT_FALSE(checked_add(~std::uint64_t{0}, 1));
  EXPECT_EQ(CXObject::swap_word(0x1280), static_cast<std::int16_t>(0x8012));
  EXPECT_EQ(CXObject::swap_dword(0x12345678), 0x78563412);
}

TEST(Geometry, RectanglesKeepTheirRightAndBottomOutside) {
  const CXRect rect(10, 20, 30, 60);
  EXPECT_EQ(rect.Size(), CXSize(20, 40));
  EXPECT_TRUE(rect.IsInRect(CXPoint(10, 20)));
  EXPECT_FALSE(rect.IsInRect(CXPoint(30, 20)));
  EXPECT_FALSE(rect.IsInRect(CXPoint(10, 60)));
  EXPECT_TRUE(CXRect(1, 1, 1, 5).IsEmpty());
  EXPECT_FALSE(CXRect(5, 5, 1, 1).IsEmpty());
  EXPECT_TRUE(rect.IsPartOf(rect));
  EXPECT_FALSE(rect.isInside(CXRect(10, 20, 30, 59)));
  EXPECT_EQ(rect.Common(CXRect(25, 0, 100, 25)), CXRect(25, 20, 30, 25));
  EXPECT_EQ(rect.Common(CXRect(30, 0, 40, 100)), CXRect(30, 20, 30, 60));  // they touch
  EXPECT_EQ(rect.Common(CXRect(31, 0, 40, 100)), CXRect());
  EXPECT_EQ(CXRect(rect).Sum(CXRect(0, 30, 20, 100)), CXRect(0, 20, 30, 100));
  EXPECT_EQ(rect.CenterPoint(), CXPoint(20, 40));
  EXPECT_EQ(CXRect(0, 0, -3, 3).CenterPoint(), CXPoint(-1, 1));
  EXPECT_EQ(rect.GetCenteredPosition(CXSize(10, 100)), CXPoint(15, -10));
  CXRect grown = rect;
  grown.Explode(1, 2);
  EXPECT_EQ(grown, CXRect(9, 18, 31, 62));
  EXPECT_EQ(rect + CXPoint(1, -1) - CXPoint(1, -1), rect);
  EXPECT_EQ(CXSize(-3, 2).AbsSum(), 5);
  EXPECT_EQ(CXSize(-3, 2).mul(), -6);
  // Nothing overflows.
  const CXRect huge(kLeast, kLeast, kMost, kMost);
  EXPECT_EQ(huge.Width(), -1);
  huge.GetCenteredPosition(CXSize(kMost, kMost));
  grown = huge;
  grown.Explode(kMost);
  grown += CXPoint(kLeast, kLeast);
}

TEST(CodePage, GoesToUtf8AndBack) {
  std::string all;
  for (int i = 1; i < 256; ++i) all += static_cast<char>(i);
  EXPECT_EQ(code_page::fromUtf8(code_page::toUtf8(all)), all);
  EXPECT_EQ(code_page::toUtf8("\x80\xA5\xFF"), "\xE2\x82\xAC\xC4\x84\xCB\x99");
  for (const char* bad :
       {"\xE2\x98\x83", "\xC0\x80", "\xC4", "\x80", "\xF0\x9F\x98\x80", "\xE0\x80\xA0", "\xC4z"}) {
    EXPECT_FALSE(code_page::fromUtf8(bad)) << bad;
  }
  // A, Z, capitals with carons and acutes, the sharp s that has none, the multiplication and division signs.
  EXPECT_EQ(code_page::foldCase("az\x9A\x9C\xB3\xB9\xBE\xE0\xFE\xDF\xF7\xFF"),
            "AZ\x8A\x8C\xA3\xA5\xBC\xC0\xDE\xDF\xF7\xFF");
}

TEST(Bytes, AreLittleEndianAndComeBack) {
  ByteWriter out;
  out.u8(0xFE).i16(-2).u16(0x1234).i32(kLeast).u32(0xFFFFFFFFU).f64(-0.5).number(-1, 3).field("abc", 2);
  out.field("d", 3).zeros(1);
  const unsigned char expected[] = {0xFE, 0xFE, 0xFF, 0x34, 0x12, 0,   0,   0, 0x80, 0xFF,
                                    0xFF, 0xFF, 0xFF, 0,    0,    0,   0,   0, 0,    0xE0,
                                    0xBF, 0xFF, 0xFF, 0xFF, 'a',  'b', 'd', 0, 0,    0};
  EXPECT_TRUE(std::ranges::equal(out.written(), std::as_bytes(std::span(expected))));
  ByteReader in(out.written());
  EXPECT_EQ(in.u8(), 0xFE);
  EXPECT_EQ(in.i16(), -2);
  EXPECT_EQ(in.u16(), 0x1234);
  EXPECT_EQ(in.i32(), kLeast);
  EXPECT_EQ(in.u32(), 0xFFFFFFFFU);
  EXPECT_EQ(in.f64(), -0.5);
  in.skip(8);
  EXPECT_TRUE(in.ok());
  EXPECT_EQ(in.f64(), 0);
  EXPECT_FALSE(in.ok());
}

}  // namespace
}  // namespace footlight
