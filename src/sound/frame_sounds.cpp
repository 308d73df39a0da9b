// Sounds and streams as animations' frames see them.

#include "gfx/frame_sound.h"
#include "sound/snd_stream.h"
#include "sound/sound4.h"

namespace footlight {

namespace {

class WholeSound final : public CFrameSound {
 public:
  explicit WholeSound(Owned<CSound4> sound) : sound_(std::move(sound)) {}
  void play() override { sound_->play(); }
  void stop() override { sound_->Stop(); }
  bool isPlaying() const override { return sound_->IsPlaying(); }
  void setVolume(int volume) override { sound_->setVolume(volume); }
  void setPanning(int panning) override { sound_->setPanning(panning); }
  void setFrequency(int frequency) override { sound_->setFrequency(frequency); }

 private:
  Owned<CSound4> sound_;
};

class StreamedSound final : public CFrameSound {
 public:
  StreamedSound(CWindow* window, const CXString& name) : stream_(new CSndStream(window, name)) {}
  void play() override { stream_->Play(false); }
  void stop() override { stream_->Stop(); }
  bool isPlaying() const override { return stream_->IsPlaying(); }
  void setVolume(int volume) override { stream_->setVolume(volume); }
  void setPanning(int panning) override { stream_->setPan(panning); }
  void setFrequency(int frequency) override { stream_->setFreq(frequency); }

 private:
  Owned<CSndStream> stream_;
};

}  // namespace

std::unique_ptr<CFrameSound> makeFrameSound(CWindow* window, const CXString& name, bool streamed) {
  if (streamed) return std::make_unique<StreamedSound>(window, name);
  Owned<CSound4> sound(name.Find(';') < 0 ? new CSound4(window, name, false, true)
                                          : new CRandomSound(window, name, false, true));
  return std::make_unique<WholeSound>(std::move(sound));
}

}  // namespace footlight
