#include "platform/sdl/sdl_sound.h"

#include <chrono>
#include <utility>

#include "platform/thread_timer.h"

namespace footlight::platform {

namespace {

constexpr Uint16 kFramesAtOnce = 1024;  // 23 milliseconds

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
