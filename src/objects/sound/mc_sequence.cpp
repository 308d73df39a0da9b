#include "objects/sound/mc_sequence.h"

#include "app/application.h"
#include "app/mc_application.h"
#include "files/archive.h"
#include "gfx/window.h"
#include "objects/gfx/mc_animo.h"
#include "objects/shared_resource.h"
#include "objects/sound/mc_sound.h"
#include "script/melement.h"
#include "sequence/multimedia_sequence_creator.h"

namespace footlight {

namespace {

// The objects of the scene that runs.
class SceneCast final : public CSequenceCast {
 public:
  explicit SceneCast(const CWindow* window) {
    const CApplication* application = window != nullptr ? window->getApplication() : nullptr;
    CMC_Application* game = application != nullptr ? application->getMCApplicationIfc() : nullptr;
    if (game != nullptr) scene_ = game->getInnermostScene();
  }

  CSequenceFigure* figure(const CXString& name) const override {
    auto* object = object_cast<CMC_Animo>(find(name));
    return object != nullptr && object->getAnimo() != nullptr ? object : nullptr;
  }
  CSound4* sound(const CXString& name) const override {
    const auto* object = object_cast<CMC_Sound>(find(name));
    return object != nullptr ? object->getSound() : nullptr;
  }

 private:
  CMC_Object* find(const CXString& name) const { return scene_ ? scene_->getObject(name) : nullptr; }

  WeakRef<CMC_Scene> scene_;
};

}  // namespace

CMC_Sequence::CMC_Sequence(CMC_ObjectsContainer* container) : CMC_Object("temp", type::kSequence) {
  setScene(container);
}

CMC_Sequence::CMC_Sequence(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kSequence), fileName_(element->getPropertyValue("FILENAME")) {
  initializeBehaviours(container, element);
}

CMC_Sequence::~CMC_Sequence() = default;

CPlayable* CMC_Sequence::getSequence() {
  if (tree_.root() == nullptr && fileName_.IsString() && !isLoading_) CMC_Sequence::init();
  return tree_.root();
}

// A tree that was made by an early use stays.
void CMC_Sequence::init() {
  if (isLoading_) return;
  const Ref<CMC_Sequence> self(this);
  isLoading_ = true;
  if (tree_.root() == nullptr && fileName_.IsString()) load();
  CMC_Object::init();
  isLoading_ = false;
}

void CMC_Sequence::load() {
  CWindow* window = getScene() != nullptr ? getScene()->getWindow() : nullptr;
  const SceneCast cast(window);
  CPlayableTree tree =
      CMultimediaSequenceCreator::load(window, fileName_, managerFor(getScene()), this, &cast);
  if (!isDisposed()) tree_ = std::move(tree);
}

void CMC_Sequence::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  archive.pass(fileName_);
}

bool CMC_Sequence::done(bool ends) {
  if (ends) tree_.end();
  return CMC_Object::done(ends);
}

std::unique_ptr<CMC_Object> CMC_Sequence::copy() const {
  auto made = std::make_unique<CMC_Sequence>(getScene());
  made->fileName_ = fileName_;
  return made;
}

void CMC_Sequence::signal(SequenceSignal signal, bool isPlain, const CXString& element) {
  if (!isSignalBound(signal)) return;
  const Ref<CMC_Sequence> self(this);
  const CXString name = signalName(signal);
  onSignal(isPlain ? name : name + "^" + element.Upper());
}

bool CMC_Sequence::onPlayableStarted(CPlayable* playable) {
  signal(SequenceSignal::onStarted, playable->isParent(), playable->getName());
  return false;
}

bool CMC_Sequence::onPlayableFinished(CPlayable* playable) {
  const CXString element = playable->getName();
  signal(SequenceSignal::onFinished, playable == tree_.root(), element);
  return false;
}

}  // namespace footlight
