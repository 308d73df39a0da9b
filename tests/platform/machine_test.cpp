#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "platform/headless/headless_platform.h"
#include "platform/large_stack.h"
#include "platform/posix/file_system.h"

namespace footlight::platform {
namespace {

TEST(VirtualClock, MovesOnlyWhenToldAndWraps) {
  VirtualClock clock(0xFFFFFFF0U, 1000, false);
  EXPECT_EQ(clock.ticks(), 0xFFFFFFF0U);
  clock.advance(10);
  clock.sleep(16);
  EXPECT_EQ(clock.ticks(), 10U);
  EXPECT_EQ(clock.counter(), 0x10000000AU) << "the counter goes on where the ticks wrap";
  EXPECT_EQ(clock.unixSeconds(), 1000);
  clock.advance(974);
  EXPECT_EQ(clock.unixSeconds(), 1001);
}

TEST(HeadlessPlatform, HandsWindowEventsOverOnce) {
  HeadlessPlatform platform;
  platform.put(WindowEvent{WindowEvent::Kind::activate, 0});
  EXPECT_EQ(platform.pump().size(), 1U);
  EXPECT_TRUE(platform.pump().empty());
  EXPECT_FALSE(platform.input().wantsPollingThread());
}

TEST(LargeStack, CarriesDeepRecursion) {
  // 32 MiB of frames, four times an ordinary stack.
  struct Deep {
    static int sum(int depth) {
      volatile char frame[1024] = {};
      frame[0] = 1;
      return depth == 0 ? 0 : frame[0] + sum(depth - 1);
    }
  };
  int result = 0;
  std::thread::id thread;
  ASSERT_TRUE(runOnLargeStack([&] {
    result = Deep::sum(32 * 1024);
    thread = std::this_thread::get_id();
  }));
  EXPECT_EQ(result, 32 * 1024);
  EXPECT_NE(thread, std::this_thread::get_id());
}

class PosixModulesTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() / ("footlight_modules_" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_ / "sub");
    std::filesystem::copy_file(FOOTLIGHT_TEST_MODULE, folder_ / "plain.so");
    std::filesystem::copy_file(FOOTLIGHT_TEST_MODULE, folder_ / "sub" / "plain.so");
    std::filesystem::create_symlink(FOOTLIGHT_TEST_MODULE, folder_ / "link.so");
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::filesystem::path folder_;
};

TEST_F(PosixModulesTest, LoadsPlainNamesFromItsFolderOnly) {
  PosixModules modules(folder_);
  for (const char* name : {"plain.so", "plain.dll", "plain.DLL"}) {
    const auto module = modules.load(name);
    ASSERT_NE(module, nullptr) << name;
    auto* answer = reinterpret_cast<int (*)()>(module->find("footlightTestAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(module->find("absent"), nullptr);
  }
  for (const char* name : {"", ".", "..", "absent.so", "sub/plain.so", "sub\\plain.so", "../plain.so",
                           "C:plain.so", "link.so", "sub", ".dll", "libc.so.6"}) {
    EXPECT_EQ(modules.load(name), nullptr) << name;
  }
  EXPECT_EQ(modules.load(std::string("plain.so\0.so", 12)), nullptr);
  EXPECT_EQ(PosixModules().load("libc.so.6"), nullptr);
  EXPECT_EQ(PosixModules(folder_ / "absent").load("libc.so.6"), nullptr);
}

// A folder is judged by where it really lies, at each load.
TEST_F(PosixModulesTest, LoadsNothingFromWhereGamesMayWrite) {
  const PosixFileSystem files((folder_ / "sub").string());
  std::filesystem::create_directory_symlink(folder_ / "sub", folder_ / "way");
  std::filesystem::create_directory_symlink(folder_, folder_ / "sub" / "out");
  EXPECT_NE(PosixModules(folder_, &files).load("plain.so"), nullptr);
  EXPECT_NE(PosixModules(folder_ / "sub" / "out", &files).load("plain.so"), nullptr);
  PosixModules inside(folder_ / "way", &files);
  EXPECT_EQ(inside.load("plain.so"), nullptr);
  EXPECT_EQ(inside.refusal(), "lies where the game may write");

  PosixFileSystem elsewhere(std::filesystem::temp_directory_path().string());
  EXPECT_EQ(PosixModules(folder_, &elsewhere).load("plain.so"), nullptr);
}

}  // namespace
}  // namespace footlight::platform
