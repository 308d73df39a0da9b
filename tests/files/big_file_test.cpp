#include "files/big_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/folder.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "support/big_file_bytes.h"
#include "support/test_places.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

using test::entryBytes;
using test::headBytes;
using test::int32Bytes;
using test::recordBytes;
using test::textBytes;
using testing::ElementsAre;
using testing::HasSubstr;

// A folder "Sub" with a file of two bytes, and a file of three bytes beside it.
std::string sample() {
  return headBytes("big", 5, 2, 1) + entryBytes("pack", 1, 1) + entryBytes("Sub", 1, 0) +
         recordBytes("B.txt", 121, 2) + recordBytes("a.txt", 123, 3) + "bbaaa";
}

class BigFileTest : public testing::Test {
 protected:
  ~BigFileTest() override { CFile::closeBigFile(); }

  static std::string content(const CXString& name, int mode = CFile::kReadBinary) {
    CFile file(nullptr, name, mode);
    if (file.LastError() != 0) return "(" + std::to_string(file.LastError()) + ")";
    std::string text(static_cast<std::size_t>(file.Length()), '\0');
    text.resize(static_cast<std::size_t>(file.Read(text.data(), file.Length())));
    return text;
  }
  bool pack(const CXString& folder, const CXString& name, const CXString& output) {
    CBigFile bigFile(false, "");
    const bool made = bigFile.Create(folder, name, output);
    failure = bigFile.getFailure();
    remarks = bigFile.getRemarks();
    return made;
  }

  test::TestPlatform machine;
  std::string failure;
  std::vector<std::string> remarks;
};

TEST_F(BigFileTest, IsWrittenByteForByte) {
  machine.folder.write("pack/a.txt", "aaa");
  machine.folder.write("pack/Sub/B.txt", "bb");
  ASSERT_TRUE(pack("pack", "big", "out.big")) << failure;
  EXPECT_EQ(machine.folder.read("out.big"), sample());
  machine.folder.makeFolder("empty");
  ASSERT_TRUE(pack("empty", "", "none.big"));
  EXPECT_EQ(machine.folder.read("none.big"), headBytes("", 0, 0, 0) + entryBytes("empty", 0, 0));
}

TEST_F(BigFileTest, LeavesOutLinksItselfAndNamesThatTheCodePageLacks) {
  machine.folder.write("pack/in/a.txt", "a");
  machine.folder.write("pack/in/\xE6\xBC\xA2.txt", "lost");
  const auto path = machine.folder.path();
  std::filesystem::create_directory_symlink(path / "pack", path / "pack/in/round");
  std::filesystem::create_symlink(path / "pack/in/a.txt", path / "pack/b.txt");
  for (int time = 0; time < 2; ++time) {
    ASSERT_TRUE(pack("pack\\", "n", "pack\\in\\out.big")) << failure;
    EXPECT_EQ(machine.folder.read("pack/in/out.big"), headBytes("n", 1, 1, 1) + entryBytes("pack\\", 0, 1) +
                                                          entryBytes("in", 1, 0) +
                                                          recordBytes("a.txt", 94, 1) + "a");
  }
}

TEST_F(BigFileTest, LeavesTheOldFileWhenNothingCanBeMade) {
  machine.folder.write("out.big", "old");
  EXPECT_FALSE(pack("missing", "n", "out.big"));
  EXPECT_EQ(failure, "there is no such folder: missing");
  std::string deep = "pack";
  for (int i = 0; i < limits::kTreeDepth; ++i) deep += "/d";
  machine.folder.makeFolder(deep);
  EXPECT_TRUE(pack("pack", "n", "deep.big")) << failure;
  EXPECT_EQ(CBigFile("deep.big", false, "").LastError(), 0);
  machine.folder.makeFolder(deep + "/d");
  EXPECT_FALSE(pack("pack", "n", "out.big"));
  EXPECT_THAT(failure, HasSubstr("nested deeper than 64"));
  machine.folder.write("large/a", "");
  machine.folder.write("large/b", "");
  for (const char* name : {"large/a", "large/b"})
    std::filesystem::resize_file(machine.folder.path() / name, std::uintmax_t{1} << 30);
  EXPECT_FALSE(pack("large", "n", "out.big"));
  EXPECT_THAT(failure, HasSubstr("too large"));
  EXPECT_FALSE(pack("large", "n", "missing\\out.big"));
  EXPECT_EQ(machine.folder.read("out.big"), "old");
}

TEST_F(BigFileTest, FindsNamesInAnyCaseAndTheFirstOfSeveral) {
  machine.folder.write("f.big", sample());
  CBigFile big("F.BIG", false, "");
  ASSERT_EQ(big.LastError(), 0) << big.getFailure();
  EXPECT_EQ(big.getTable().name, "big");
  EXPECT_EQ(big.Tell(), 0);
  struct Row {
    const char* name;
    int offset;
    int size;
    bool exists;
  };
  for (const Row& row :
       {Row{"A.TXT", 123, 3, true}, Row{"\\a.txt", 123, 3, true}, Row{"sub\\b.TXT", 121, 2, true},
        Row{"\\SUB\\b.txt", 121, 2, true}, Row{"b.txt", -1, 0, false}, Row{"Sub", -1, 0, false},
        Row{"", -1, 0, false}, Row{"sub\\..\\a.txt", -1, 0, true}, Row{"sub\\.\\b.txt", -1, 0, true},
        Row{"..\\a.txt", -1, 0, true}, Row{"none\\sub\\a.txt", -1, 0, true},
        Row{"none\\b.txt", -1, 0, false}}) {
    EXPECT_EQ(big.Seek(row.name), row.offset) << row.name;
    EXPECT_EQ(big.GetSize(row.name), row.size) << row.name;
    EXPECT_EQ(big.FileExists(row.name), row.exists) << row.name;
    if (row.offset >= 0) EXPECT_EQ(big.Tell(), row.offset);
  }
  EXPECT_EQ(big.ChDir("Sub") + big.GetOffset("a.txt"), 0);
  EXPECT_EQ(big.GetCurrentDirectory(), "\\");
  big.enter(big.findFolder("SUB"));
  EXPECT_EQ(big.GetCurrentDirectory(), "\\Sub\\");
  EXPECT_EQ(big.Seek("b.txt"), 121);
}

TEST_F(BigFileTest, LongFoldersKeepTheRuleOfTheFirst) {
  std::string records;
  for (int i = 0; i < 500; ++i) records += recordBytes("F" + std::to_string(i % 250) + ".txt", i, 1);
  machine.folder.write("f.big", headBytes("", 0, 0, 0) + entryBytes("", 500, 0) + records);
  CBigFile big("f.big", false, "");
  for (int i = 0; i < 250; ++i) EXPECT_EQ(big.Seek(CXString("f" + std::to_string(i) + ".TXT")), i);
  EXPECT_EQ(big.Seek("f250.txt"), -1);
}

TEST_F(BigFileTest, SearchesGiveOneName) {
  machine.folder.write("f.big", sample());
  CBigFile big("f.big", false, "");
  FileFindData data;
  struct Row {
    const char* pattern;
    int index;
    const char* name;
  };
  for (const Row& row : {Row{"*", 0, "a.txt"}, Row{"*.*", 0, "a.txt"}, Row{"?.TX*", 0, "a.txt"},
                         Row{"s*", 1, "Sub"}, Row{"*.txt", -1, "Sub"}, Row{"b.txt", -1, "Sub"}}) {
    EXPECT_EQ(big.FindFirst(row.pattern, &data), row.index) << row.pattern;
    EXPECT_EQ(data.name, row.name) << row.pattern;
  }
  EXPECT_EQ(data.attributes, FileFindData::kDirectory);
  EXPECT_EQ(big.FindNext(0, &data), -1);
}

TEST_F(BigFileTest, WhatIsNoTableIsNoBigFile) {
  const std::string head = headBytes("", 0, 0, 0);
  std::string deep = head;
  for (int i = 0; i <= limits::kTreeDepth; ++i) deep += entryBytes("", 0, i < limits::kTreeDepth ? 1 : 0);
  std::string deeper = head;
  for (int i = 0; i <= limits::kTreeDepth + 1; ++i) deeper += entryBytes("", 0, 1);
  struct Row {
    std::string bytes;
    const char* why;  // null: it is one
  };
  const std::string room(64, '\0');
  for (const Row& row :
       {Row{"", "cut off"}, Row{"not a big file", "name"}, Row{int32Bytes(-1) + room, "name"},
        Row{int32Bytes(limits::kNameBytes + 1) + std::string(8000, 'x'), "name"}, Row{head, "cut off"},
        Row{head + entryBytes("", -1, 0) + room, "count"}, Row{head + entryBytes("", 0, -1) + room, "count"},
        Row{head + entryBytes("", 4, 0) + room, "count"}, Row{head + entryBytes("", 0, 6) + room, "count"},
        Row{head + entryBytes("", 2147483647, 2147483647) + room, "count"},
        Row{head + entryBytes("", 2, 1) + entryBytes("", 2, 0) + recordBytes("a", 0, 0) +
                recordBytes("b", 0, 0),
            "count"},
        Row{head + entryBytes("", 0, 1000001) + std::string(12000012, '\0'), "1000000 entries"},
        Row{deep, nullptr}, Row{deeper, "nested deeper"}, Row{sample().substr(0, 110), "count"},
        Row{sample().substr(0, 121), nullptr}}) {
    machine.folder.write("f.big", row.bytes);
    const CBigFile big("f.big", false, "");
    EXPECT_EQ(big.LastError(), row.why != nullptr ? 2000 : 0);
    EXPECT_THAT(big.getFailure(), HasSubstr(row.why != nullptr ? row.why : ""));
    CFile::openBigFile("f.big");
    EXPECT_EQ(CFile::getBigFileIfc() != nullptr, row.why == nullptr);
    EXPECT_EQ(CFile::getBigFileHandle() != nullptr, row.why == nullptr);
  }
}

TEST_F(BigFileTest, FilesThatReachBeyondTheEndAreEmpty) {
  resetGuardHits();
  machine.folder.write("f.big", headBytes("", 0, 0, 0) + entryBytes("", 5, 0) + recordBytes("a", -1, 1) +
                                    recordBytes("b", 0, -1) + recordBytes("c", 2147483647, 2147483647) +
                                    recordBytes("d", 154, 1) + recordBytes("e", 153, 1));
  CFile::openBigFile("f.big");
  for (const char* name : {"a", "b", "c", "d"}) EXPECT_EQ(content(name), "") << name;
  EXPECT_EQ(content("e"), std::string(1, '\0'));
  EXPECT_EQ(guardHits("big_file.outside"), 4);
}

TEST_F(BigFileTest, FilesComeOutOfItWhereTheDiskHasNone) {
  machine.folder.write("f.big", sample());
  CFile::openBigFile("f.big");
  EXPECT_EQ(content("sub\\b.txt"), "bb");
  EXPECT_EQ(content(machine.enginePath("A.txt").c_str()), "aaa");
  EXPECT_EQ(content("a.txt", CFile::kRead | CFile::kUpdate), "(2000)");
  machine.folder.write("a.txt", "disk");
  EXPECT_EQ(content("a.txt"), "disk");
  CFile first(nullptr, "sub\\b.txt", CFile::kReadBinary);
  CFile second(nullptr, "sub\\..\\sub\\b.txt", CFile::kReadText);
  EXPECT_EQ(first.Seek(1, 0), 0);
  EXPECT_EQ(second.getLine(), "bb");
  char rest[8];
  EXPECT_EQ(first.Read(rest, 8), 1);
  EXPECT_TRUE(first.eof());
  EXPECT_EQ(first.Seek(-1, 0), -1);
  EXPECT_EQ(first.Seek(100, 0), 0);
  EXPECT_EQ(first.Read(rest, 8), 0);
  EXPECT_EQ(first.Write("x", 1), 0);
}

TEST_F(BigFileTest, QuestionsAreAnsweredByItAlone) {
  machine.folder.write("f.big", sample());
  machine.folder.write("disk.txt", "");
  const CXString start = CFile::getCurrentDirectory();
  CFile::openBigFile("f.big");
  EXPECT_FALSE(CFile::fileExists("disk.txt"));
  EXPECT_TRUE(CFile::canRead("disk.txt"));
  EXPECT_TRUE(CFile::fileExists("a.txt"));
  EXPECT_TRUE(CFile::dirExists("nothing"));
  EXPECT_EQ(CFile::chDir("nothing"), 0);
  EXPECT_EQ(CFile::getCurrentDirectory(), start);
  EXPECT_EQ(CFile::chDir("sub"), 0);
  EXPECT_EQ(CFile::getCurrentDirectory(), start + "sub\\");
  EXPECT_TRUE(CFile::fileExists("b.txt"));
  EXPECT_FALSE(CFile::fileExists("a.txt"));
  EXPECT_TRUE(CFile::fileExists("..\\a.txt"));
  CFolder folder(nullptr);
  EXPECT_THAT(folder.list("*.*"), ElementsAre(CXString("B.txt")));
  EXPECT_EQ(folder.GetFolderName("*"), "");
  EXPECT_EQ(CFile::chDir("..\\.."), 0);
  CFile::chDir(start);
  EXPECT_THAT(CFolder(nullptr).list("sub\\*"), ElementsAre(CXString("B.txt")));
  EXPECT_EQ(CFile::fSeek(*CFile::getBigFileHandle(), 3, 0), 0);
  EXPECT_EQ(CFile::fTell(*CFile::getBigFileHandle()), 3);
}

TEST_F(BigFileTest, WritingMakesTheFoldersThatItAloneHas) {
  machine.folder.write("f.big", sample());
  CFile::openBigFile("f.big");
  CFile::chDir("Sub");
  EXPECT_EQ(CFile(nullptr, "save.txt", CFile::kWriteBinary).LastError(), 0);
  EXPECT_TRUE(machine.folder.exists("Sub/save.txt"));
  EXPECT_EQ(CFile(nullptr, "no\\save.txt", CFile::kWriteBinary).LastError(), 2000);
  EXPECT_TRUE(CFile::copy("b.txt", "..\\copy.txt"));
  EXPECT_EQ(machine.folder.read("copy.txt"), "bb");
  EXPECT_FALSE(CFile::copy("none.txt", "..\\copy.txt"));
}

TEST_F(BigFileTest, AReplacedFileGivesNothingMore) {
  machine.folder.write("f.big", sample());
  CFile::openBigFile("f.big");
  machine.folder.write("other.big", sample() + "more");
  std::filesystem::rename(machine.folder.path() / "other.big", machine.folder.path() / "f.big");
  EXPECT_EQ(content("a.txt"), "(2000)");
}

}  // namespace
}  // namespace footlight
