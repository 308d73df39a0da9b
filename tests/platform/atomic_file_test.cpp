#include "platform/posix/atomic_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/temporaries.h"
#include "support/test_platform.h"

namespace footlight::platform {
namespace {

namespace fs = std::filesystem;

std::span<const std::byte> bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

class AtomicFileTest : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return (folder.path() / name).string(); }
  std::string write(const std::string& name) const { return writeAtomically(path(name), bytes("new")); }
  long files() const { return std::distance(fs::directory_iterator(folder.path()), {}); }

  test::TemporaryFolder folder;
};

TEST_F(AtomicFileTest, WritesPlainFilesAndLeavesAllElseAlone) {
  folder.write("old", "a longer content");
  folder.write("outside", "kept");
  folder.makeFolder("folder");
  fs::create_symlink("outside", path("link"));
  fs::create_symlink("nowhere", path("dangling"));
  fs::create_symlink("/dev/full", path("device"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  const long count = files();
  struct Row {
    const char* name;
    const char* failure;
  };
  const Row rows[] = {{"link", "is a link, which is not written through"},
                      {"dangling", "is a link, which is not written through"},
                      {"device", "is a link, which is not written through"},
                      {"pipe", "is no plain file"},
                      {"folder", "is a folder"},
                      {"folder/", "is no name of a file"},
                      {"folder/.", "is no name of a file"},
                      {"none/file", "there is no such folder"},
                      {"old/file", "there is no such folder"},
                      {"old", ""}};
  for (const Row& row : rows) EXPECT_EQ(write(row.name), row.failure) << row.name;
  EXPECT_EQ(writeAtomically("/dev/full", bytes("new")), "is no plain file");
  EXPECT_EQ(writeAtomically("/dev/null", bytes("new")), "is no plain file");
  EXPECT_EQ(files(), count);
  EXPECT_EQ(folder.read("outside"), "kept");
  EXPECT_EQ(folder.read("old"), "new");
  EXPECT_FALSE(folder.exists("nowhere"));
  EXPECT_TRUE(fs::is_symlink(path("link")) && fs::is_fifo(path("pipe")));
}

TEST_F(AtomicFileTest, LooksAgainBeforeItTakesTheName) {
  folder.write("outside", "kept");
  AtomicFile file(path("target"));
  ASSERT_TRUE(file.write(bytes("new")));
  fs::create_symlink("outside", path("target"));
  EXPECT_FALSE(file.commit());
  EXPECT_EQ(folder.read("outside"), "kept");
}

TEST_F(AtomicFileTest, TakesAnotherTemporaryNameWhereOneIsPlanted) {
  folder.write("outside", "kept");
  const std::string last = newTemporaryName();  // ".footlight-PID-N.tmp"
  const std::string stem = last.substr(0, last.rfind('-') + 1);
  const int number = std::stoi(last.substr(stem.size()));
  for (int i = 1; i <= 5; ++i)
    fs::create_symlink("outside", path(stem + std::to_string(number + i) + ".tmp"));
  EXPECT_EQ(write("target"), "");
  EXPECT_EQ(folder.read("target"), "new");
  EXPECT_EQ(folder.read("outside"), "kept");
  EXPECT_EQ(files(), 7);
}

TEST_F(AtomicFileTest, NothingStaysOfWhatIsGivenUpOrDoesNotFit) {
  folder.write("old", "old");
  { AtomicFile(path("old")).write(bytes("new")); }
  EXPECT_EQ(folder.read("old"), "old");
  // At each length of the disk: all of it or the old file.
  ::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  for (rlim_t room = 0; room <= 8; ++room) {
    const rlimit limit{room, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const std::string failure = writeAtomically(path("old"), bytes("12345678"));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(failure.empty(), room == 8) << failure;
    EXPECT_EQ(folder.read("old"), room == 8 ? "12345678" : "old");
    EXPECT_EQ(files(), 1);
  }
}

TEST_F(AtomicFileTest, WhatIsPublishedIsThereAtOnce) {
  folder.write("log", "an older and longer one");
  AtomicFile file(path("log"));
  ASSERT_TRUE(file.publish());
  EXPECT_EQ(folder.read("log"), "");
  file.write(bytes("first"));
  ASSERT_TRUE(file.flush());
  EXPECT_EQ(folder.read("log"), "first");
  EXPECT_EQ(files(), 1);
}

// The number of a process that has ended.
pid_t deadProcess() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ::waitpid(child, nullptr, 0);
  return child;
}

std::string temporaryOf(pid_t process) { return ".footlight-" + std::to_string(process) + "-1.tmp"; }

TEST_F(AtomicFileTest, ClearsWhatTheDeadLeftAndNothingElse) {
  const std::string dead = std::to_string(deadProcess());
  const std::string kept[] = {temporaryOf(::getppid()),       ".footlight-" + dead + "-1.tmp.bak",
                              ".footlight-" + dead + "-.tmp", ".footlight-" + dead + "-1x.tmp",
                              ".footlight--5-1.tmp",          ".footlight-.tmp",
                              "footlight-" + dead + "-1.tmp", temporaryOf(1)};
  for (const std::string& name : kept) folder.write(name, "kept");
  folder.makeFolder(".footlight-" + dead + "-2.tmp");
  fs::create_symlink("a", path(".footlight-" + dead + "-3.tmp"));
  folder.write("away/.footlight-" + dead + "-1.tmp", "gone");
  folder.write("sub/a/.footlight-" + dead + "-99.tmp", "gone");
  folder.write(temporaryOf(::getpid()), "gone: of an earlier process with this number");
  folder.write(".footlight-" + dead + "-4.tmp", "kept: somebody holds it");
  const int held = ::open(path(".footlight-" + dead + "-4.tmp").c_str(), O_RDONLY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  fs::create_directory_symlink(folder.path() / "away", folder.path() / "sub" / "link");

  clearTemporariesBelow(path("sub"));
  EXPECT_TRUE(folder.exists("away/.footlight-" + dead + "-1.tmp"));
  EXPECT_TRUE(fs::is_empty(folder.path() / "sub" / "a"));
  clearTemporariesBelow(folder.path().string());
  EXPECT_TRUE(fs::is_empty(folder.path() / "away"));
  EXPECT_FALSE(folder.exists(temporaryOf(::getpid())));
  EXPECT_TRUE(folder.exists(".footlight-" + dead + "-4.tmp"));
  EXPECT_EQ(files(), std::ssize(kept) + 5);
  ::close(held);

  // The first file of a folder clears it as well.
  const test::TemporaryFolder other;
  other.write(".footlight-" + dead + "-1.tmp", "gone");
  EXPECT_EQ(writeAtomically((other.path() / "new").string(), bytes("x")), "");
  EXPECT_EQ(std::distance(fs::directory_iterator(other.path()), {}), 1);
}

}  // namespace
}  // namespace footlight::platform
