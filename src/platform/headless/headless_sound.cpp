#include "platform/headless/headless_sound.h"

#include <algorithm>
#include <array>
#include <utility>

namespace footlight::platform {

namespace {

constexpr std::uint32_t kSlice = 10;        // milliseconds between looks at the timers
constexpr std::uint32_t kLongest = 60'000;  // of a longer pause only the end is played
constexpr std::uint64_t kMostFrames = (std::uint64_t{1} << 32) / 4 - 64;  // that a WAV file can hold

}  // namespace

class HeadlessSound::Timer final : public PeriodicTimer {
 public:
  Timer(HeadlessSound& device, std::uint32_t period, std::function<void()> work)
      : device_(device),
        period_(std::max(1U, period)),
        due_(device.elapsed_ + period_),
        work_(std::move(work)) {
    device_.timers_.push_back(this);
  }
  ~Timer() override { std::erase(device_.timers_, this); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  void look(std::uint64_t now) {
    for (; due_ <= now; due_ += period_) work_();
  }

 private:
  HeadlessSound& device_;
  std::uint64_t period_;
  std::uint64_t due_;
  std::function<void()> work_;
};

HeadlessSound::HeadlessSound(const std::string& recordFile) : hasFile_(!recordFile.empty()) {
  if (!hasFile_) return;
  file_.open(recordFile, std::ios::binary | std::ios::trunc);
  writeHeader();
}

HeadlessSound::~HeadlessSound() {
  if (hasFile_) writeHeader();
}

std::unique_ptr<PeriodicTimer> HeadlessSound::startTimer(std::uint32_t milliseconds,
                                                         std::function<void()> work) {
  return std::make_unique<Timer>(*this, milliseconds, std::move(work));
}

void HeadlessSound::advance(std::uint32_t milliseconds) {
  const std::uint32_t skipped = milliseconds - std::min(milliseconds, kLongest);
  elapsed_ += skipped;
  frames_ = elapsed_ * SoundMixer::kRate / 1000;
  for (std::uint32_t left = milliseconds - skipped; left > 0;) {
    const std::uint32_t slice = std::min(left, kSlice);
    left -= slice;
    play(slice);
    const std::vector<Timer*> timers = timers_;
    for (Timer* timer : timers) {
      if (std::ranges::find(timers_, timer) != timers_.end()) timer->look(elapsed_);
    }
  }
}

void HeadlessSound::play(std::uint32_t milliseconds) {
  elapsed_ += milliseconds;
  const std::uint64_t until = elapsed_ * SoundMixer::kRate / 1000;
  const auto count = static_cast<std::size_t>(until - frames_);
  frames_ = until;
  if (!hasFile_ && mixer_.isSilent()) return;
  samples_.resize(count * SoundMixer::kChannels);
  mixer_.mix(samples_);
  if (!hasFile_ || frames_ > kMostFrames) return;
  std::vector<char> bytes;
  bytes.reserve(samples_.size() * 2);
  for (const std::int16_t sample : samples_) {
    bytes.push_back(static_cast<char>(sample & 0xFF));
    bytes.push_back(static_cast<char>(sample >> 8));
  }
  file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// Of a RIFF file with PCM samples. Written once more at the end, when the lengths are known.
void HeadlessSound::writeHeader() {
  constexpr std::uint32_t kHeader = 44;
  constexpr std::uint32_t kBlock = 2 * SoundMixer::kChannels;
  const std::streamoff end = std::max<std::streamoff>(kHeader, file_.tellp());
  const auto data = static_cast<std::uint32_t>(end - kHeader);
  std::array<char, kHeader> header = {'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' '};
  const auto put = [&header](std::size_t at, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
      header[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i) & 0xFF);
  };
  put(4, kHeader - 8 + data, 4);
  put(16, 16, 4);
  put(20, 1, 2);
  put(22, SoundMixer::kChannels, 2);
  put(24, SoundMixer::kRate, 4);
  put(28, SoundMixer::kRate * kBlock, 4);
  put(32, kBlock, 2);
  put(34, 16, 2);
  std::copy_n("data", 4, header.begin() + 36);
  put(40, data, 4);
  file_.seekp(0);
  file_.write(header.data(), kHeader);
  file_.seekp(0, std::ios::end);
}

}  // namespace footlight::platform
