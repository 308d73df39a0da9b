#pragma once

// SOUND: the script's face of a sound. One that has gone is silent.

#include "objects/shared_resource.h"
#include "script/mc_object.h"
#include "sound/sound4.h"

namespace footlight {

namespace type {
inline constexpr int kSound = 2005;
}

enum class SoundSignal { onStarted = kFirstOwnSignal, onFinished, onResumed, count };

class CMC_Sound : public CMC_Object, public CPlayableObserver {
 public:
  // Without a sound, of the name "temp".
  explicit CMC_Sound(CMC_ObjectsContainer* container);
  CMC_Sound(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Sound() override;
  static bool isTypeOf(int type) { return type == type::kSound; }

  // The sound, or null.
  CSound4* getSound() const { return sound_.get(); }
  // A file of the sound folder in place of the one before.
  void initSound(const CXString& name);

  // With a sound of its own.
  std::unique_ptr<CMC_Object> copy() const override;
  bool done(bool keep) override;
  // The file's name, PRELOAD, FLUSHAFTERPLAYED.
  void serialize(CXArchive& archive) override;
  bool onPlayableStarted(CPlayable* playable) override;
  bool onPlayableFinished(CPlayable* playable) override;
  bool onPlayableResumed(CPlayable* playable) override;

 protected:
  void unlink() override;

 private:
  Owned<CSound4> makeSound(const CXString& path) const;
  void giveBack();
  bool signal(SoundSignal signal);

  bool preload_ = false;
  bool flushAfterPlayed_ = false;
  SharedResource<CSound4> sound_;
};

}  // namespace footlight
