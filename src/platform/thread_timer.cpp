#include "platform/thread_timer.h"

#include <algorithm>
#include <utility>

namespace footlight::platform {

ThreadTimer::ThreadTimer(std::chrono::milliseconds period, std::function<void()> work)
    : thread_([this, period, work = std::move(work)] { run(period, work); }) {}

ThreadTimer::~ThreadTimer() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void ThreadTimer::run(std::chrono::milliseconds period, const std::function<void()>& work) {
  auto due = std::chrono::steady_clock::now();
  std::unique_lock lock(mutex_);
  while (!ends_) {
    due = std::max(due + period, std::chrono::steady_clock::now());
    if (wake_.wait_until(lock, due, [this] { return ends_; })) return;
    lock.unlock();
    work();
    lock.lock();
  }
}

}  // namespace footlight::platform
