#pragma once

// A timer on a thread of its own. Calls that come late are not made up for.

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/sound_device.h"

namespace footlight::platform {

class ThreadTimer final : public PeriodicTimer {
 public:
  ThreadTimer(std::chrono::milliseconds period, std::function<void()> work);
  ~ThreadTimer() override;
  ThreadTimer(const ThreadTimer&) = delete;
  ThreadTimer& operator=(const ThreadTimer&) = delete;

 private:
  void run(std::chrono::milliseconds period, const std::function<void()>& work);

  std::mutex mutex_;
  std::condition_variable wake_;
  bool ends_ = false;
  std::thread thread_;  // last: it uses the others
};

}  // namespace footlight::platform
