#include "files/archive.h"

#include <gtest/gtest.h>
#include <limits>

#include "files/file.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

std::string hexOf(std::span<const std::byte> bytes) {
  std::string text;
  for (const std::byte byte : bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text += kDigits[std::to_integer<std::size_t>(byte) >> 4];
    text += kDigits[std::to_integer<std::size_t>(byte) & 15];
  }
  return text;
}

// All that one routine passes, in both directions.
struct Fields {
  int number = 0;
  std::uint32_t unsignedNumber = 0;
  std::int64_t large = 0;
  bool flag = false;
  double real = 0;
  CXString text;
  CXString empty;
  CXRect rect;

  void pass(CXArchive& archive) {
    archive.pass(number);
    archive.pass(unsignedNumber);
    archive.pass(large);
    archive.pass(flag);
    archive.pass(real);
    archive.pass(text);
    archive.pass(empty);
    archive.pass(rect);
  }
};

Fields someFields() { return {-2, 0xFFFFFFFE, -3, true, 2.5, "ab", "", {1, 2, 3, 4}}; }

TEST(CXArchive, WritesEachFieldByItsRuleAndReadsItBack) {
  CXArchive out(nullptr, "unused");
  out.Separator('|');
  Fields written = someFields();
  written.pass(out);
  EXPECT_EQ(hexOf(out.written()),
            "feffffff"
            "feffffff"
            "fdffffffffffffff"
            "01"
            "c4090000"
            "020000006162"
            "00000000"
            "01000000020000000300000004000000");
  CXArchive in(out.written());
  Fields read;
  read.pass(in);
  EXPECT_FALSE(in.hasFailed());
  EXPECT_EQ(in.left(), 0U);
  EXPECT_EQ(std::tie(read.number, read.unsignedNumber, read.large, read.flag, read.real),
            std::tie(written.number, written.unsignedNumber, written.large, written.flag, written.real));
  EXPECT_EQ(std::tie(read.text, read.empty, read.rect), std::tie(written.text, written.empty, written.rect));
}

TEST(CXArchive, KeepsThousandthsOfRealNumbers) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    double value;
    std::int32_t stored;
    double back;
  };
  constexpr Row kRows[] = {{1.2345, 1234, 1.234},
                           {-0.0009, 0, 0.0},
                           {0.0004, 0, 0.0},
                           {-2.5, -2500, -2.5},
                           {1e300, 2147483647, 2147483.647},
                           {kNone, 0, 0.0}};
  for (const Row& row : kRows) {
    EXPECT_EQ(CXArchive::toThousandths(row.value), row.stored) << row.value;
    EXPECT_DOUBLE_EQ(CXArchive::fromThousandths(row.stored), row.back) << row.value;
  }
}

// From the cut on every field is empty, and no text is longer than the bytes that are there.
TEST(CXArchive, FailsAtEveryCut) {
  CXArchive out(nullptr, "unused");
  someFields().pass(out);
  for (std::size_t size = 0; size < out.written().size(); ++size) {
    CXArchive in(out.written().first(size));
    Fields read = someFields();
    read.pass(in);
    EXPECT_TRUE(in.hasFailed()) << size;
    EXPECT_EQ(in.left(), 0U) << size;
    EXPECT_EQ(read.rect.bottom, 0) << size;
    EXPECT_LE(in.position(), size);
  }
}

TEST(CXArchive, RefusesCountsAndLengthsThatDoNotFit) {
  for (const int length : {-1, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    CXArchive out(nullptr, "unused");
    out.store(length);
    out.FWrite("four");
    CXArchive text(out.written());
    CXString read = "before";
    text.pass(read);
    EXPECT_TRUE(text.hasFailed() && read.IsEmpty()) << length;
    CXArchive count(out.written());
    EXPECT_EQ(count.passCount(0, 1), 0) << length;
    EXPECT_TRUE(count.hasFailed()) << length;
  }
}

TEST(CXArchive, HasShortTextsAndWords) {
  CXArchive out(nullptr, "unused");
  out.writeShortString("ab");
  out.writeShortString("");
  out.writeShortString(std::string(300, 'x'));
  out.FWrite(" \n word\tnext ");
  out.FWrite(std::string(1025, 'y'));
  CXArchive in(out.written());
  EXPECT_EQ(in.readShortString(), "ab");
  EXPECT_EQ(in.readShortString(), "");
  EXPECT_EQ(in.readShortString().Length(), 127);
  EXPECT_EQ(in.FRead(), "word");
  EXPECT_EQ(in.FRead(), "next");
  EXPECT_EQ(in.FRead().Length(), 1024);
  EXPECT_EQ(in.FRead(), "y");
  EXPECT_EQ(in.FRead(), "");
  constexpr std::byte kNegative[] = {std::byte{0x80}, std::byte{'a'}};
  CXArchive signedLength(kNegative);
  EXPECT_EQ(signedLength.readShortString(), "");
  EXPECT_EQ(signedLength.left(), 1U);
}

}  // namespace
}  // namespace footlight
