#include "sound/sound4.h"

#include "files/file.h"
#include "foundation/random.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "platform/platform.h"
#include "sound/sound_codec.h"
#include "sound/sound_manager.h"

namespace footlight {

CSound4::CSound4(CWindow* window) : CPlayable(window), window_(window) {}

CSound4::CSound4(CWindow* window, const CXString& fileName, bool flushAfterPlayed, bool preload)
    : CPlayable(window), window_(window), flushAfterPlayed_(flushAfterPlayed) {
  setType(kType);
  setFilename(fileName);
  if (CSoundManager* manager = CWindow::soundsOf(window)) manager->add(this);
  if (preload) load();
}

CSound4::~CSound4() = default;

void CSound4::retire() {
  Stop();
  Flush();
}

// The samples
bool CSound4::Load(const CXString& fileName) {
  Flush();
  setFilename(fileName);
  return load();
}

bool CSound4::load() {
  platform::SoundDevice* device = platform::current().sound();
  const CXString name = getFileName();
  constexpr std::string_view kWithoutCodec = ".SPX";
  if (device == nullptr || name.view().ends_with(kWithoutCodec)) return false;
  CFile file(window_, name, CFile::kReadBinary);
  if (file.LastError() != 0) return false;
  Flush();
  if (!wave_file::readHeader(file)) return false;
  const int formatBytes = wave_file::findChunk(file, "fmt ");
  if (formatBytes < 2) return false;
  CSoundCodec* codec = CSoundCodec::getCodec(wave_file::readFormat(file, formatBytes).wFormatTag);
  if (codec == nullptr) return false;
  codec->decode(&file);
  const platform::SoundFormat format = codec->getDesc()->soundFormat();
  const std::vector<std::byte>& samples = codec->getBuffer();
  if (format.isPlayable()) {
    const std::size_t whole = samples.size() - samples.size() % static_cast<std::size_t>(format.blockBytes());
    buffer_ = device->createBuffer(format, static_cast<int>(whole));
    if (buffer_) buffer_->write(0, std::span(samples).first(whole));
  }
  codec->flush();
  return buffer_ != nullptr;
}

// Playing
void CSound4::play() {
  pausePosition_ = 0;
  Play();
}

void CSound4::Play() {
  if (!buffer_ && !load()) return;
  const Ref<CSound4> self(this);
  SetPosition(pausePosition_);
  if (CSoundManager* manager = CWindow::soundsOf(window_)) manager->play(this);
  buffer_->play(false);
  const bool wasPaused = isPaused();
  pausePosition_ = 0;
  notifyFinished_ = true;
  setStatus(kPlaying);
  notify(wasPaused ? kResumed : kStarted);
}

void CSound4::Play(bool loops) {
  if (!buffer_ && !load()) return;
  SetPosition(0);
  buffer_->play(loops);
  notifyFinished_ = true;
  notify(kStarted);
}

void CSound4::stop(bool notifies) {
  notifyFinished_ = notifies;
  Stop();
}

void CSound4::Stop() {
  if (buffer_) buffer_->stop();
  setStatus(kStopped);
}

void CSound4::pause() {
  if (getStatus() != kPlaying) return;
  pausePosition_ = buffer_ ? buffer_->cursor() : 0;
  Stop();
  setStatus(kPaused);
}

void CSound4::resume() {
  if (getStatus() == kPaused) Play();
}

bool CSound4::IsPlaying() const { return buffer_ && buffer_->isPlaying(); }

void CSound4::SetPosition(int place) {
  if (buffer_) buffer_->setCursor(place);
}

void CSound4::setVolume(int volume) {
  CPlayable::setVolume(volume);
  if (buffer_) buffer_->setVolume(volume);
}

void CSound4::setPanning(int panning) {
  CPlayable::setPanning(panning);
  if (buffer_) buffer_->setPan(panning);
}

void CSound4::setFrequency(int frequency) {
  CPlayable::setFrequency(frequency);
  if (buffer_) buffer_->setFrequency(frequency);
}

// An observer may have started it anew: then the samples stay.
void CSound4::OnWAVFinished() {
  const Ref<CSound4> self(this);
  const bool notifies = notifyFinished_;
  notifyFinished_ = true;
  if (notifies) notify(kFinished);
  if (flushAfterPlayed_ && !IsPlaying() && !isPaused()) Flush();
}

// One of several
CRandomSound::CRandomSound(CWindow* window, const CXString& list, bool flushAfterPlayed, bool preload)
    : CSound4(window) {
  CStringTokenizer names(list, ";");
  while (names.hasMoreTokens()) {
    const CXString name = names.nextToken();
    const CXString full = name.Find(':') < 0 ? window->GetSoundFXFullPath(name) : name;
    variants_.emplace_back(new CSound4(window, full, flushAfterPlayed, preload));
  }
}

CSound4* CRandomSound::choose() {
  if (!variants_.empty()) {
    const auto count = static_cast<int>(variants_.size());
    current_ = variants_[static_cast<std::size_t>(CXRandom::random(count))].get();
  }
  return current_;
}

void CRandomSound::Play(bool loops) {
  if (CSound4* sound = choose()) sound->Play(loops);
}

void CRandomSound::Play() {
  if (CSound4* sound = choose()) sound->Play();
}

void CRandomSound::Stop() {
  if (current_ != nullptr) current_->Stop();
}

bool CRandomSound::IsPlaying() const { return current_ != nullptr && current_->IsPlaying(); }

void CRandomSound::setVolume(int volume) {
  for (const auto& sound : variants_) sound->setVolume(volume);
}

void CRandomSound::setPanning(int panning) {
  for (const auto& sound : variants_) sound->setPanning(panning);
}

void CRandomSound::setFrequency(int frequency) {
  for (const auto& sound : variants_) sound->setFrequency(frequency);
}

}  // namespace footlight
