#include "platform/sound_mixer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace footlight::platform {

namespace {

constexpr int kGainBits = 14;
constexpr std::int32_t kFullGain = 1 << kGainBits;
constexpr int kPlaceBits = 32;  // of the fraction of a place between samples
constexpr int kFractionBits = 15;

// Decibels as amplitudes: 20 of them are a factor of ten.
std::int32_t gainOf(int volume) {
  if (volume <= SoundBuffer::kSilent) return 0;
  return static_cast<std::int32_t>(std::lround(kFullGain * std::pow(10.0, std::min(volume, 0) / 2000.0)));
}

// A sample as one of 16 bits.
std::int32_t sampleAt(const std::byte* at, int bits) {
  const auto byte = [at](int i) { return std::to_integer<std::uint32_t>(at[i]); };
  if (bits == 8) return (static_cast<std::int32_t>(byte(0)) - 128) * 256;
  const int high = bits / 8;
  return static_cast<std::int16_t>(byte(high - 2) | byte(high - 1) << 8);
}

}  // namespace

class SoundMixer::Voice final : public SoundBuffer {
 public:
  Voice(SoundMixer& mixer, const SoundFormat& format, int bytes)
      : mixer_(mixer),
        format_(format),
        samples_(static_cast<std::size_t>(bytes), format.bits == 8 ? std::byte{0x80} : std::byte{0}) {
    setStep(0);
  }
  ~Voice() override {
    const std::lock_guard lock(mixer_.mutex_);
    mixer_.remove(this);
  }
  Voice(const Voice&) = delete;
  Voice& operator=(const Voice&) = delete;

  int size() const override { return static_cast<int>(samples_.size()); }

  void write(int offset, std::span<const std::byte> samples) override {
    const std::lock_guard lock(mixer_.mutex_);
    const auto start = static_cast<std::size_t>(offset);
    const std::size_t first = std::min(samples.size(), samples_.size() - start);
    std::copy_n(samples.begin(), first, samples_.begin() + offset);
    std::copy(samples.begin() + static_cast<std::ptrdiff_t>(first), samples.end(), samples_.begin());
  }

  void play(bool loops) override {
    const std::lock_guard lock(mixer_.mutex_);
    loops_ = loops;
    if (!isPlaying_ && blocks() > 0) mixer_.add(this);
    isPlaying_ = blocks() > 0;
  }

  void stop() override {
    const std::lock_guard lock(mixer_.mutex_);
    mixer_.remove(this);
    isPlaying_ = false;
  }

  bool isPlaying() const override {
    const std::lock_guard lock(mixer_.mutex_);
    return isPlaying_;
  }

  void setCursor(int offset) override {
    const std::lock_guard lock(mixer_.mutex_);
    const std::int64_t block = std::max(0, offset) / format_.blockBytes();
    place_ = block < blocks() ? static_cast<std::uint64_t>(block) << kPlaceBits : 0;
  }

  int cursor() const override {
    const std::lock_guard lock(mixer_.mutex_);
    return static_cast<int>(place_ >> kPlaceBits) * format_.blockBytes();
  }

  void setVolume(int volume) override {
    const std::lock_guard lock(mixer_.mutex_);
    volume_ = volume;
    setGains();
  }

  void setPan(int pan) override {
    const std::lock_guard lock(mixer_.mutex_);
    pan_ = pan;
    setGains();
  }

  void setFrequency(int frequency) override {
    const std::lock_guard lock(mixer_.mutex_);
    setStep(frequency);
  }

  int volume() const override {
    const std::lock_guard lock(mixer_.mutex_);
    return volume_;
  }

  // Adds to the sums, under the mixer's lock. False when it played to its end.
  bool addTo(std::span<std::int32_t> sums) {
    const auto end = static_cast<std::uint64_t>(blocks()) << kPlaceBits;
    for (std::size_t i = 0; i < sums.size(); i += kChannels) {
      const auto [left, right] = between();
      sums[i] += left * leftGain_ >> kGainBits;
      sums[i + 1] += right * rightGain_ >> kGainBits;
      place_ += step_;
      if (place_ < end) continue;
      place_ = loops_ ? place_ % end : 0;
      if (!loops_) return false;
    }
    return true;
  }

  void end() { isPlaying_ = false; }

 private:
  std::int64_t blocks() const { return static_cast<std::int64_t>(samples_.size()) / format_.blockBytes(); }

  std::array<std::int32_t, 2> block(std::int64_t number) const {
    const std::byte* at = samples_.data() + number * format_.blockBytes();
    const std::int32_t left = sampleAt(at, format_.bits);
    return {left, format_.channels == 1 ? left : sampleAt(at + format_.bits / 8, format_.bits)};
  }

  // The samples at the place, by a straight line to the next ones.
  std::array<std::int32_t, 2> between() const {
    const auto number = static_cast<std::int64_t>(place_ >> kPlaceBits);
    const std::array<std::int32_t, 2> here = block(number);
    const auto fraction =
        static_cast<std::int32_t>(place_ >> (kPlaceBits - kFractionBits) & ((1 << kFractionBits) - 1));
    if (fraction == 0) return here;
    const bool isLast = number + 1 >= blocks();
    if (isLast && !loops_) return here;
    const std::array<std::int32_t, 2> next = block(isLast ? 0 : number + 1);
    const auto line = [fraction](std::int32_t a, std::int32_t b) {
      return a + static_cast<std::int32_t>(std::int64_t{b - a} * fraction >> kFractionBits);
    };
    return {line(here[0], next[0]), line(here[1], next[1])};
  }

  void setGains() {
    leftGain_ = gainOf(volume_ - std::max(0, pan_));
    rightGain_ = gainOf(volume_ + std::min(0, pan_));
  }

  void setStep(int frequency) {
    const int rate = frequency <= 0
                         ? format_.rate
                         : std::clamp(frequency, SoundFormat::kLeastRate / 10, SoundFormat::kMostRate);
    step_ = (static_cast<std::uint64_t>(rate) << kPlaceBits) / kRate;
  }

  SoundMixer& mixer_;
  SoundFormat format_;
  std::vector<std::byte> samples_;
  std::uint64_t place_ = 0;  // in blocks, with a fraction
  std::uint64_t step_ = 0;   // of the place for each sample that is heard
  int volume_ = 0, pan_ = 0;
  std::int32_t leftGain_ = kFullGain, rightGain_ = kFullGain;
  bool isPlaying_ = false;
  bool loops_ = false;
};

SoundMixer::SoundMixer() = default;
SoundMixer::~SoundMixer() = default;

std::unique_ptr<SoundBuffer> SoundMixer::createBuffer(const SoundFormat& format, int bytes) {
  if (!format.isPlayable() || bytes <= 0) return nullptr;
  return std::make_unique<Voice>(*this, format, bytes);
}

void SoundMixer::add(Voice* voice) { playing_.push_back(voice); }

void SoundMixer::remove(Voice* voice) { std::erase(playing_, voice); }

bool SoundMixer::isSilent() const {
  const std::lock_guard lock(mutex_);
  return playing_.empty();
}

void SoundMixer::mix(std::span<std::int16_t> stereo) {
  const std::lock_guard lock(mutex_);
  sum_.assign(stereo.size(), 0);
  std::erase_if(playing_, [this](Voice* voice) {
    const bool goesOn = voice->addTo(sum_);
    if (!goesOn) voice->end();
    return !goesOn;
  });
  static constexpr std::int32_t kLeast = std::numeric_limits<std::int16_t>::min();
  static constexpr std::int32_t kMost = std::numeric_limits<std::int16_t>::max();
  std::ranges::transform(sum_, stereo.begin(), [](std::int32_t sum) {
    return static_cast<std::int16_t>(std::clamp(sum, kLeast, kMost));
  });
}

}  // namespace footlight::platform
