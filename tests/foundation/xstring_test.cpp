#include "foundation/xstring.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/diagnose.h"
#include "foundation/geometry.h"
#include "foundation/limits.h"
#include "foundation/string_tokenizer.h"

namespace footlight {
namespace {

using testing::ElementsAre;

std::string letters(int count) { return std::string(static_cast<std::size_t>(count), 'x'); }

TEST(XString, CapacityFollowsItsRule) {
  EXPECT_EQ(CXString().Capacity(), 32);
  EXPECT_EQ(CXString(letters(31)).Capacity(), 32);
  EXPECT_EQ(CXString(letters(32)).Capacity(), 64);
  EXPECT_EQ(CXString(letters(100)).Capacity(), 132);
  EXPECT_EQ(CXString(static_cast<const char*>(nullptr)).Length(), 0);
  CXString text = letters(40);
  text.left(2);
  EXPECT_EQ(CXString(text).Capacity(), text.Capacity());

  CXString sized(7);
  EXPECT_EQ(sized.Capacity(), 7);
  EXPECT_EQ(sized.Length(), 1);
  sized.SetAt(0, 'a');
  EXPECT_EQ(sized, "a");
}

TEST(XString, AppendingGrowsByItsRule) {
  struct Row {
    int before, added, capacity;
  };
  for (const Row& row : {Row{0, 31, 32}, Row{0, 32, 64}, Row{20, 11, 32}, Row{20, 12, 64}, Row{31, 1, 64},
                         Row{31, 100, 163}, Row{32, 31, 64}, Row{32, 32, 96}}) {
    CXString text = letters(row.before);
    text += letters(row.added);
    EXPECT_EQ(text.Capacity(), row.capacity) << row.before << "+" << row.added;
    EXPECT_EQ(text, letters(row.before + row.added));
  }
  for (const int length : {28, 29, 30, 31}) {
    CXString text = letters(length);
    text += 'x';
    EXPECT_EQ(text.Capacity(), length < 30 ? 32 : 64) << length;
    EXPECT_EQ(text, letters(length + 1));
  }
  for (const int length : {11, 12, 31}) {
    CXString text = letters(length);
    text += -2147483647 - 1;
    EXPECT_EQ(text.Capacity(), length < 12 ? 32 : 64) << length;
    EXPECT_EQ(text, letters(length) + "-2147483648");
  }
  for (int capacity = 0; capacity < 40;
       ++capacity) {  // whatever the first size, nothing is written past the memory
    CXString text(capacity);
    text.SetAt(0, 'n');
    text += -2147483647;
    text += 'c';
    EXPECT_EQ(text, "n-2147483647c");
  }
}

TEST(XString, CanAppendItsOwnPieces) {
  for (const int length : {3, 20, 31, 40}) {
    CXString text = letters(length);
    text.SetAt(1, 'y');
    const std::string before = text.str();
    text += text;
    EXPECT_EQ(text, before + before);
    text += text.slice(1, 2);
    EXPECT_EQ(text.lastChar(), 'y');
  }
}

TEST(XString, MovesAndCopiesShortAndLongTexts) {
  for (const int first : {0, 5, 31, 32, 200}) {
    for (const int second : {0, 5, 31, 32, 200}) {
      CXString a = letters(first);
      CXString b = letters(second);
      CXString copy;
      copy = a;
      copy = b;
      EXPECT_EQ(copy, letters(second));
      b = std::move(a);
      EXPECT_EQ(b, letters(first));
      a += "new";
      EXPECT_EQ(a, "new");
      const CXString& alias = b;
      b = alias;
      EXPECT_EQ(b, letters(first));
    }
  }
}

TEST(XString, TakesPieces) {
  const CXString text = "abcdefg";
  EXPECT_EQ(text.Mid(2, 5), "cde");
  EXPECT_EQ(text.Left(3), "abc");
  EXPECT_EQ(text.Right(5), "fg");
  for (const int outside : {-1, -100}) EXPECT_EQ(text.Right(outside), text);
  EXPECT_EQ(text.Left(100), text);
  EXPECT_EQ(text.Left(-1) + text.Right(7) + text.Mid(5, 2) + text.Mid(7, 9), "");
  CXString target;
  text.mid(1, 3, &target);
  EXPECT_EQ(target, "bc");
  target.right(1);
  EXPECT_EQ(target, "c");
  EXPECT_EQ(text.GetAt(0), 'a');
  EXPECT_EQ(text.GetAt(-1), 'g');
  EXPECT_EQ(text.GetAt(7), '\0');
  EXPECT_EQ(text.GetAt(-2), '\0');
  EXPECT_EQ(CXString().lastChar(), '\0');
}

TEST(XString, Finds) {
  const CXString text = "abcabc";
  EXPECT_EQ(text.Find('b'), 1);
  EXPECT_EQ(text.Find('b', 2), 4);
  EXPECT_EQ(text.Find('b', 5), -1);
  EXPECT_EQ(text.Find('b', 99), -1);
  EXPECT_EQ(text.Find('b', -9), 1);
  EXPECT_EQ(text.FindLast('b'), 4);
  EXPECT_EQ(text.FindLast('b', 3), 1);
  EXPECT_EQ(text.FindLast('b', 0), -1);
  EXPECT_EQ(text.FindSubString("ca"), 2);
  EXPECT_EQ(text.indexOf("bc", 2), 4);
  EXPECT_EQ(text.indexOf("bd", 0), -1);
  EXPECT_EQ(text.findOneOf("xc", 0), 2);
  EXPECT_EQ(text.getCount('c'), 2);
}

TEST(XString, ReplacesAndTrims) {
  EXPECT_EQ(CXString("aXbXX").replace("X", "--"), "a--b----");
  EXPECT_EQ(CXString("aaa").replace("aa", "a"), "aa");
  EXPECT_EQ(CXString("abc").replace("", "x"), "abc");
  CXString text = "one two one";
  text.replaceOnce("one", "1", 1);
  EXPECT_EQ(text, "one two 1");
  text.Replace('o', '0');
  EXPECT_EQ(text, "0ne tw0 1");
  CXString blanks = "  a b  ";
  EXPECT_EQ(CXString(blanks).LTrim(), "a b  ");
  EXPECT_EQ(CXString(blanks).RTrim(), "  a b");
  EXPECT_EQ(blanks.AllTrim(), "a b");
  EXPECT_EQ(CXString("xxx").AllTrim('x'), "");

  resetGuardHits();
  const CXString many(std::string(5000, 'a'));
  EXPECT_EQ(many.replace("a", std::string(5000, 'b')), many);  // 25 million letters are too many
  EXPECT_EQ(guardHits("string.replace"), 1);
}

TEST(XString, RemovesTags) {
  struct Row {
    const char* text;
    const char* result;
  };
  for (const Row& row : {Row{"a<b>c<b x=1>d", "acd"}, Row{"<<b>b>x", "<b>x"}, Row{"< b>", "< b>"},
                         Row{"a<b", "a<b"}, Row{"<bold>x</b>", "x</b>"}}) {
    CXString text = row.text;
    text.removeTag("b");
    EXPECT_EQ(text, row.result) << row.text;
  }
}

TEST(XString, ChangesCaseInItsCodePage) {
  const CXString lowered = "az\x9C\x9F\xB3\xB9\xBF\xE6\xEA\xF1\xF3";
  const CXString uppered = "AZ\x8C\x8F\xA3\xA5\xAF\xC6\xCA\xD1\xD3";
  EXPECT_EQ(lowered.Upper(), uppered);
  EXPECT_EQ(uppered.Lower(), lowered);
  EXPECT_TRUE(lowered.equalsIgnoreCase(uppered));
  EXPECT_EQ(CXString("\x9A\xE9 1[{").Upper(), "\x9A\xE9 1[{");
  EXPECT_TRUE(uppered.IsUpper());
  EXPECT_TRUE(lowered.IsLower());
  EXPECT_TRUE(CXString().IsLower());
  EXPECT_FALSE(CXString().IsUpper());
}

TEST(XString, ReadsAndWritesNumbers) {
  struct Row {
    const char* text;
    int number;
  };
  for (const Row& row :
       {Row{"12x", 12}, Row{" -7", -7}, Row{"+3", 3}, Row{"x1", 0}, Row{"", 0}, Row{"- 1", 0},
        Row{"99999999999", 2147483647}, Row{"-99999999999", -2147483647 - 1}}) {
    EXPECT_EQ(CXString(row.text).toNumber(), row.number) << row.text;
  }
  EXPECT_FALSE(CXString("0").isNumber());
  EXPECT_TRUE(CXString("12x").isNumber());
  EXPECT_EQ(CXString("2.5e1x").toDouble(), 25.0);
  EXPECT_EQ(CXString("0x10").toDouble(), 0.0);
  EXPECT_EQ(CXString("inf").toDouble(), 0.0);
  EXPECT_TRUE(std::isfinite(CXString("-1e999").toDouble()));
  EXPECT_TRUE(CXString("tRUE").toBool());
  EXPECT_FALSE(CXString("TRUE ").toBool());
  CXString text = letters(40);
  EXPECT_EQ(text = -15, "-15");
  EXPECT_EQ(text = 1.23456789012, "1.23456789");
  EXPECT_EQ(CXString::toString(true), "TRUE");
  EXPECT_EQ(CXString::toString(-2147483647 - 1), "-2147483648");
}

TEST(XString, SplitsIntoPieces) {
  EXPECT_THAT(CXString(",a, b\n\rc,,").toVector(), ElementsAre("a", "b", "c"));
  EXPECT_THAT(CXString("a b;c").toVector(";"), ElementsAre("a b", "c"));
  EXPECT_THAT(CXString("").toVector(), ElementsAre());
  EXPECT_EQ(CXString(" one\ttwo\nthree").getWord(1), "two");
  EXPECT_EQ(CXString("one").getWord(1), "");
  EXPECT_EQ(CXString("10,-20").toPoint(), CXPoint(10, -20));
  EXPECT_EQ(CXString("1.2|3 ,4").toRect(), CXRect(1, 2, 3, 4));
  CStringTokenizer tokenizer("::a:b", ":");
  EXPECT_TRUE(tokenizer.hasMoreTokens());
  EXPECT_EQ(tokenizer.nextToken(), "a");
  EXPECT_EQ(tokenizer.nextToken(), "b");
  EXPECT_FALSE(tokenizer.hasMoreTokens());
  EXPECT_EQ(tokenizer.nextToken(), "");
}

TEST(XString, FiltersFileNames) {
  struct Row {
    const char* pattern;
    const char* mask;
    bool fits;
  };
  for (const Row& row :
       {Row{"x", "*", true}, Row{"x", "*.*", true}, Row{"a.txt", "a.txt", true}, Row{"a.t?t", "a.txt", true},
        Row{"a*", "abc", true}, Row{"a*", "a", true}, Row{"a*", "b", false}, Row{"*c", "abc", false},
        Row{"a", "ab", false}, Row{"ab", "a", false}, Row{"A", "a", false}}) {
    EXPECT_EQ(CXString(row.pattern).FilterFits(row.mask), row.fits) << row.pattern << " " << row.mask;
  }
}

}  // namespace
}  // namespace footlight
