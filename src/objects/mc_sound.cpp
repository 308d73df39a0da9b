#include "objects/mc_sound.h"

#include "app/application.h"
#include "app/mc_scene.h"
#include "app/unit6.h"
#include "files/resources_manager.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

// Signals of the type, by their index.
constexpr int kOnStarted = 3;
constexpr int kOnFinished = 4;
constexpr int kOnResumed = 5;

}  // namespace

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

// Only scenes share sounds.
CResourcesManager* CMC_Sound::manager() const {
  const CMC_ObjectsContainer* container = getScene();
  if (container == nullptr || container->getType() != type::kScene) return nullptr;
  const CUnit6* unit = CMC_Scene::getDefUnit();
  return unit != nullptr ? unit->getResourcesManager() : nullptr;
}

void CMC_Sound::initSound(const CXString& name) {
  giveBack();
  CWindow* window = getScene()->getWindow();
  if (window == nullptr) return;
  const CApplication* application = window->getApplication();
  const CXString path = application != nullptr ? application->getWAVPath(name) : name;
  CResourcesManager* resources = manager();
  CFileResolver* known = resources != nullptr ? resources->get(path) : nullptr;
  auto* shared = dynamic_cast<CSound4*>(known);
  if (known != nullptr && shared == nullptr)
    resources->remove(known);  // the file is something else to others
  if (shared == nullptr) {
    Owned<CSound4> made(new CSound4(window, path, flushAfterPlayed_, preload_));
    shared = made.get();
    if (resources != nullptr) {
      resources->add(made.release());
    } else {
      own_ = std::move(made);
    }
  }
  sound_ = shared;
  shared->addNotifier(this);
}

// Lets the sound go: to the manager, which ends it after its last user, or to its end.
void CMC_Sound::giveBack() {
  CSound4* sound = getSound();
  if (sound != nullptr) sound->removeNotifier(this);
  if (sound != nullptr && own_ == nullptr) {
    if (CResourcesManager* resources = manager(); resources != nullptr) resources->remove(sound);
  }
  own_.reset();
  sound_ = nullptr;
}

std::unique_ptr<CMC_Object> CMC_Sound::copy() const {
  const CSound4* sound = getSound();
  if (sound == nullptr) return nullptr;
  auto made = std::make_unique<CMC_Sound>(getScene());
  made->preload_ = preload_;
  made->flushAfterPlayed_ = flushAfterPlayed_;
  made->own_.reset(new CSound4(getScene()->getWindow(), sound->getFileName(), flushAfterPlayed_, preload_));
  made->sound_ = made->own_.get();
  made->own_->addNotifier(made.get());
  return made;
}

bool CMC_Sound::done(bool keep) {
  giveBack();
  return CMC_Object::done(keep);
}

void CMC_Sound::unlink() { giveBack(); }

bool CMC_Sound::signal(int index, const char* name) {
  const Ref<CMC_Sound> self(this);
  if (isSignalBound(index)) onSignal(name);
  return false;
}

bool CMC_Sound::onPlayableStarted(CPlayable* /*playable*/) { return signal(kOnStarted, "ONSTARTED"); }
bool CMC_Sound::onPlayableFinished(CPlayable* /*playable*/) { return signal(kOnFinished, "ONFINISHED"); }
bool CMC_Sound::onPlayableResumed(CPlayable* /*playable*/) { return signal(kOnResumed, "ONRESUMED"); }

}  // namespace footlight
