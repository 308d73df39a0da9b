#include "input/poller_thread.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>

namespace footlight {
namespace {

void waitFor(const std::atomic<int>& ticks, int wanted) {
  while (ticks < wanted) std::this_thread::yield();
}

TEST(PollerThread, TicksUnderTheLockWhileItIsNotPaused) {
  std::recursive_mutex lock;
  std::atomic<int> ticks = 0;
  int guarded = 0;  // touched under the lock alone
  CPollerThread thread(&lock, [&] {
    ++guarded;
    ++ticks;
  });
  {
    const std::lock_guard section(lock);
    EXPECT_EQ(guarded, 0) << "it starts paused";
  }
  thread.pause(false);
  waitFor(ticks, 3);
  const std::lock_guard section(lock);
  const int before = ++guarded;
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(guarded, before) << "the lock keeps it out";
}

TEST(PollerThread, StopsAtAPauseAndGoesOn) {
  std::recursive_mutex lock;
  std::atomic<int> ticks = 0;
  CPollerThread thread(&lock, [&] { ++ticks; });
  thread.pause(false);
  waitFor(ticks, 1);
  thread.pause(true);
  { const std::lock_guard section(lock); }
  const int before = ticks + 1;  // one may have been on its way
  std::this_thread::sleep_for(std::chrono::milliseconds(80));
  EXPECT_LE(ticks, before);
  thread.pause(false);
  waitFor(ticks, before + 2);
}

}  // namespace
}  // namespace footlight
