#include "objects/sound/mc_sound.h"

#include "files/archive.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Sound::CMC_Sound(CMC_ObjectsContainer* container) : CMC_Object("temp", type::kSound) {
  setScene(container);
}

CMC_Sound::CMC_Sound(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kSound),
      preload_(element->getPropertyBoolValue("PRELOAD")),
      flushAfterPlayed_(element->getPropertyBoolValue("FLUSHAFTERPLAYED")) {
  initSound(element->getPropertyValue("FILENAME"));
  initializeBehaviours(container, element);
}

CMC_Sound::~CMC_Sound() { CMC_Sound::unlink(); }

Owned<CSound4> CMC_Sound::makeSound(const CXString& path) const {
  return Owned<CSound4>(new CSound4(getScene()->getWindow(), path, flushAfterPlayed_, preload_));
}

void CMC_Sound::initSound(const CXString& name) {
  giveBack();
  const CWindow* window = getScene()->getWindow();
  if (window == nullptr) return;
  const CXString path = window->GetSoundFXFullPath(name);
  sound_.take(managerFor(getScene()), path, [&] { return makeSound(path); });
  getSound()->addNotifier(this);
}

// A file of the sound folder is kept by its name there, so that the game may move.
void CMC_Sound::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  const CSound4* sound = getSound();
  CXString name = sound != nullptr ? sound->getFileName() : CXString();
  const CWindow* window = getScene() != nullptr ? getScene()->getWindow() : nullptr;
  const CXString folder = window != nullptr ? window->GetSoundFXFullPath("") : CXString();
  if (folder.IsString() && name.startsWith(folder)) name = name.Right(folder.Length());
  archive.pass(name);
  archive.pass(preload_);
  archive.pass(flushAfterPlayed_);
  if (!archive.isStoring() && !archive.hasFailed()) initSound(name);
}

void CMC_Sound::giveBack() {
  if (CSound4* sound = getSound()) sound->removeNotifier(this);
  sound_.giveBack(managerFor(getScene()));
}

std::unique_ptr<CMC_Object> CMC_Sound::copy() const {
  const CSound4* sound = getSound();
  if (sound == nullptr) return nullptr;
  auto made = std::make_unique<CMC_Sound>(getScene());
  made->preload_ = preload_;
  made->flushAfterPlayed_ = flushAfterPlayed_;
  made->sound_.own(made->makeSound(sound->getFileName()));
  made->getSound()->addNotifier(made.get());
  return made;
}

bool CMC_Sound::done(bool keep) {
  giveBack();
  return CMC_Object::done(keep);
}

// Only `done` gives a scene's sound back: that of an object that is removed plays on.
void CMC_Sound::unlink() {
  if (managerFor(getScene()) == nullptr || isClone()) return giveBack();
  if (CSound4* sound = getSound()) sound->removeNotifier(this);
  sound_.leave();
}

bool CMC_Sound::signal(SoundSignal signal) {
  const Ref<CMC_Sound> self(this);
  raise(signal);
  return false;
}

bool CMC_Sound::onPlayableStarted(CPlayable* /*playable*/) { return signal(SoundSignal::onStarted); }
bool CMC_Sound::onPlayableFinished(CPlayable* /*playable*/) { return signal(SoundSignal::onFinished); }
bool CMC_Sound::onPlayableResumed(CPlayable* /*playable*/) { return signal(SoundSignal::onResumed); }

}  // namespace footlight
