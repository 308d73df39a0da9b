#pragma once

// The sound device: buffers of samples that play, each with its own volume, pan and speed. Without a device
// the platform gives none and all is silent.
//
// Buffers may be called from any thread; a buffer ends before its device.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace footlight::platform {

// Plain samples, little-endian, the channels of a moment side by side. 8 bits are unsigned, more are signed.
struct SoundFormat {
  static constexpr int kMostChannels = 8;  // the first two are heard
  static constexpr int kLeastRate = 1000, kMostRate = 192000;

  int channels = 1;
  int rate = 22050;  // samples a second
  int bits = 16;     // 8, 16, 24 or 32

  int blockBytes() const { return channels * bits / 8; }
  bool isPlayable() const {
    return channels >= 1 && channels <= kMostChannels && rate >= kLeastRate && rate <= kMostRate &&
           (bits == 8 || bits == 16 || bits == 24 || bits == 32);
  }
};

class SoundBuffer {
 public:
  static constexpr int kSilent = -10000;

  virtual ~SoundBuffer() = default;
  virtual int size() const = 0;  // bytes
  // Copies samples to an offset and goes on at the start behind the end. Offset and length lie within size.
  virtual void write(int offset, std::span<const std::byte> samples) = 0;
  // From the cursor on, to the end or, looping, round and round.
  virtual void play(bool loops) = 0;
  virtual void stop() = 0;
  virtual bool isPlaying() const = 0;
  // Bytes, a whole block; beyond the end is the start.
  virtual void setCursor(int offset) = 0;
  virtual int cursor() const = 0;
  virtual void setVolume(int volume) = 0;  // hundredths of a decibel, kSilent to 0
  virtual void setPan(int pan) = 0;        // the same; below 0 the right side is softer, above 0 the left
  virtual void setFrequency(int frequency) = 0;  // samples a second; 0 is the format's own
  virtual int volume() const = 0;
};

// Calls again and again until it goes; its end waits for a call that runs.
class PeriodicTimer {
 public:
  virtual ~PeriodicTimer() = default;
};

class SoundDevice {
 public:
  virtual ~SoundDevice() = default;
  // Silent samples in a playable format; null when the device refuses. `bytes` is a whole number of blocks.
  virtual std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes) = 0;
  // Calls `work` every so many milliseconds, on a thread of its own where time is real.
  virtual std::unique_ptr<PeriodicTimer> startTimer(std::uint32_t milliseconds,
                                                    std::function<void()> work) = 0;
};

}  // namespace footlight::platform
