#include "platform/posix/file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/test_platform.h"

namespace footlight::platform {
namespace {

namespace fs = std::filesystem;

std::span<const std::byte> bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

class PosixFileSystemTest : public testing::Test {
 protected:
  PosixFileSystemTest() : files(outer.path().string() + "/game") {}

  std::string content(std::string_view path) {
    const auto read = files.readWhole(path, 1 << 20);
    if (!read) return "(none)";
    return {reinterpret_cast<const char*>(read->data()), read->size()};
  }
  bool put(std::string_view path, std::string_view text) {
    return files.writeWhole(path, bytes(text), false);
  }
  std::string inOuter(const std::string& name) { return files.toEnginePath((outer.path() / name).string()); }

  struct Outer : test::TemporaryFolder {
    Outer() { makeFolder("game"); }
  } outer;
  PosixFileSystem files;
};

TEST_F(PosixFileSystemTest, FindsNamesInAnyCaseAndForm) {
  outer.write("game/Dane/Scena One/Picture.IMG", "p");
  outer.write("game/top.txt", "t");
  const std::string root = files.toEnginePath((outer.path() / "game").string());
  ASSERT_EQ(files.currentDirectory(), root + "\\");
  for (const std::string name :
       {"Dane\\Scena One\\Picture.IMG", "dane\\SCENA ONE\\picture.img", "dane/scena one/picture.img",
        ".\\Dane\\\\.\\Scena One\\x\\..\\PICTURE.img", "Dane\\nowhere\\..\\Scena One\\Picture.IMG\\"}) {
    EXPECT_EQ(content(name), "p") << name;
    EXPECT_EQ(content(root + "\\" + name), "p") << name;
    EXPECT_EQ(content("c:" + name), "p") << name;
  }
  EXPECT_EQ(content("Dane\\Scena One"), "(none)");
  EXPECT_EQ(content("Dane\\picture.img"), "(none)");
  EXPECT_EQ(content("D:\\top.txt"), "(none)");
  EXPECT_EQ(content("D:" + root.substr(2) + "\\top.txt"), "(none)");
}

TEST_F(PosixFileSystemTest, ChangesDirectoryInTheCaseAsWritten) {
  outer.write("game/dane/scene/a.txt", "a");
  const std::string start = files.currentDirectory();
  ASSERT_TRUE(files.changeDirectory("Dane\\SCENE"));
  EXPECT_EQ(files.currentDirectory(), start + "Dane\\SCENE\\");
  EXPECT_EQ(content("A.TXT"), "a");
  EXPECT_FALSE(files.changeDirectory("nothing"));
  EXPECT_FALSE(files.changeDirectory("a.txt"));
  EXPECT_EQ(files.currentDirectory(), start + "Dane\\SCENE\\");
  EXPECT_TRUE(files.changeDirectory("..\\.."));
  EXPECT_EQ(files.currentDirectory(), start);
  EXPECT_FALSE(files.changeDirectory(".."));  // outside the fence
  EXPECT_FALSE(files.changeDirectory(""));
}

TEST_F(PosixFileSystemTest, PrefersTheExactNameAmongSeveral) {
  outer.write("game/name", "lower");
  outer.write("game/Name", "mixed");
  outer.write("game/NAME", "upper");
  EXPECT_EQ(content("Name"), "mixed");
  EXPECT_EQ(content("name"), "lower");
  EXPECT_EQ(content("nAmE"), "upper");  // the first in the order of bytes
}

TEST_F(PosixFileSystemTest, SeesChangesOfOthersAndItsOwn) {
  EXPECT_FALSE(files.fileExists("LATE.txt"));
  outer.write("game/late.txt", "1");
  EXPECT_EQ(content("LATE.txt"), "1");
  fs::rename(outer.path() / "game/late.txt", outer.path() / "game/Late.TXT");
  EXPECT_EQ(content("late.txt"), "1");
  fs::remove(outer.path() / "game/Late.TXT");
  EXPECT_EQ(content("late.txt"), "(none)");
  ASSERT_TRUE(put("LaTe.txt", "2"));
  EXPECT_TRUE(outer.exists("game/LaTe.txt"));  // a new name keeps its case
  ASSERT_TRUE(put("late.TXT", "3"));
  EXPECT_EQ(outer.read("game/LaTe.txt"), "3");  // an existing one keeps the disk's
  EXPECT_FALSE(outer.exists("game/late.TXT"));
  EXPECT_TRUE(files.remove("LATE.TXT"));
  EXPECT_FALSE(files.fileExists("LaTe.txt"));
}

TEST_F(PosixFileSystemTest, NoticesThatADirectoryWasReplaced) {
  outer.write("game/a/b/file", "old");
  outer.write("secret/b/file", "secret");
  EXPECT_EQ(content("a\\b\\file"), "old");
  fs::rename(outer.path() / "game/a", outer.path() / "game/was");
  EXPECT_EQ(content("a\\b\\file"), "(none)");
  fs::create_directory_symlink(outer.path() / "secret", outer.path() / "game/a");
  EXPECT_EQ(content("a\\b\\file"), "(none)");
  fs::remove(outer.path() / "game/a");
  outer.write("game/A/B/file", "new");
  EXPECT_EQ(content("a\\b\\file"), "new");
}

TEST_F(PosixFileSystemTest, KeepsNamesOfCodePage1250) {
  const std::string engine = "\xA3\xF3\x9C.txt";  // Lodz's letters
  const std::string disk = "\xC5\x81\xC3\xB3\xC5\x9B.txt";
  ASSERT_TRUE(put(engine, "x"));
  EXPECT_TRUE(outer.exists("game/" + disk));
  EXPECT_EQ(content("\xB3\xD3\x8C.TXT"), "x");
  outer.write("game/\xE2\x98\x83.txt", "snow");  // no such character in the code page
  outer.write("game/\xFF.txt", "no text at all");
  outer.write("game/new\nline", "control");
  const auto names = files.list(".");
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(names[0].name, engine);
}

TEST_F(PosixFileSystemTest, LivesBelowAFolderThatTheCodePageCannotName) {
  outer.write("\xE2\x98\x83/file.txt", "snow");
  PosixFileSystem below((outer.path() / "\xE2\x98\x83").string());
  const std::string name = below.currentDirectory() + "FILE.txt";
  EXPECT_TRUE(below.fileExists(name)) << name;
  EXPECT_TRUE(below.fileExists("file.txt"));
  EXPECT_EQ(below.toMachinePath(name), (outer.path() / "\xE2\x98\x83/file.txt").string());
}

TEST_F(PosixFileSystemTest, RefusesWhatLiesOutsideTheFence) {
  outer.write("secret.txt", "secret");
  outer.write("gamer/secret.txt", "a root's name is no prefix");
  outer.makeFolder("game/inner");
  fs::create_symlink(outer.path() / "secret.txt", outer.path() / "game/link.txt");
  fs::create_directory_symlink(outer.path(), outer.path() / "game/up");
  fs::create_symlink(outer.path() / "created.txt", outer.path() / "game/dangling");
  for (const std::string& name : {std::string("..\\secret.txt"), std::string("inner\\..\\..\\secret.txt"),
                                  inOuter("secret.txt"), inOuter("gamer/secret.txt"), std::string("link.txt"),
                                  std::string("up\\secret.txt"), std::string("dangling")}) {
    EXPECT_FALSE(files.fileExists(name)) << name;
    EXPECT_EQ(files.open(name, OpenMode::read), nullptr) << name;
    EXPECT_EQ(files.open(name, OpenMode::update), nullptr) << name;
    EXPECT_EQ(files.open(name, OpenMode::write), nullptr) << name;
    EXPECT_FALSE(put(name, "hacked")) << name;
    EXPECT_FALSE(files.copy(name, "copy.txt")) << name;
    EXPECT_FALSE(files.stamp(name)) << name;
  }
  EXPECT_EQ(files.toMachinePath(inOuter("secret.txt")), "");
  EXPECT_FALSE(put("..\\new.txt", "x"));
  EXPECT_FALSE(put("up\\new.txt", "x"));
  EXPECT_FALSE(files.makeDirectory("up\\folder"));
  EXPECT_FALSE(files.remove("up\\secret.txt"));
  EXPECT_FALSE(files.changeDirectory("up"));
  EXPECT_FALSE(files.directoryExists("up"));
  EXPECT_TRUE(files.list("up").empty());
  EXPECT_EQ(outer.read("secret.txt"), "secret");
  EXPECT_FALSE(outer.exists("created.txt"));
  EXPECT_FALSE(outer.exists("new.txt"));
  ASSERT_EQ(files.list(".").size(), 1u);  // links that lead outside are not listed
  EXPECT_TRUE(files.remove("link.txt"));
  EXPECT_EQ(outer.read("secret.txt"), "secret");

  files.allowRoot(inOuter("gamer"));
  EXPECT_TRUE(files.fileExists(inOuter("gamer/secret.txt")));
  EXPECT_FALSE(files.fileExists(inOuter("secret.txt")));
}

TEST_F(PosixFileSystemTest, OneFileOutsideMayBeReadAndNoMore) {
  outer.write("secret.txt", "secret");
  outer.write("other.txt", "other");
  files.allowReading(inOuter("secret.txt"));
  files.allowReading(inOuter("missing.txt"));
  EXPECT_EQ(content(inOuter("SECRET.txt")), "secret");
  EXPECT_TRUE(files.stamp(inOuter("secret.txt")));
  EXPECT_FALSE(put(inOuter("secret.txt"), "x"));
  EXPECT_FALSE(files.remove(inOuter("secret.txt")));
  EXPECT_EQ(content(inOuter("other.txt")), "(none)");
}

TEST_F(PosixFileSystemTest, FollowsLinksInsideTheFence) {
  outer.write("game/real/file", "1");
  fs::create_directory_symlink(outer.path() / "game/real", outer.path() / "game/Alias");
  EXPECT_EQ(content("alias\\FILE"), "1");
  EXPECT_TRUE(put("alias\\file", "2"));
  EXPECT_EQ(outer.read("game/real/file"), "2");
  fs::create_symlink("real/file", outer.path() / "game/name");
  EXPECT_EQ(content("name"), "2");
  EXPECT_FALSE(put("name", "3"));  // a file is not written through a link, wherever it leads
  EXPECT_EQ(files.open("name", OpenMode::write), nullptr);
  EXPECT_EQ(files.open("name", OpenMode::update), nullptr);
  EXPECT_FALSE(files.copy("real\\file", "name"));
  EXPECT_EQ(outer.read("game/real/file"), "2");
}

TEST_F(PosixFileSystemTest, RefusesBadNames) {
  outer.write("game/file", "x");
  EXPECT_EQ(content(""), "(none)");
  EXPECT_EQ(content(std::string_view("file\0", 5)), "(none)");
  for (const char* name : {"fi\nle", "file\x01", "\x7F"}) EXPECT_FALSE(put(name, "x")) << name;
  EXPECT_FALSE(put(std::string(256, 'n'), "x"));
  EXPECT_TRUE(put(std::string(255, 'n'), "x"));
  std::string deep;
  while (deep.size() < 4096) deep += ".\\";
  EXPECT_EQ(content(deep.substr(4) + "file"), "x");
  EXPECT_EQ(content(deep + "file"), "(none)");
}

TEST_F(PosixFileSystemTest, NeverWaitsForAPipe) {
  ASSERT_EQ(::mkfifo((outer.path() / "game/pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.open("pipe", OpenMode::read), nullptr);
  EXPECT_EQ(files.open("pipe", OpenMode::update), nullptr);
  EXPECT_EQ(files.open("pipe", OpenMode::write), nullptr);
  EXPECT_FALSE(files.fileExists("pipe"));
}

TEST_F(PosixFileSystemTest, WritesTakeTheirNameAtCommit) {
  outer.write("game/save", "old content");
  ::chmod((outer.path() / "game/save").c_str(), 0640);
  auto handle = files.open("SAVE", OpenMode::write);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(handle->write(bytes("new")), 3u);
  EXPECT_EQ(content("save"), "old content");
  EXPECT_EQ(handle->length(), 3);
  ASSERT_TRUE(handle->seek(1));
  std::byte one{};
  EXPECT_EQ(handle->read(std::span(&one, 1)), 1u);  // what was written can be read back
  EXPECT_EQ(one, std::byte{'e'});
  EXPECT_EQ(files.list(".").size(), 1u);  // the temporary file is not the game's business
  EXPECT_TRUE(handle->commit());
  EXPECT_EQ(handle->write(bytes("late")), 0u);
  handle.reset();
  EXPECT_EQ(content("save"), "new");
  struct stat status {};
  ASSERT_EQ(::stat((outer.path() / "game/save").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0640u);
  EXPECT_EQ(std::distance(fs::directory_iterator(outer.path() / "game"), fs::directory_iterator()), 1);
}

TEST_F(PosixFileSystemTest, UpdatesInPlace) {
  outer.write("game/data", "0123456789");
  auto handle = files.open("data", OpenMode::update);
  ASSERT_NE(handle, nullptr);
  std::byte two[2];
  ASSERT_TRUE(handle->seek(2));
  EXPECT_EQ(handle->read(two), 2u);
  EXPECT_EQ(handle->write(bytes("ab")), 2u);
  EXPECT_EQ(handle->tell(), 6);
  EXPECT_FALSE(handle->seek(-1));
  EXPECT_TRUE(handle->commit());
  EXPECT_EQ(outer.read("game/data"), "0123ab6789");
  EXPECT_NE(files.open("fresh", OpenMode::update), nullptr);
  EXPECT_TRUE(files.fileExists("FRESH"));
}

TEST_F(PosixFileSystemTest, ListsInUpperCaseOrder) {
  outer.write("game/b.txt", "22");
  outer.write("game/_", "");
  outer.write("game/A.txt", "1");
  outer.makeFolder("game/C");
  const auto entries = files.list(files.currentDirectory());
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_EQ(entries[0].name, "A.txt");
  EXPECT_EQ(entries[1].name, "b.txt");
  EXPECT_EQ(entries[1].size, 2);
  EXPECT_EQ(entries[2].name, "C");
  EXPECT_TRUE(entries[2].isDirectory);
  EXPECT_EQ(entries[3].name, "_");
  EXPECT_TRUE(files.list("b.txt").empty());
}

TEST_F(PosixFileSystemTest, CopiesRemovesAndMakes) {
  outer.write("game/from", std::string(200000, 'z'));
  outer.write("game/to", "old");
  EXPECT_TRUE(files.copy("FROM", "TO"));
  EXPECT_EQ(outer.read("game/to"), std::string(200000, 'z'));
  EXPECT_FALSE(files.copy("to", "To"));
  EXPECT_FALSE(files.copy("missing", "to"));
  EXPECT_FALSE(files.copy("from", "nowhere\\to"));
  EXPECT_TRUE(files.makeDirectory("New"));
  EXPECT_FALSE(files.makeDirectory("NEW"));
  EXPECT_FALSE(files.makeDirectory("a\\b"));
  EXPECT_TRUE(files.directoryExists("new"));
  EXPECT_FALSE(files.remove("new"));
  EXPECT_TRUE(files.remove("from"));
  EXPECT_FALSE(files.remove("from"));
  EXPECT_FALSE(files.readWhole("to", 199999));
  EXPECT_TRUE(files.readWhole("to", 200000));
}

TEST_F(PosixFileSystemTest, TellsFileStatesApart) {
  ASSERT_TRUE(put("ini", "1"));
  const auto first = files.stamp("INI");
  ASSERT_TRUE(first);
  EXPECT_EQ(first->size, 1);
  EXPECT_EQ(files.stamp("ini"), first);
  ASSERT_TRUE(put("ini", "2"));
  EXPECT_NE(files.stamp("ini"), first);
  EXPECT_FALSE(files.stamp("."));
}

TEST_F(PosixFileSystemTest, TranslatesPathsOfTheMachine) {
  EXPECT_EQ(files.toEnginePath("/"), "C:\\");
  EXPECT_EQ(files.toEnginePath("/a/./b/../c d"), "C:\\a\\c d");
  EXPECT_EQ(files.toEnginePath("sub"), files.currentDirectory() + "sub");
  EXPECT_EQ(files.toMachinePath("New.txt"), (outer.path() / "game/New.txt").string());
  EXPECT_EQ(files.toMachinePath("nowhere\\New.txt"), "");
}

}  // namespace
}  // namespace footlight::platform
