#include "files/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/folder.h"
#include "files/text_file_reader.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "support/test_places.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

using testing::ElementsAre;

class FileTest : public testing::Test {
 protected:
  FileTest() {
    machine.folder.makeFolder("root/Dane/scene");
    machine.folder.makeFolder("data");
    machine.files().changeDirectory("root\\Dane\\scene");
  }
  ~FileTest() override { diagnose::listen({}); }

  std::string content(const CXString& name, bool withWindow = true, int mode = CFile::kReadBinary) {
    CFile file(withWindow ? window : nullptr, name, mode);
    if (file.LastError() != 0) return file.LastError() == 2000 ? "(2000)" : "(?)";
    std::string text(static_cast<std::size_t>(file.Length()), '\0');
    text.resize(static_cast<std::size_t>(file.Read(text.data(), file.Length())));
    return text;
  }

  test::TestPlatform machine;
  test::TestPlaces places{machine.enginePath("root\\"), machine.enginePath("data\\")};
  char memory = 0;
  CWindow* window = reinterpret_cast<CWindow*>(&memory);  // only whether there is one matters
};

TEST_F(FileTest, TriesPlacesInOrder) {
  // From the first place tried to the last: each one is removed when it has served.
  const std::string plainThenData[] = {"root/Dane/scene/POL/f", "root/Dane/scene/f", "data/Dane/scene/POL/f",
                                       "data/Dane/scene/f"};
  places.polish = true;
  for (const std::string& place : plainThenData) machine.folder.write(place, place);
  for (const std::string& place : plainThenData) {
    EXPECT_EQ(content("f"), place);
    std::filesystem::remove(machine.folder.path() / place);
  }
  EXPECT_EQ(content("f"), "(2000)");
}

TEST_F(FileTest, ADriveThatIsNotFixedIsReplacedByTheRoots) {
  places.polish = true;
  const std::string order[] = {"root/Dane/x/POL/f", "root/Dane/x/f"};
  for (const std::string& place : order) machine.folder.write(place, place);
  machine.folder.write("data/Dane/x/f", "never");
  for (const std::string& place : order) {
    EXPECT_EQ(content("E:\\somewhere\\Dane\\x\\f"), place);
    std::filesystem::remove(machine.folder.path() / place);
  }
  EXPECT_EQ(content("E:\\somewhere\\Dane\\x\\f"), "(2000)");
}

TEST_F(FileTest, WithoutAWindowTheRootComesFirstAndNoLanguage) {
  places.polish = true;
  machine.folder.write("data/Dane/f", "as it is");
  machine.folder.write("root/Dane/f", "root");
  machine.folder.write("root/Dane/POL/f", "polish");
  const CXString name = machine.enginePath("data\\Dane\\f");
  EXPECT_EQ(content(name, false), "root");
  EXPECT_EQ(content(name, true), "as it is");
  std::filesystem::remove(machine.folder.path() / "root/Dane/f");
  EXPECT_EQ(content(name, false), "as it is");
}

TEST_F(FileTest, PathsPreferLanguageVersionsOfBothPlaces) {
  places.polish = true;
  const std::string order[] = {"root/Dane/POL/f", "data/Dane/POL/f", "root/Dane/f", "data/Dane/f"};
  for (const std::string& place : order) machine.folder.write(place, "");
  for (std::string place : order) {
    const CXString found = CFile::getPath(window, "$Dane\\f");
    std::replace(place.begin(), place.end(), '/', '\\');
    EXPECT_EQ(found, machine.enginePath(place));
    machine.files().remove(found);
  }
  EXPECT_EQ(CFile::getPath(window, "$Dane\\f"), "");
}

TEST_F(FileTest, ADollarReachesTheDataRootFromAnywhere) {
  machine.folder.write("data/COMMON/f", "common");
  EXPECT_EQ(content("$COMMON\\f"), "common");
  EXPECT_EQ(content("&common\\F"), "common");
  machine.files().changeDirectory("..\\..");
  EXPECT_EQ(content("$COMMON\\f"), "common");
}

TEST_F(FileTest, ReportsThePlacesTriedInOrder) {
  std::vector<std::string> reports;
  diagnose::listen(
      [&](const diagnose::Report& report) { reports.push_back(report.object + ": " + report.text); });
  EXPECT_EQ(content("f.ann"), "(2000)");
  EXPECT_THAT(reports, ElementsAre("f.ann: cannot be opened; looked for " +
                                   machine.enginePath("root\\Dane\\scene\\f.ann") + ", " +
                                   machine.enginePath("data\\Dane\\scene\\f.ann")));
}

TEST_F(FileTest, ModesOpenAsTold) {
  machine.folder.write("root/Dane/scene/f", "abc");
  {
    CFile file(window, "f", CFile::kRead | CFile::kUpdate | CFile::kBinary);
    ASSERT_EQ(file.LastError(), 0);
    file.Seek(1, 0);
    EXPECT_EQ(file.Write("X", 1), 1);
    char next = 0;
    EXPECT_EQ(file.Read(&next, 1), 1);
    EXPECT_EQ(next, 'c');
    EXPECT_TRUE(file.eof());
  }
  EXPECT_EQ(machine.folder.read("root/Dane/scene/f"), "aXc");
  EXPECT_EQ(CFile(window, "new", CFile::kRead | CFile::kUpdate).LastError(), 2000);
  {
    CFile file(window, "f", CFile::kWriteBinary);
    file.putLine("one\n");
    file.putLine("two");
    EXPECT_EQ(machine.folder.read("root/Dane/scene/f"), "aXc");  // until it is closed
    file.Seek(-5, 2);
    EXPECT_EQ(file.getLine(), "e\n");
    EXPECT_EQ(file.Tell(), 4);
    EXPECT_EQ(file.Close(), 0);
  }
  EXPECT_EQ(machine.folder.read("root/Dane/scene/f"), "one\ntwo");
}

TEST_F(FileTest, AFileThatIsNotOpenDoesNothing) {
  CFile file(window, "missing", CFile::kReadBinary);
  char byte = 'x';
  EXPECT_EQ(file.LastError(), 2000);
  EXPECT_EQ(file.Read(&byte, 1), 0);
  EXPECT_EQ(file.Write(&byte, 1), 0);
  EXPECT_EQ(file.Seek(0, 0), -1);
  EXPECT_EQ(file.Tell() + file.Length(), 0);
  EXPECT_EQ(file.getLine(), "");
  EXPECT_TRUE(file.eof());
  EXPECT_EQ(file.Close(), 0);
}

TEST_F(FileTest, TextDropsCarriageReturnsBeforeLineFeeds) {
  const std::string text = "a\r\nb\rc\r\r\n\n\r";
  machine.folder.write("root/Dane/scene/f", text);
  EXPECT_EQ(content("f", true, CFile::kReadText), "a\nb\rc\r\n\n\r");
  EXPECT_EQ(content("f", true, CFile::kReadBinary), text);
  EXPECT_EQ(content("f", true, CFile::kReadText | CFile::kBinary), "a\nb\rc\r\n\n\r");
  EXPECT_EQ(content("f", true, CFile::kRead), text);
  struct Row {
    int mode;
    const char* first;
    const char* second;
  };
  for (const Row& row : {Row{CFile::kReadText, "a\n", "b\rc\r\n"}, Row{CFile::kRead, "a\n", "b\rc\r\n"},
                         Row{CFile::kReadBinary, "a\r\n", "b\rc\r\r\n"}}) {
    CFile file(window, "f", row.mode);
    EXPECT_EQ(file.getLine(), row.first) << row.mode;
    char line[16];
    EXPECT_TRUE(file.GetLine(line, sizeof line));
    EXPECT_STREQ(line, row.second) << row.mode;
  }
  // A pair on the border of the read-ahead.
  const std::string longText = std::string(16383, 'x') + "\r\nend";
  machine.folder.write("root/Dane/scene/g", longText);
  EXPECT_EQ(content("g", true, CFile::kReadText), std::string(16383, 'x') + "\nend");
}

TEST_F(FileTest, LinesAreCutAndReadsGoOnBehindThem) {
  machine.folder.write("root/Dane/scene/f", std::string(CFile::kLineBytes, 'l') + "\nrest");
  CFile file(window, "f", CFile::kReadText);
  EXPECT_EQ(file.getLine().Length(), CFile::kLineBytes);
  EXPECT_EQ(file.getLine(), "\n");
  char line[4];
  EXPECT_TRUE(file.GetLine(line, 4));
  EXPECT_STREQ(line, "res");
  EXPECT_EQ(file.Tell(), CFile::kLineBytes + 4);
  file.Seek(-2, 1);
  EXPECT_EQ(file.getLine(), "est");
  EXPECT_TRUE(file.eof());
  EXPECT_FALSE(file.GetLine(line, 4));
}

TEST_F(FileTest, SearchesFolders) {
  for (const char* name : {"b.TXT", "a.txt", "ab", "x.y.txt"}) {
    machine.folder.write(std::string("root/Dane/scene/list/") + name, "123");
  }
  machine.folder.makeFolder("root/Dane/scene/list/Sub");
  const CXString before = CFile::getCurrentDirectory();
  CFolder folder(window, "list");
  const auto listed = [&](const char* pattern) {
    std::vector<std::string> names;
    for (const CXString& name : folder.list(pattern)) names.push_back(name.str());
    return names;
  };
  EXPECT_THAT(listed("*.*"), ElementsAre("a.txt", "ab", "b.TXT", "Sub", "x.y.txt"));
  EXPECT_THAT(listed("*"), ElementsAre("a.txt", "ab", "b.TXT", "Sub", "x.y.txt"));
  EXPECT_THAT(listed("*.txt"), ElementsAre("a.txt", "b.TXT", "x.y.txt"));
  EXPECT_THAT(listed("?.t?T"), ElementsAre("a.txt", "b.TXT"));
  EXPECT_THAT(listed("A*"), ElementsAre("a.txt", "ab"));
  EXPECT_THAT(listed("..\\l*"), ElementsAre("list"));
  EXPECT_THAT(listed(""), ElementsAre());
  EXPECT_EQ(folder.GetFolderName("*"), "Sub");
  EXPECT_EQ(folder.GetNextFileName(), "x.y.txt");
  EXPECT_EQ(folder.GetNextFileName(), "");
  EXPECT_EQ(folder.GetSize("AB"), 3);
  EXPECT_TRUE(folder.IsDirectory("sub"));
  EXPECT_TRUE(folder.GoTo("Sub"));
  EXPECT_FALSE(folder.GoTo("nothing"));
  EXPECT_TRUE(folder.GoUp());
  EXPECT_TRUE(folder.back());
  EXPECT_EQ(CFile::getCurrentDirectory(), before + "list\\Sub\\");
  EXPECT_TRUE(folder.GoStart());
  EXPECT_EQ(CFile::getCurrentDirectory(), before);
}

TEST_F(FileTest, TextReadersReadFilesAndMemory) {
  machine.folder.write("root/Dane/scene/f", "one\r\n\r\ntwo");
  CTextFileReader file(window, "f");
  EXPECT_EQ(file.LastError(), 0);
  EXPECT_EQ(file.getLine(), "one");
  EXPECT_EQ(file.getLine(), "");
  EXPECT_FALSE(file.eof());
  EXPECT_EQ(file.getLine(), "two");
  EXPECT_TRUE(file.eof());
  EXPECT_EQ(file.getLine(), "");
  file.reset();
  EXPECT_EQ(file.getLine(), "one");
  CTextFileReader memoryReader(window, "a\r\nb\n", 5);
  EXPECT_EQ(memoryReader.getLine(), "a\r");
  EXPECT_EQ(memoryReader.getLine(), "b");
  EXPECT_TRUE(memoryReader.eof());
  EXPECT_EQ(CTextFileReader(window, "missing").LastError(), 2000);
}

TEST_F(FileTest, TextFilesHaveALimit) {
  machine.folder.write("root/Dane/scene/f", "");
  const auto path = machine.folder.path() / "root/Dane/scene/f";
  resetGuardHits();
  std::filesystem::resize_file(path, limits::kTextFileBytes + 1);
  EXPECT_EQ(CTextFileReader(window, "f").LastError(), 2000);
  EXPECT_EQ(guardHits("text_file.size"), 1);
  std::filesystem::resize_file(path, limits::kTextFileBytes);
  EXPECT_EQ(CTextFileReader(window, "f").LastError(), 0);
}

}  // namespace
}  // namespace footlight
