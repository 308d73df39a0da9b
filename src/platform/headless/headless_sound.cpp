#include "platform/headless/headless_sound.h"

#include <algorithm>
#include <utility>

#include "foundation/byte_writer.h"

namespace footlight::platform {

namespace {

constexpr std::uint32_t kSlice = 10;        // milliseconds between looks at the timers
constexpr std::uint32_t kLongest = 60'000;  // of a longer pause only the end is played
constexpr std::int64_t kHeader = 44;        // bytes of a WAV file's head
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

HeadlessSound::HeadlessSound(const std::string& recordFile) {
  if (recordFile.empty()) return;
  file_ = std::make_unique<AtomicFile>(recordFile);
  writeHeader(kHeader);
}

HeadlessSound::~HeadlessSound() { finishRecord(); }

std::string HeadlessSound::finishRecord() {
  if (file_ == nullptr) return {};
  if (std::FILE* stream = file_->stream()) {
    const std::int64_t length = ::ftello(stream);
    std::rewind(stream);
    writeHeader(length);
  }
  const bool isWhole = file_->commit();
  const std::string failure = isWhole ? std::string() : file_->failure();
  file_.reset();
  return failure;
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
  if (file_ == nullptr && mixer_.isSilent()) return;
  samples_.resize(count * SoundMixer::kChannels);
  mixer_.mix(samples_);
  if (file_ == nullptr || frames_ > kMostFrames) return;
  ByteWriter bytes;
  bytes.reserve(samples_.size() * 2);
  for (const std::int16_t sample : samples_) bytes.i16(sample);
  file_->write(bytes.written());
}

// Of a RIFF file of so many bytes with PCM samples. Written once more at the end, when the length is known.
void HeadlessSound::writeHeader(std::int64_t length) {
  constexpr std::uint16_t kBlock = 2 * SoundMixer::kChannels;
  const auto data = static_cast<std::uint32_t>(length - kHeader);
  ByteWriter header;
  header.text("RIFF").u32(kHeader - 8 + data).text("WAVE");
  header.text("fmt ").u32(16).u16(1).u16(SoundMixer::kChannels).u32(SoundMixer::kRate);
  header.u32(SoundMixer::kRate * kBlock).u16(kBlock).u16(16);
  header.text("data").u32(data);
  file_->write(header.written());
}

}  // namespace footlight::platform
