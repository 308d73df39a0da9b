#pragma once

// A sound device in virtual time: buffers play and timers ring as the clock moves. What was played can be
// kept as a WAV file, which is the same for every run.

#include <fstream>
#include <string>
#include <vector>

#include "platform/sound_mixer.h"

namespace footlight::platform {

class HeadlessSound final : public SoundDevice {
 public:
  // The machine's name of the WAV file; empty for none.
  explicit HeadlessSound(const std::string& recordFile);
  ~HeadlessSound() override;
  HeadlessSound(const HeadlessSound&) = delete;
  HeadlessSound& operator=(const HeadlessSound&) = delete;

  std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes) override {
    return mixer_.createBuffer(format, bytes);
  }
  std::unique_ptr<PeriodicTimer> startTimer(std::uint32_t milliseconds, std::function<void()> work) override;

  // Lets so many milliseconds pass.
  void advance(std::uint32_t milliseconds);
  // False when the WAV file could not be written whole so far.
  bool isRecording() const { return !hasFile_ || file_.good(); }

 private:
  class Timer;

  void play(std::uint32_t milliseconds);
  void writeHeader();

  SoundMixer mixer_;
  std::vector<Timer*> timers_;
  std::uint64_t elapsed_ = 0;  // milliseconds
  std::uint64_t frames_ = 0;   // played
  std::vector<std::int16_t> samples_;
  bool hasFile_;
  std::ofstream file_;
};

}  // namespace footlight::platform
