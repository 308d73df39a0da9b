#include "platform/sdl/sdl_sound.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace footlight::platform {

namespace {

constexpr Uint16 kFramesAtOnce = 1024;  // 23 milliseconds

class ThreadTimer final : public PeriodicTimer {
 public:
  ThreadTimer(std::chrono::milliseconds period, std::function<void()> work)
      : thread_([this, period, work = std::move(work)] { run(period, work); }) {}
  ~ThreadTimer() override {
    {
      const std::lock_guard lock(mutex_);
      ends_ = true;
    }
    wake_.notify_one();
    thread_.join();
  }
  ThreadTimer(const ThreadTimer&) = delete;
  ThreadTimer& operator=(const ThreadTimer&) = delete;

 private:
  void run(std::chrono::milliseconds period, const std::function<void()>& work) {
    auto due = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    while (!ends_) {
      due = std::max(due + period, std::chrono::steady_clock::now());  // what was missed is not made up
      if (wake_.wait_until(lock, due, [this] { return ends_; })) return;
      lock.unlock();
      work();
      lock.lock();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  bool ends_ = false;
  std::thread thread_;
};

}  // namespace

SdlSound::SdlSound() {
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
  SDL_AudioSpec wanted{};
  wanted.freq = SoundMixer::kRate;
  wanted.format = AUDIO_S16SYS;
  wanted.channels = SoundMixer::kChannels;
  wanted.samples = kFramesAtOnce;
  wanted.userdata = &mixer_;
  wanted.callback = [](void* mixer, Uint8* stream, int length) {
    static_cast<SoundMixer*>(mixer)->mix(
        {reinterpret_cast<std::int16_t*>(stream), static_cast<std::size_t>(length) / sizeof(std::int16_t)});
  };
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  if (device_ != 0) SDL_PauseAudioDevice(device_, 0);
}

SdlSound::~SdlSound() {
  if (device_ != 0) SDL_CloseAudioDevice(device_);
}

std::unique_ptr<PeriodicTimer> SdlSound::startTimer(std::uint32_t milliseconds, std::function<void()> work) {
  return std::make_unique<ThreadTimer>(std::chrono::milliseconds(milliseconds), std::move(work));
}

}  // namespace footlight::platform
