#include "input/poller_thread.h"

#include <chrono>

namespace footlight {

namespace {
constexpr std::chrono::milliseconds kPeriod(16);
}

CPollerThread::CPollerThread(std::recursive_mutex* lock, std::function<void()> tick)
    : lock_(lock), tick_(std::move(tick)), thread_([this] { run(); }) {}

CPollerThread::~CPollerThread() {
  {
    const std::lock_guard guard(mutex_);
    ending_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void CPollerThread::pause(bool paused) {
  const std::lock_guard guard(mutex_);
  paused_ = paused;
}

void CPollerThread::run() {
  for (;;) {
    {
      std::unique_lock guard(mutex_);
      wake_.wait_for(guard, kPeriod, [this] { return ending_; });
      if (ending_) return;
      if (paused_) continue;
    }
    const std::lock_guard section(*lock_);
    tick_();
  }
}

}  // namespace footlight
