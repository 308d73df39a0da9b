#pragma once

#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

#include "platform/headless/headless_platform.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

// Ends the run where something does not hold.
inline void demand(bool holds) {
  if (!holds) std::abort();
}

inline std::string_view textOf(std::span<const std::uint8_t> data) {
  return {reinterpret_cast<const char*>(data.data()), data.size()};
}

// A machine with a disk in memory, installed as long as it lives. The disk's first files must outlive it.
class Machine {
 public:
  explicit Machine(const test::Disk& disk) : platform_({}, std::make_unique<test::MemoryFiles>(disk)) {
    platform::use(&platform_);
  }
  ~Machine() { platform::use(nullptr); }
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  platform::HeadlessPlatform& operator*() { return platform_; }
  platform::HeadlessPlatform* operator->() { return &platform_; }

 private:
  platform::HeadlessPlatform platform_;
};

}  // namespace footlight::fuzz
