#pragma once

// SOUND: the script's face of a sound. The sound of a scene's object belongs to the scene's resources manager
// and is shared by all objects of the same file; elsewhere the object owns it. Either way it is referred to
// weakly: one that has gone is silent.

#include "script/mc_object.h"
#include "sound/sound4.h"

namespace footlight {

class CResourcesManager;

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
  bool onPlayableStarted(CPlayable* playable) override;
  bool onPlayableFinished(CPlayable* playable) override;
  bool onPlayableResumed(CPlayable* playable) override;

 protected:
  void unlink() override;

 private:
  CResourcesManager* manager() const;
  void giveBack();
  bool signal(int index, const char* name);

  bool preload_ = false;
  bool flushAfterPlayed_ = false;
  WeakRef<CSound4> sound_;
  Owned<CSound4> own_;  // the sound, unless a manager owns it
};

}  // namespace footlight
