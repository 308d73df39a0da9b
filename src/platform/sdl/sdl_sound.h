#pragma once

// The machine's loudspeakers. SDL asks for samples on a thread of its own; timers have one each.

#include <SDL.h>

#include "platform/sound_mixer.h"

namespace footlight::platform {

class SdlSound final : public SoundDevice {
 public:
  SdlSound();
  ~SdlSound() override;
  SdlSound(const SdlSound&) = delete;
  SdlSound& operator=(const SdlSound&) = delete;

  // Whether the machine has a device.
  bool isOpen() const { return device_ != 0; }
  std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes) override {
    return mixer_.createBuffer(format, bytes);
  }
  std::unique_ptr<PeriodicTimer> startTimer(std::uint32_t milliseconds, std::function<void()> work) override;

 private:
  SoundMixer mixer_;
  SDL_AudioDeviceID device_ = 0;
};

}  // namespace footlight::platform
