#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pack/run.h"
#include "pack/words.h"
#include "support/big_file_bytes.h"
#include "support/test_platform.h"

namespace footlight::pack {
namespace {

using test::entryBytes;
using test::headBytes;
using test::recordBytes;
using testing::ElementsAre;
using testing::HasSubstr;

class PackTest : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return (folder.path() / name).string(); }
  Outcome list(const std::string& name) const { return run({Command::list, path(name)}); }
  Outcome extract(const std::string& name) const {
    return run({Command::extract, path(name), path("to/out")});
  }

  test::TemporaryFolder folder;
};

TEST_F(PackTest, WhatIsBuiltComesOutAgain) {
  folder.write("game/a.txt", "aaa");
  folder.write("game/Sub/za\xC5\xBC.txt", "bb");
  folder.makeFolder("game/Empty");
  const Outcome built = run({Command::build, path("game.big"), path("game"), "NAME"});
  EXPECT_EQ(built.status(), kDone) << built.failure;
  EXPECT_THAT(list("game.big").lines, ElementsAre("         2  Sub/za\xC5\xBC.txt", "         3  a.txt"));
  EXPECT_EQ(list("game.big").summary, "2 files in 2 folders, 5 bytes; its name is \"NAME\"");
  EXPECT_EQ(extract("game.big").status(), kDone);
  EXPECT_EQ(folder.read("to/out/a.txt"), "aaa");
  EXPECT_EQ(folder.read("to/out/Sub/za\xC5\xBC.txt"), "bb");
  EXPECT_TRUE(folder.exists("to/out/Empty"));
}

TEST_F(PackTest, NothingIsWrittenOutsideTheFolder) {
  folder.makeFolder("to/out");
  folder.makeFolder("away");
  std::filesystem::create_directory_symlink(path("away"), path("to/out/link"));
  std::filesystem::create_symlink(path("away/x"), path("to/out/name"));
  const char* const names[] = {"..\\x", "..", ".", "/x", "\\x", "C:\\x", "C:x", "a/../../x", "", "x\n"};
  std::string table = headBytes("", 0, 0, 0) + entryBytes("", std::ssize(names) + 1, 2);
  table +=
      entryBytes("..", 1, 0) + recordBytes("x", 0, 1) + entryBytes("link", 1, 0) + recordBytes("x", 0, 1);
  for (const char* name : names) table += recordBytes(name, 0, 1);
  table += recordBytes("name", 0, 1);
  folder.write("bad.big", table);
  const Outcome outcome = extract("bad.big");
  EXPECT_EQ(outcome.status(), kDoneInPart);
  EXPECT_EQ(outcome.remarks.size(), std::size(names) + 3);
  EXPECT_EQ(outcome.summary, "0 files unpacked");
  EXPECT_THAT(outcome.remarks, testing::Contains(HasSubstr("x?: left out: no file can have this name")));
  EXPECT_FALSE(folder.exists("to/x") || folder.exists("away/x") || folder.exists("x"));
}

TEST_F(PackTest, BadEntriesAreNamedAndTheRestComesOut) {
  folder.write("odd.big", headBytes("", 0, 0, 0) + entryBytes("", 5, 0) + recordBytes("good", 0, 3) +
                              recordBytes("GOOD", 0, 4) + recordBytes("far", 1000, 4) +
                              recordBytes("most", 0, 140) + recordBytes("more", 0, 140));
  const Outcome outcome = extract("odd.big");
  EXPECT_THAT(outcome.remarks, ElementsAre(HasSubstr("GOOD: left out: another file"),
                                           HasSubstr("far: left out: it reaches beyond the end"),
                                           HasSubstr("more: left out: the files tell of more bytes")));
  EXPECT_EQ(folder.read("to/out/good").size(), 3U);
  EXPECT_EQ(folder.read("to/out/most").size(), 140U);
}

TEST_F(PackTest, SaysWhatIsWrong) {
  folder.write("text.txt", "this is a text and no big file");
  EXPECT_EQ(list("text.txt").failure, path("text.txt") + ": this is no big file: a name does not fit");
  EXPECT_EQ(extract("none.big").failure, path("none.big") + ": there is no such file");
  EXPECT_FALSE(folder.exists("to/out"));
  EXPECT_EQ(run({Command::extract, path("text.txt"), path("text.txt")}).failure,
            path("text.txt") + ": the folder cannot be made");
  EXPECT_EQ(run({Command::build, path("x.big"), path("none")}).status(), kFailed);
  EXPECT_THAT(run({Command::build, path("none/x.big"), path("")}).failure, HasSubstr("it cannot be written"));
  std::filesystem::create_symlink("outside", path("link.big"));
  EXPECT_THAT(run({Command::build, path("link.big"), path("")}).failure, HasSubstr("it cannot be written"));
  EXPECT_FALSE(folder.exists("outside"));
}

TEST_F(PackTest, TellsWhatAnArchiveDoesNotTake) {
  folder.write("game/\xE6\xBC\xA2/a", "");
  folder.write("game/b", "");
  std::filesystem::create_directory_symlink(path("game"), path("game/round"));
  const Outcome outcome = run({Command::build, path("x.big"), path("game")});
  EXPECT_EQ(outcome.status(), kDoneInPart);
  EXPECT_THAT(outcome.remarks, testing::UnorderedElementsAre(HasSubstr("code page 1250 lacks its name"),
                                                             HasSubstr("it is a link")));
  EXPECT_EQ(list("x.big").lines.size(), 1U);
}

TEST_F(PackTest, CommandLines) {
  using Row = std::vector<const char*>;
  for (const Row& row : {Row{"p"}, Row{"p", "list"}, Row{"p", "extract", "x"}, Row{"p", "list", "x", "y"}}) {
    const Parsed parsed = parseWords(static_cast<int>(row.size()), row.data());
    EXPECT_FALSE(parsed.words);
    EXPECT_EQ(parsed.exitStatus, kFailed);
  }
  const Row help{"p", "build", "--help"};
  EXPECT_THAT(parseWords(3, help.data()).message, HasSubstr("--name NAME"));
  const Row build{"p", "build", "dir", "file", "--name", "n"};
  const Parsed parsed = parseWords(6, build.data());
  ASSERT_TRUE(parsed.words) << parsed.message;
  EXPECT_EQ(parsed.words->command, Command::build);
  EXPECT_EQ(parsed.words->folder + parsed.words->bigFile + *parsed.words->name, "dirfilen");
}

}  // namespace
}  // namespace footlight::pack
