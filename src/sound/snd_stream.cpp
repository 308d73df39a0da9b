#include "sound/snd_stream.h"

#include <algorithm>
#include <atomic>

#include "foundation/limits.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

std::atomic<int>& loopsToTell() {
  static std::atomic<int> count = 0;
  return count;
}

}  // namespace

CSndStream::CSndStream(CWindow* window, const CXString& fileName)
    : window_(window), wav_(std::make_unique<CStreamedWAV>(window, fileName)) {
  setErrorCode(wav_->LastError());
  buffer_ = wav_->takeBuffer();
  if (!buffer_) {
    wav_.reset();
    return;
  }
  bits_ = wav_->getFormat().wBitsPerSample;
  fillDataBuffer();
}

CSndStream::~CSndStream() { Stop(); }

int CSndStream::distance(int from, int to) const {
  return to >= from ? to - from : to - from + GetBufferSize();
}

// Reads the wave round and round; a wave without samples ends it.
std::size_t CSndStream::readRound(std::span<std::byte> target, bool tellsLoops) {
  std::size_t done = 0;
  while (done < target.size()) {
    const std::size_t read = wav_->Read(target.subspan(done));
    done += read;
    if (done == target.size()) break;
    if (read == 0 && wav_->Tell() == 0) break;
    wav_->StartRead();
    if (tellsLoops && loopsToTell() < limits::kInputEvents) ++loopsToTell();
  }
  return done;
}

// A short wave repeats until the ring is full.
void CSndStream::fillDataBuffer() {
  region_.assign(static_cast<std::size_t>(buffer_->size()), silence());
  readRound(region_, false);
  buffer_->write(0, region_);
  nextWriteOffset_ = 0;
}

void CSndStream::Play(bool looped) {
  platform::SoundDevice* device = platform::current().sound();
  if (!buffer_ || device == nullptr) return;
  buffer_->setCursor(0);
  looped_ = looped;
  timer_ = device->startTimer(kPeriod, [this] { timeFunc(); });
  buffer_->play(true);
  const std::lock_guard lock(lock_);
  playing_ = true;
}

void CSndStream::Stop() {
  timer_.reset();
  const std::lock_guard lock(lock_);
  donePlaying_ = true;
  playing_ = false;
  if (buffer_) buffer_->stop();
}

void CSndStream::Resume() {
  if (!buffer_) return;
  timer_.reset();
  foundEnd_ = donePlaying_ = false;
  bytesRemaining_ = 0;
  wav_->setPosition(std::max(0, wav_->Tell() - 2 * buffer_->size()));
  fillDataBuffer();
  Play(false);
}

bool CSndStream::IsPlaying() const {
  const std::lock_guard lock(lock_);
  return playing_ && !donePlaying_;
}

void CSndStream::setVolume(int volume) {
  if (buffer_) buffer_->setVolume(volume);
}

void CSndStream::setPan(int pan) {
  if (buffer_) buffer_->setPan(pan);
}

void CSndStream::setFreq(int frequency) {
  if (buffer_) buffer_->setFrequency(frequency);
}

// The timer's thread
void CSndStream::timeFunc() {
  const std::lock_guard lock(lock_);
  const int cursor = buffer_->cursor();
  if (cursor == nextWriteOffset_) return;
  if (foundEnd_ && bytesRemaining_ == 0) donePlaying_ = true;  // from here on silence goes round
  const int length = distance(nextWriteOffset_, cursor);
  if (foundEnd_) bytesRemaining_ = std::max(0, bytesRemaining_ - length);
  refill(cursor, length);
  nextWriteOffset_ = (nextWriteOffset_ + length) % buffer_->size();
}

void CSndStream::refill(int cursor, int length) {
  region_.assign(static_cast<std::size_t>(length), silence());
  if (!foundEnd_ && !donePlaying_) {
    const std::size_t read = looped_ ? readRound(region_, true) : wav_->Read(region_);
    if (!looped_ && read < region_.size()) {
      foundEnd_ = true;
      bytesRemaining_ = distance(cursor, nextWriteOffset_);
    }
  }
  buffer_->write(nextWriteOffset_, region_);
}

// The main thread
void CSndStream::tellLoops() {
  for (int left = loopsToTell().exchange(0); left > 0; --left) {
    if (CWindow* window = CWindow::getInstance()) window->onMusicLooped();
  }
}

}  // namespace footlight
