#include "objects/mc_animo.h"

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "files/resources_manager.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr int kOffScreen = -1;  // the priority of what is not on the screen

}  // namespace

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container) : CMC_Animo(container, Owned<CAnimo6>()) {
  own_ = makeAnimo({}, false);
  animo_ = own_.get();
}

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container, Owned<CAnimo6> animo)
    : CMC_Object(CXString(), type::kAnimo),
      window_(container != nullptr ? container->getWindow() : nullptr),
      animo_(animo.get()),
      own_(std::move(animo)) {
  setScene(container);
  if (CAnimo6* animation = getAnimo()) animation->addNotifier(this);
  initializeBehaviours(container, nullptr);
}

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kAnimo),
      window_(container->getWindow()),
      priority_(element->getPropertyIntValue("PRIORITY")),
      monitorCollision_(element->getPropertyBoolValue("MONITORCOLLISION")),
      monitorCollisionAlpha_(element->getPropertyBoolValue("MONITORCOLLISIONALPHA")),
      preload_(element->getPropertyBoolValue("PRELOAD")) {
  CMC_Animo::load(element->getPropertyValue("FILENAME"),
                  element->getPropertyValue("PRELOAD").IsEmpty() || preload_);
  if (CAnimo6* animation = getAnimo()) {
    animation->toRelease(element->getPropertyBoolValue("FLUSHAFTERPLAYED"));
    if (isMonitored()) monitorCollisions(monitorCollisionAlpha_);
    if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr) screen()->put(animation, priority_);
    animation->setVisibility(element->getPropertyBoolValue("VISIBLE"));
    const int fps = element->getPropertyIntValue("FPS");
    animation->SetFPS(fps == 0 ? CAnimo::kUsualFps : fps);
    animation->addNotifier(this);
  }
  asButton_ = element->getPropertyBoolValue("ASBUTTON");
  onFirstFrame_ = element->getPropertyBoolValue("ONFIRSTFRAME");
  initializeBehaviours(container, element);
}

CMC_Animo::~CMC_Animo() { CMC_Animo::unlink(); }

// --- the animation
// -----------------------------------------------------------------------------------------------

CRefreshScreen* CMC_Animo::screen() const {
  return window_ != nullptr ? window_->getRefreshScreen() : nullptr;
}

// Only scenes share animations.
CResourcesManager* CMC_Animo::manager() const {
  const CMC_ObjectsContainer* container = getScene();
  if (container == nullptr || container->getType() != type::kScene) return nullptr;
  const CUnit6* unit = CMC_Scene::getDefUnit();
  return unit != nullptr ? unit->getResourcesManager() : nullptr;
}

void CMC_Animo::load(const CXString& name, bool preload) {
  CAnimo6* before = getAnimo();
  if (before == nullptr || !before->getFileName().equalsIgnoreCase(name)) {
    CResourcesManager* resources = manager();
    const int priority = screen() != nullptr ? screen()->GetPriority(before) : kOffScreen;
    if (resources != nullptr && name.IsString()) {
      takeShared(resources, name, preload);
    } else {
      makeOwn(resources, name, preload);
    }
    if (CAnimo6* animo = getAnimo(); priority != kOffScreen && animo != nullptr) {
      screen()->put(animo, priority);
      animo->addNotifier(this);
      if (isMonitored()) monitorCollisions(monitorCollisionAlpha_);
      animo->setMonitorCollisions(isMonitored());
    }
  }
  if (CAnimo6* animo = getAnimo()) tellSequences(animo);
}

void CMC_Animo::takeShared(CResourcesManager* resources, const CXString& name, bool preload) {
  giveBack();
  CFileResolver* known = resources->get(name);
  auto* shared = dynamic_cast<CAnimo6*>(known);
  if (known != nullptr && shared == nullptr)
    resources->remove(known);  // the file is something else to others
  if (shared == nullptr) {
    shared = makeAnimo(name, preload).release();
    resources->add(shared);
  }
  animo_ = shared;
}

void CMC_Animo::makeOwn(CResourcesManager* resources, const CXString& name, bool preload) {
  giveBack();
  own_ = makeAnimo(name, preload);
  animo_ = own_.get();
  if (resources != nullptr) resources->add(own_.release());
}

Owned<CAnimo6> CMC_Animo::makeAnimo(const CXString& name, bool preload) const {
  Owned<CAnimo6> animo(new CAnimo6(window_));
  animo->setFilename(name);
  if (preload && name.IsString()) animo->Load(name);
  return animo;
}

// Lets the animation go: to the manager, which ends it after its last user, or to its end.
void CMC_Animo::giveBack() {
  CAnimo6* animo = getAnimo();
  if (animo != nullptr) {
    animo->removeNotifier(this);
    animo->Visible(false);
  }
  removeCollisionsMonitoring();
  if (animo != nullptr && own_ == nullptr) {
    if (CResourcesManager* resources = manager(); resources != nullptr) resources->remove(animo);
  }
  if (own_ != nullptr) own_->retire();
  own_.reset();
  animo_ = nullptr;
}

void CMC_Animo::tellSequences(CAnimo* animo) {
  const std::vector<CPlayable*> sequences = seqs_;
  for (CPlayable* sequence : sequences) sequence->substAnimation(animo);
}

std::unique_ptr<CMC_Object> CMC_Animo::copy() const {
  const CAnimo6* animo = getAnimo();
  if (animo == nullptr) return nullptr;
  Owned<CAnimo6> made(static_cast<CAnimo6*>(animo->clone().release()));
  if (screen() != nullptr) {
    const int priority = screen()->GetPriority(animo);
    screen()->put(made.get(), priority == kOffScreen ? 0 : priority);
  }
  return std::make_unique<CMC_Animo>(getScene(), std::move(made));
}

bool CMC_Animo::done(bool keep) {
  tellSequences(nullptr);
  giveBack();
  return CMC_Object::done(keep);
}

void CMC_Animo::unlink() {
  giveBack();
  if (window_ != nullptr) window_->unregisterMouseListener(this);
}

// --- collisions
// ----------------------------------------------------------------------------------------------------

// The scene around the object; a class instance stands in its own scope within one.
CMC_Scene* CMC_Animo::level() const {
  CMC_ObjectsContainer* container = getScene();
  while (container != nullptr && object_cast<CMC_Scene>(container) == nullptr)
    container = container->getParent();
  return object_cast<CMC_Scene>(container);
}

void CMC_Animo::monitorCollisions(bool useAlpha) {
  CAnimo6* animo = getAnimo();
  CMC_Scene* scene = level();
  if (animo != nullptr && scene != nullptr) scene->monitorCollisions(animo, useAlpha, this);
}

void CMC_Animo::removeCollisionsMonitoring() {
  CAnimo6* animo = getAnimo();
  CMC_Scene* scene = animo != nullptr && animo->getMonitorCollisionsFlag() ? level() : nullptr;
  if (scene != nullptr) scene->removeMonitorCollisions(animo, this);
}

}  // namespace footlight
