#pragma once

// A sound device in virtual time: buffers play and timers ring as the clock moves. What was played can be
// kept as a WAV file, which is the same for every run.

#include <memory>
#include <string>
#include <vector>

#include "platform/posix/atomic_file.h"
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
  // Why the WAV file could not be written whole so far; empty while all is well.
  std::string recordFailure() const { return file_ ? file_->failure() : std::string(); }
  // Ends the WAV file, which takes its name by that. Empty, or what went wrong.
  std::string finishRecord();

 private:
  class Timer;

  void play(std::uint32_t milliseconds);
  void writeHeader(std::int64_t length);

  SoundMixer mixer_;
  std::vector<Timer*> timers_;
  std::uint64_t elapsed_ = 0;  // milliseconds
  std::uint64_t frames_ = 0;   // played
  std::vector<std::int16_t> samples_;
  std::unique_ptr<AtomicFile> file_;  // null where nothing is recorded
};

}  // namespace footlight::platform
