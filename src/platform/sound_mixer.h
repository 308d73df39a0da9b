#pragma once

// Mixes buffers that play into one stream of 16-bit stereo. Samples between two are interpolated, sums stop
// at the greatest value. The same calls give the same samples on every machine.

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "platform/sound_device.h"

namespace footlight::platform {

class SoundMixer {
 public:
  static constexpr int kRate = 44100;
  static constexpr int kChannels = 2;

  SoundMixer();
  ~SoundMixer();
  SoundMixer(const SoundMixer&) = delete;
  SoundMixer& operator=(const SoundMixer&) = delete;

  std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes);
  // The next samples, left and right in turns.
  void mix(std::span<std::int16_t> stereo);
  bool isSilent() const;

 private:
  class Voice;

  void add(Voice* voice);
  void remove(Voice* voice);

  mutable std::mutex mutex_;
  std::vector<Voice*> playing_;
  std::vector<std::int32_t> sum_;
};

}  // namespace footlight::platform
