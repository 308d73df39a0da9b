#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "foundation/byte_writer.h"
#include "platform/headless/headless_platform.h"
#include "platform/sound_mixer.h"
#include "platform/thread_timer.h"
#include "sound/snd_stream.h"
#include "sound/sound4.h"
#include "sound/sound_codec.h"
#include "support/memory_files.h"

namespace footlight {
namespace {

using platform::SoundBuffer;
using platform::SoundFormat;
using platform::SoundMixer;

std::vector<std::byte> bytesOf(const std::vector<std::int16_t>& samples) {
  ByteWriter bytes;
  for (const std::int16_t sample : samples) bytes.i16(sample);
  return bytes.take();
}

TEST(SoundMixer, GoesRoundAndKeepsItsPlaceToTheBlock) {
  SoundMixer mixer;
  const auto buffer = mixer.createBuffer({.channels = 2, .rate = SoundMixer::kRate, .bits = 16}, 12);
  buffer->write(8, bytesOf({5, 6, 1, 2, 3, 4}));  // goes on at the start
  buffer->play(true);
  std::array<std::int16_t, 8> heard{};
  mixer.mix(heard);
  EXPECT_EQ(heard, (std::array<std::int16_t, 8>{1, 2, 3, 4, 5, 6, 1, 2}));
  EXPECT_EQ(buffer->cursor(), 4);
  buffer->setCursor(11);
  EXPECT_EQ(buffer->cursor(), 8) << "whole blocks";
  buffer->setCursor(12);
  EXPECT_EQ(buffer->cursor(), 0) << "beyond the end is the start";
  buffer->play(false);
  mixer.mix(heard);
  EXPECT_EQ(heard, (std::array<std::int16_t, 8>{1, 2, 3, 4, 5, 6, 0, 0}));
  EXPECT_FALSE(buffer->isPlaying());
  EXPECT_TRUE(mixer.isSilent());
}

TEST(SoundMixer, RefusesWhatItCannotPlay) {
  SoundMixer mixer;
  for (const SoundFormat format :
       {SoundFormat{.channels = 0}, SoundFormat{.channels = 9}, SoundFormat{.rate = 999},
        SoundFormat{.rate = 192001}, SoundFormat{.bits = 12}}) {
    EXPECT_EQ(mixer.createBuffer(format, 1000), nullptr);
  }
  EXPECT_EQ(mixer.createBuffer({}, 0), nullptr);
}

// A device that plays and rings when it is told.
class SteppedDevice final : public platform::SoundDevice {
 public:
  std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes) override {
    return mixer_.createBuffer(format, bytes);
  }
  std::unique_ptr<platform::PeriodicTimer> startTimer(std::uint32_t /*milliseconds*/,
                                                      std::function<void()> work) override {
    work_ = std::move(work);
    return std::make_unique<platform::PeriodicTimer>();
  }
  // 50 milliseconds, then the timer. Whether anything was heard.
  bool step() {
    std::vector<std::int16_t> samples(2 * SoundMixer::kRate / 20);
    mixer_.mix(samples);
    work_();
    return std::ranges::any_of(samples, [](std::int16_t sample) { return sample != 0; });
  }

 private:
  SoundMixer mixer_;
  std::function<void()> work_;
};

template <class Device>
class PlatformWith final : public platform::HeadlessPlatform {
 public:
  using HeadlessPlatform::HeadlessPlatform;
  Device* sound() override { return &device_; }

 private:
  Device device_;
};

TEST(SndStream, IsSilentWhenItHasPlayedOut) {
  const test::Disk disk = {{"C:\\GAME\\a.wav", test::contentOf(test::waveFile(30000))}};  // 1.36 seconds
  PlatformWith<SteppedDevice> machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  {
    CSndStream stream(nullptr, "a.wav");
    stream.Play(false);
    int heard = 0;
    for (int i = 0; i < 100; ++i) heard += machine.sound()->step() ? 1 : 0;
    EXPECT_EQ(heard, 28) << "once to its end, and nothing of it again";
    EXPECT_FALSE(stream.IsPlaying());
  }
  platform::use(nullptr);
}

TEST(SndStream, ResumesTwoRingsBeforeWhatItHadRead) {
  constexpr int kSamples = 110250;  // 5 seconds
  constexpr int kStepBytes = 2205;
  constexpr int kSteps = 40;
  const test::Disk disk = {{"C:\\GAME\\a.wav", test::contentOf(test::waveFile(kSamples))}};
  PlatformWith<SteppedDevice> machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  {
    CSndStream stream(nullptr, "a.wav");
    stream.Play(true);
    for (int i = 0; i < kSteps; ++i) machine.sound()->step();
    stream.Stop();
    stream.Resume();
    int heard = 0;
    for (int i = 0; i < 200; ++i) heard += machine.sound()->step() ? 1 : 0;
    // It had read what was heard and the ring ahead of that.
    const int from = kSteps * kStepBytes - stream.GetBufferSize();
    EXPECT_NEAR(heard, (2 * kSamples - from) / kStepBytes, 1);
    EXPECT_FALSE(stream.IsPlaying());
  }
  platform::use(nullptr);
}

// A device whose samples a thread of its own takes, as a loudspeaker does.
class ThreadedDevice final : public platform::SoundDevice {
 public:
  ThreadedDevice() : thread_([this] { listen(); }) {}
  ~ThreadedDevice() override {
    ends_ = true;
    thread_.join();
  }
  ThreadedDevice(const ThreadedDevice&) = delete;
  ThreadedDevice& operator=(const ThreadedDevice&) = delete;

  std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, int bytes) override {
    return mixer_.createBuffer(format, bytes);
  }
  std::unique_ptr<platform::PeriodicTimer> startTimer(std::uint32_t /*milliseconds*/,
                                                      std::function<void()> work) override {
    return std::make_unique<platform::ThreadTimer>(std::chrono::milliseconds(1), std::move(work));
  }

 private:
  void listen() {
    std::vector<std::int16_t> samples(1024);
    while (!ends_) {
      mixer_.mix(samples);
      std::this_thread::sleep_for(std::chrono::microseconds(300));  // or nobody else gets the lock
    }
  }

  SoundMixer mixer_;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

TEST(ThreadedSound, StreamsAndSoundsComeAndGo) {
  const test::Disk disk = {{"C:\\GAME\\a.wav", test::contentOf(test::waveFile(30000))},
                           {"C:\\GAME\\b.wav", test::contentOf(test::waveFile(90))}};
  PlatformWith<ThreadedDevice> machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  CSoundCodec::init_codecs();
  {
    std::vector<Owned<CSndStream>> streams(4);
    CSound4 sound(nullptr);
    EXPECT_TRUE(sound.Load("b.wav"));
    std::mt19937 random(1);
    int wereHeard = 0;
    for (int i = 0; i < 1000; ++i) {
      Owned<CSndStream>& stream = streams[random() % streams.size()];
      switch (random() % 8) {
        case 0:
          stream.reset();
          break;
        case 1:
          stream.reset(new CSndStream(nullptr, random() % 2 == 0 ? "a.wav" : "b.wav"));
          stream->Play(random() % 2 == 0);
          break;
        case 2:
          if (stream) stream->Stop();
          break;
        case 3:
          if (stream) stream->Resume();
          break;
        case 4:
          if (stream) stream->setVolume(-static_cast<int>(random() % 3000));
          break;
        case 5:
          if (stream && stream->IsPlaying()) ++wereHeard;
          break;
        case 6:
          sound.play();
          break;
        default:
          sound.Stop();
      }
      if (i % 16 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_GT(wereHeard, 20);
    CSndStream::tellLoops();
  }
  CSoundCodec::done_codecs();
  platform::use(nullptr);
}

}  // namespace
}  // namespace footlight
