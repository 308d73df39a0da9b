#pragma once

// The thread that asks the pollers, for platforms that have one: every 16 milliseconds, under the window's
// lock, while it is not paused. It is never suspended or killed: a pause is a flag, and the destructor asks
// it to end and waits.

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace footlight {

class CPollerThread {
 public:
  // Starts paused. Both must outlive the thread.
  CPollerThread(std::recursive_mutex* lock, std::function<void()> tick);
  ~CPollerThread();
  CPollerThread(const CPollerThread&) = delete;
  CPollerThread& operator=(const CPollerThread&) = delete;

  void pause(bool paused);

 private:
  void run();

  std::recursive_mutex* lock_;
  std::function<void()> tick_;
  std::mutex mutex_;  // for the two flags
  std::condition_variable wake_;
  bool paused_ = true;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace footlight
