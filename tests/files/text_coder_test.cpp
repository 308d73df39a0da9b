#include "files/text_coder.h"

#include <gtest/gtest.h>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "support/test_places.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

class TextCoderTest : public testing::Test {
 protected:
  // All lines that a coder gives for a file's bytes, joined.
  static std::string linesOf(const std::string& bytes) {
    CTextFileReader reader(nullptr, bytes.data(), static_cast<int>(bytes.size()));
    CTextCoder coder(nullptr, &reader, true);
    std::string lines;
    while (!coder._eof()) lines += coder.getLine().view();
    return lines;
  }
  std::string coded(const std::string& plain, int cycle) {
    machine.folder.write("f", plain);
    CTextCoder::code(nullptr, "f", "f.coded", cycle);
    return machine.folder.read("f.coded");
  }

  test::TestPlatform machine;
};

TEST_F(TextCoderTest, CodesToTheByte) {
  struct Row {
    const char* plain;
    int cycle;
    std::string coded;
  };
  const Row rows[] = {
      {"abc", 6, "{<C:6>}\nbae<E>\n"},
      {"abc\n", 6, "{<C:6>}\nbae<E>\n"},
      {"aaaaaaa\n", 6, "{<C:6>}\nb`c_d^b<E>\n"},     // the index goes round
      {"ab\ncd", 6, "{<C:6>}\nba<E>eb<E>\n"},        // and over the ends of lines
      {" \t a \tb\t \n", 6, "{<C:6>}\n!`\"`<E>\n"},  // blanks at the ends go first, then all tabs
      {"a\n \t \nb\n", 6, "{<C:6>}\nb<E><E>a<E>\n"},
      {"a\nb\nc\nd\ne", 2, "{<C:2>}\nb<E>a<E>\nd<E>c<E>\nf<E>\n"},
      {"aa\nb", 1, "{<C:1>}\nbb<E>\nc<E>\n"},
      {"\xFF\x01", 6, std::string("{<C:6>}\n\0\0<E>\n", 14)},
      {"", 6, "{<C:6>}\n"},
  };
  for (const Row& row : rows) EXPECT_EQ(coded(row.plain, row.cycle), row.coded) << row.plain;
}

TEST_F(TextCoderTest, DecodesToTheByte) {
  machine.folder.write("f", "{<C:2>}\nb<E>a<E>\nd<E>c<E>\nf<E>\n");
  CTextCoder::decode(nullptr, "f", "f.decoded");
  EXPECT_EQ(machine.folder.read("f.decoded"), "a\nb\nc\nd\ne\n\n");
}

TEST_F(TextCoderTest, GivesTheSameLinesForBothForms) {
  const std::string plain = "OBJECT=A\nA:TYPE=INTEGER\n\nA:VALUE=1\n#\xB3\xF3\nx\ny\n";
  for (const int cycle : {1, 2, 3, 6, 7, 65535}) {
    EXPECT_EQ(linesOf(coded(plain, cycle)), plain + "\n") << cycle;
  }
  EXPECT_EQ(linesOf(plain), plain);
  EXPECT_EQ(linesOf("no end"), "no end\n");
  EXPECT_EQ(linesOf(""), "");
}

TEST_F(TextCoderTest, StopsAtTheLastMark) {
  EXPECT_EQ(linesOf("{<C:6>}\nb<E>zzz\nnever<E>\n"), "a\n\n");
  EXPECT_EQ(linesOf("{<C:1>}\nb<E>beyond the cycle<E>\nc<E>"), "a\nb\n\n");
  EXPECT_EQ(linesOf("{<C:6>}"), "\n");
}

TEST_F(TextCoderTest, BadFirstLinesMeanPlainText) {
  resetGuardHits();
  for (const std::string first :
       {"{<C:0>}", "{<C:-6>}", "{<C:65536>}", "{<C:99999999999>}", "{<C:x>}", "{<D:>}"}) {
    EXPECT_EQ(linesOf(first + "\nb<E>\n"), first + "\nb<E>\n");
  }
  EXPECT_EQ(guardHits("text_coder.cycle"), 6);
  EXPECT_EQ(linesOf("{<C:6\nb<E>\n"), "{<C:6\nb<E>\n");
  EXPECT_EQ(linesOf("{<X:6>}\nb<E>\n"), "{<X:6>}\nb<E>\n");
}

TEST_F(TextCoderTest, LeavesAPlainCopyWhenTheFileAsksForIt) {
  machine.folder.write("f", "{<D:6>}\nbae<E>\n");
  EXPECT_TRUE(CTextCoder(nullptr, "f", true).isCoded());
  EXPECT_FALSE(machine.folder.exists("f.decoded"));
  CTextCoder coder(nullptr, "f", false);
  EXPECT_EQ(machine.folder.read("f.decoded"), "abc\n\n");
  EXPECT_EQ(coder.getLine(), "abc\n");
}

TEST_F(TextCoderTest, WritesNothingForTheWrongForm) {
  machine.folder.write("plain", "abc");
  machine.folder.write("coded", "{<C:6>}\nbae<E>\n");
  CTextCoder::decode(nullptr, "plain", "out");
  CTextCoder::code(nullptr, "coded", "out", 6);
  CTextCoder::code(nullptr, "plain", "out", 0);
  CTextCoder::code(nullptr, "missing", "out", 6);
  EXPECT_FALSE(machine.folder.exists("out"));
  EXPECT_EQ(CTextCoder(nullptr, "missing", false).LastError(), 2000);
  CTextCoder::code(nullptr, "plain", "..\\out", 6);  // no such place: nothing happens
}

}  // namespace
}  // namespace footlight
