#include "files/config.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

class ConfigTest : public testing::Test {
 protected:
  std::string file() { return machine.folder.read("game.ini"); }
  void setFile(std::string_view content) { machine.folder.write("game.ini", content); }

  test::TestPlatform machine;
  CConfig config{machine.enginePath("game.ini")};
};

TEST_F(ConfigTest, ReadsValuesAsProfilesDo) {
  setFile(
      "stray=before\r\n"
      "; comment=1\r\n"
      " [ First ] rest\r\n"
      "  Key = value with  blanks \t\r\n"
      "key=second\r\n"
      "quoted=\" a \"\r\n"
      "single='b'\r\n"
      "half=\"c\r\n"
      "quote=\"\r\n"
      ";note=2\r\n"
      "no equals sign\r\n"
      "number= -12x\r\n"
      "formula=a=b\r\n"
      "=nameless\r\n"
      "[Second]\r\n"
      "key=other\r\n"
      "[FIRST]\r\n"
      "late=lost\r\n"
      "\xC4\xD3=letters");
  struct Row {
    const char* section;
    const char* key;
    const char* value;
  };
  const Row rows[] = {{"First", "Key", "value with  blanks"},
                      {"FIRST", " KEY ", "value with  blanks"},
                      {"first", "quoted", " a "},
                      {"first", "single", "b"},
                      {"first", "half", "\"c"},
                      {"first", "quote", "\""},
                      {"first", "formula", "a=b"},
                      {"first", ";note", ""},
                      {"first", "no equals sign", ""},
                      {"first", "late", ""},
                      {"first", "", ""},
                      {"second", "key", "other"},
                      {"", "stray", ""},
                      {"none", "key", ""}};
  for (const Row& row : rows) EXPECT_EQ(config.GetString(row.section, row.key), row.value) << row.key;
  EXPECT_EQ(config.GetInt("first", "number"), -12);
  EXPECT_EQ(config.GetInt("first", "missing"), 0);
}

TEST_F(ConfigTest, WritesReachTheFileAtOnceAndKeepTheRest) {
  config.PutString("SCENE", "A", "1");
  EXPECT_EQ(file(), "[SCENE]\nA=1\n");
  config.PutInt("SCENE", "B", -5);
  config.PutString("Other", "C", "x");
  config.PutString("scene", "c", "3");
  config.PutString("Scene", "a", "2");
  EXPECT_EQ(file(), "[SCENE]\nA=2\nB=-5\nc=3\n[Other]\nC=x\n");

  setFile("; top\r\n[One]\r\nodd line\r\nk = 1\r\n\r\n; tail\r\n\r\n[Two]\r\nz=1");
  config.PutString("one", "K", "2");
  config.PutString("one", "new", "n");
  config.PutString("two", "y", "");
  EXPECT_EQ(file(),
            "; top\r\n[One]\r\nodd line\r\nk =2\r\n\r\n; tail\r\nnew=n\r\n\r\n[Two]\r\nz=1\r\ny=\r\n");
  EXPECT_EQ(config.GetString("one", "new"), "n");
}

TEST_F(ConfigTest, DoesNotWriteWhatStaysTheSame) {
  setFile("[s]\nk = \"v\"");
  const auto before = machine.files().stamp(machine.enginePath("game.ini"));
  config.PutString("S", "K", "v");
  config.PutString("S", "K", "  v ");
  EXPECT_EQ(machine.files().stamp(machine.enginePath("game.ini")), before);
  EXPECT_EQ(file(), "[s]\nk = \"v\"");
}

TEST_F(ConfigTest, KeepsLinesWhole) {
  config.PutString("s", "k", CXString(std::string_view("a\r\nb\0c", 6)));
  EXPECT_EQ(file(), "[s]\nk=a  b c\n");
  resetGuardHits();
  const std::string_view bad[] = {"", " ", "a\nb", std::string_view("a\0b", 3)};
  for (const std::string_view name : bad) {
    config.PutString(name, "k", "x");
    config.PutString("s", name, "x");
  }
  config.PutString("a]b", "k", "x");
  config.PutString("s", "a=b", "x");
  config.PutString("s", ";a", "x");
  config.PutString("s", "[a", "x");
  EXPECT_EQ(guardHits("config.name"), 12);
  EXPECT_EQ(file(), "[s]\nk=a  b c\n");
  config.PutString("s[=", "a]b;", "x");
  EXPECT_EQ(config.GetString("S[=", "A]B;"), "x");
}

TEST_F(ConfigTest, CutsLongValues) {
  for (const int length : {limits::kIniValueBytes - 2, limits::kIniValueBytes - 1, limits::kIniValueBytes}) {
    const CXString value{std::string(static_cast<std::size_t>(length), 'v')};
    config.PutString("s", "k", value);
    EXPECT_EQ(config.GetString("s", "k").Length(), std::min(length, limits::kIniValueBytes - 1));
  }
}

TEST_F(ConfigTest, SeesWhatOthersWrite) {
  config.PutString("s", "k", "mine");
  setFile("[s]\nk=other one\n");
  EXPECT_EQ(config.GetString("s", "k"), "other one");
  CConfig second(machine.enginePath("GAME.ini"));
  second.PutString("s", "j", "2");
  config.PutString("s", "i", "3");
  EXPECT_EQ(file(), "[s]\nk=other one\nj=2\ni=3\n");
  std::filesystem::remove(machine.folder.path() / "game.ini");
  EXPECT_EQ(config.GetString("s", "k"), "");
  config.PutString("s", "k", "again");
  EXPECT_EQ(file(), "[s]\nk=again\n");
}

TEST_F(ConfigTest, NeverDestroysWhatItCannotRead) {
  const std::filesystem::path path = machine.folder.path() / "game.ini";
  setFile("[s]\nk=1\n");
  std::filesystem::resize_file(path, limits::kTextFileBytes + 1);
  config.PutString("s", "k", "2");
  EXPECT_EQ(std::filesystem::file_size(path), limits::kTextFileBytes + 1);
  setFile(std::string(limits::kIniLines + 1, '\n'));
  config.PutString("s", "j", "3");
  EXPECT_EQ(std::filesystem::file_size(path), limits::kIniLines + 1);
  setFile("[s]\nk=1\n");  // then what waited comes
  config.flush();
  EXPECT_EQ(file(), "[s]\nk=2\nj=3\n");
}

// Lets files grow to so many bytes and no more.
class DiskRoom {
 public:
  explicit DiskRoom(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~DiskRoom() { ::setrlimit(RLIMIT_FSIZE, &before_); }
  DiskRoom(const DiskRoom&) = delete;
  DiskRoom& operator=(const DiskRoom&) = delete;

 private:
  rlimit before_{};
};

TEST_F(ConfigTest, WhatTheDiskDoesNotTakeWaitsForRoom) {
  config.PutString("s", "k", "1");
  {
    const DiskRoom room(8);
    config.PutString("s", "k", "22");
    config.PutString("s", "j", "3");
    config.PutString("s", "k", "222");
    config.tick();
    EXPECT_EQ(file(), "[s]\nk=1\n");
    EXPECT_EQ(config.GetString("S", "K"), "222");
  }
  config.tick();  // too soon after the last try
  EXPECT_EQ(file(), "[s]\nk=1\n");
  setFile("[s]\nother=0\nk=1\n");
  machine.fakeClock.now += 250;
  config.tick();
  EXPECT_EQ(file(), "[s]\nother=0\nk=222\nj=3\n");
  {
    const DiskRoom room(8);
    config.PutString("s", "k", "4");
  }
  config.PutString("s", "i", "5");  // the next one takes it along
  EXPECT_EQ(file(), "[s]\nother=0\nk=4\nj=3\ni=5\n");
}

TEST_F(ConfigTest, WhatWaitsIsBounded) {
  CConfig outside(machine.enginePath("..\\outside.ini"));  // where nothing may be written
  resetGuardHits();
  const CXString value(std::string(1 << 20, 'v'));
  for (int i = 0; i < 20; ++i) outside.PutString("s", CXString::toString(i), value);
  EXPECT_EQ(guardHits("config.waiting"), 5);
  EXPECT_EQ(outside.GetString("s", "14").Length(), limits::kIniValueBytes - 1);
  EXPECT_EQ(outside.GetString("s", "15"), "");
}

// Each of several programs writes keys of its own, all in the same time.
TEST_F(ConfigTest, ProgramsThatWriteTheSameFileLoseNothing) {
  constexpr int kPrograms = 3;
  constexpr int kKeys = 60;
  for (int program = 0; program < kPrograms; ++program) {
    if (::fork() != 0) continue;
    CConfig own(machine.enginePath("game.ini"));
    for (int i = 0; i < kKeys; ++i) own.PutInt("s", CXString::Format("p%dk%d", program, i), i);
    ::_exit(0);
  }
  while (::wait(nullptr) > 0) continue;
  for (int program = 0; program < kPrograms; ++program) {
    for (int i = 0; i < kKeys; ++i)
      EXPECT_EQ(config.GetString("s", CXString::Format("p%dk%d", program, i)), CXString::toString(i));
  }
}

}  // namespace
}  // namespace footlight
