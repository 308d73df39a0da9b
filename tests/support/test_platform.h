#pragma once

// The least machine that the lower layers can run on: a clock that tests set by hand and the real files below
// a folder of its own. Whatever else a test asks for ends it.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "platform/posix/file_system.h"

namespace footlight::test {

// A new folder that goes with the object.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "footlight-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = std::filesystem::canonical(pattern);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Writes a file, making the folders on its way; names have the machine's slashes.
  void write(const std::string& name, std::string_view content) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << content;
  }
  std::string read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  bool exists(const std::string& name) const { return std::filesystem::exists(path_ / name); }
  void makeFolder(const std::string& name) const { std::filesystem::create_directories(path_ / name); }

 private:
  std::filesystem::path path_;
};

class FakeClock : public platform::Clock {
 public:
  std::uint32_t ticks() const override { return now; }
  std::uint64_t counter() const override { return now; }
  std::uint64_t counterFrequency() const override { return 1000; }
  std::int64_t unixSeconds() const override { return unixTime; }
  void sleep(std::uint32_t milliseconds) override { now += milliseconds; }

  std::uint32_t now = 10000;
  std::int64_t unixTime = 1000000000;
};

// Installs itself for as long as it lives.
class TestPlatform : public platform::Platform {
 public:
  TestPlatform() : files_(folder.path().string()) { platform::use(this); }
  ~TestPlatform() override { platform::use(nullptr); }
  TestPlatform(const TestPlatform&) = delete;
  TestPlatform& operator=(const TestPlatform&) = delete;

  FakeClock& clock() override { return fakeClock; }
  platform::PosixFileSystem& files() override { return files_; }
  platform::Display& display() override { missing("display"); }
  platform::InputDevices& input() override { missing("input"); }
  platform::Shell& shell() override { missing("shell"); }
  platform::Modules& modules() override { missing("modules"); }
  std::string locale() const override { return systemLocale; }

  // The engine's name of something in the folder; `name` has backslashes.
  std::string enginePath(const std::string& name = "") const {
    const std::string root = files_.toEnginePath(folder.path().string());
    return name.empty() ? root : root + "\\" + name;
  }

  TemporaryFolder folder;
  FakeClock fakeClock;
  std::string systemLocale = "0409";

 private:
  [[noreturn]] static void missing(const char* what) {
    std::fprintf(stderr, "The test platform has no %s.\n", what);
    std::abort();
  }

  platform::PosixFileSystem files_;
};

}  // namespace footlight::test
