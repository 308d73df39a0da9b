#include "app/mc_scene.h"

#include <algorithm>

#include "app/application.h"
#include "app/unit6.h"
#include "files/config.h"
#include "files/file.h"
#include "files/path.h"
#include "foundation/arithmetic.h"
#include "foundation/limits.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "input/cursor_clip.h"
#include "objects/gfx/mc_virtual_graphics_object.h"
#include "objects/input/mc_button.h"
#include "platform/platform.h"
#include "script/dll_ex_module_interface.h"
#include "script/mc_behaviour.h"
#include "script/melement.h"
#include "script/melements_loader.h"

namespace footlight {

namespace {

constexpr const char* kDataFolder = "Dane";
constexpr const char* kInit = "__INIT__";

Owned<CUnit6>& defaultUnit() {
  static Owned<CUnit6> unit;
  return unit;
}

void makeDefaultUnit(CWindow* window) {
  if (defaultUnit() || window == nullptr) return;
  defaultUnit().reset(new CUnit6(window, "Default", CWindow::resourcesOf(window)));
}

int secondsNow() { return static_cast<int>(platform::current().clock().ticks() / 1000); }

}  // namespace

CMC_Scene::CMC_Scene(CWindow* window, const CMElement* element, int type)
    : CMC_ObjectsContainer(window, nullptr, element, type),
      dlls_(element->getPropertyValue("DLLS")),
      description_(element->getPropertyValue("DESCRIPTION")),
      path_(element->getPropertyValue("PATH")),
      background_(element->getPropertyValue("BACKGROUND")),
      music_(element->getPropertyValue("MUSIC")),
      deamon_(element->getPropertyBoolValue("DEAMON")) {
  makeDefaultUnit(window);
}

CMC_Scene::CMC_Scene(CWindow* window, int type)
    : CMC_ObjectsContainer(window, CXString(), type), deamon_(false), binary_(true) {
  makeDefaultUnit(window);
}

CMC_Scene::~CMC_Scene() = default;

CUnit6* CMC_Scene::getDefUnit() { return defaultUnit().get(); }

CMC_Scene* CMC_Scene::around(CMC_ObjectsContainer* container) {
  while (container != nullptr && object_cast<CMC_Scene>(container) == nullptr)
    container = container->getParent();
  return object_cast<CMC_Scene>(container);
}

void CMC_Scene::doneDefUnit() { defaultUnit().reset(); }

// The tree

void CMC_Scene::addSubScene(CMC_Scene* scene) {
  if (scene == nullptr || getSubId(scene) >= 0) return;
  subScenes_.push_back(scene);
  scene->setParent(this);
}

CMC_Scene* CMC_Scene::find(const CXString& name) const {
  const auto found = std::find_if(subScenes_.begin(), subScenes_.end(),
                                  [&name](const CMC_Scene* s) { return s->getName() == name; });
  return found == subScenes_.end() ? nullptr : *found;
}

CMC_Scene* CMC_Scene::findReported(const CXString& name) const {
  CMC_Scene* scene = find(name);
  if (scene == nullptr && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object, "no episode or scene of the name " + name.str());
  return scene;
}

CMC_Scene* CMC_Scene::getScene(const CXString& name) {
  if (getName() == name) return this;
  for (CMC_Scene* scene : subScenes_) {
    if (CMC_Scene* found = scene->getScene(name)) return found;
  }
  return nullptr;
}

CMC_Scene* CMC_Scene::getInnermostScene() {
  CMC_Scene* scene = this;
  while (scene->currentSubScene_ != nullptr) scene = scene->currentSubScene_;
  return scene;
}

int CMC_Scene::getSubId(const CMC_Scene* scene) const {
  const auto found = std::find(subScenes_.begin(), subScenes_.end(), scene);
  return found == subScenes_.end() ? -1 : static_cast<int>(found - subScenes_.begin());
}

CMC_Scene* CMC_Scene::getNextScene() const {
  const int index = currentSubScene_ != nullptr ? getSubId(currentSubScene_) + 1 : 0;
  return index > 0 && index < static_cast<int>(subScenes_.size())
             ? subScenes_[static_cast<std::size_t>(index)]
             : nullptr;
}

CMC_Scene* CMC_Scene::getPreviousScene() const {
  const int index = currentSubScene_ != nullptr ? getSubId(currentSubScene_) - 1 : -1;
  return index >= 0 ? subScenes_[static_cast<std::size_t>(index)] : nullptr;
}

void CMC_Scene::back() {
  if (history_.size() < 2) return;
  setPending(history_[history_.size() - 2]);
  history_.pop_back();
}

// The step

void CMC_Scene::domodal() {
  if (pendingSubScene_ != nullptr) {
    _goto(pendingSubScene_, currentSubScene_);
    pendingSubScene_ = nullptr;
  }
  if (currentSubScene_ != nullptr) currentSubScene_->domodal();
}

void CMC_Scene::_goto(CMC_Scene* target, CMC_Scene* previous) {
  unload(target);
  currentSubScene_ = target;
  target->initialize(previous);
  history_.push_back(target);
  if (history_.size() > limits::kHistoryEntries) history_.erase(history_.begin());
}

void CMC_Scene::restart() {
  if (!subScenes_.empty()) setPending(subScenes_.front());
  const CXString restarted = signalName(LevelSignal::onRestart);
  if (getBehaviour(restarted.view()) != nullptr) onSignal(restarted);
}

void CMC_Scene::unloadSubScene(CMC_Scene* next) {
  CMC_Scene* leaving = currentSubScene_;
  currentSubScene_ = nullptr;
  if (leaving != nullptr) leaving->unload(next);
}

// Entering

CXString CMC_Scene::folder() const {
  return path_.IsString() ? CXString(kDataFolder) + "\\" + path_ : CXString(kDataFolder);
}

bool CMC_Scene::enterOwnFolder() const {
  return CFile::chDir(CPath::getFullPath(CWindow::getRootPath(), folder())) == 0;
}

// In two steps: where there is no such folder the game stays in the data root.
void CMC_Scene::enterDataFolder() const {
  CFile::chDir(getWindow()->getDataRoot());
  CFile::chDir(folder());
}

void CMC_Scene::enterDefinitionFolder() const {
  if (getType() != type::kScene) return enterLevelFolder();
  CFile::chDir(CWindow::getRootPath());
  if (!enterOwnFolder() || !CFile::canRead(definitionName())) enterDataFolder();
}

void CMC_Scene::enterLevelFolder() const {
  CFile::chDir(CPath::getFullPath(getWindow()->getDataRoot(), kDataFolder));
  if (path_.IsString()) CFile::chDir(path_);
}

bool CMC_Scene::initialize(CMC_Scene* previous) {
  CWindow* window = getWindow();
  window->BeginWaitCursor();
  unit_ = getDefUnit();
  const diagnose::PlaceGuard place(origin());
  if (dlls_.IsString()) resolveDLLs(dlls_);
  enterDefinitionFolder();
  reportMissingFile();
  if (unit_ != nullptr) enterScene(previous);
  window->EndWaitCursor();
  enteredAt_ = secondsNow();
  return true;
}

// A scene without a definition file simply has no objects.
void CMC_Scene::reportMissingFile() const {
  const CXString fileName = definitionName();
  if (!diagnose::isOn() || CFile::canRead(fileName)) return;
  std::string text = "the scene has no objects; looked for";
  const CXString own = CPath::getFullPath(CPath::getFullPath(CWindow::getRootPath(), folder()), fileName);
  const CXString data =
      CPath::getFullPath(CPath::getFullPath(getWindow()->getDataRoot(), folder()), fileName);
  text.append(" ").append(own.view());
  if (own != data) text.append(", ").append(data.view());
  diagnose::report(diagnose::Group::file, getName(), "", text);
}

void CMC_Scene::enterScene(CMC_Scene* previous) {
  previousUnitName_ = unit_->getUnitName();
  unit_->setUnitName(getName());
  enterParents();
  loadCnv();
  unit_->setBackgroundFileName(background_);
  unit_->initialize(this, getDefUnit());
  // Code of the levels above finds the objects of the scene that runs.
  if (CMC_ObjectsContainer* parent = getParent()) {
    parent->setScene(this);
    if (parent->getParent() != nullptr) parent->getParent()->setScene(this);
  }
  initContents();
  if (getBehaviour("ONINIT") != nullptr) onSignal("ONINIT");
  shouldStartMusic_ = previous == nullptr || previous->getMusicFilename() != getMusicFilename();
}

void CMC_Scene::loadCnv() {
  if (binary_) return loadBinary();
  const CXString fileName = definitionName();
  if (!CFile::canRead(fileName)) return;
  const std::unique_ptr<CMElements> elements = CMElementsLoader::load(getWindow(), fileName);
  if (!elements) return;
  resolveObjects(*elements);
  if (const CMElement* own = elements->get(getName())) initializeBehaviours(this, own);
}

void CMC_Scene::initContents() {
  initObjects();
  const Ref<CMC_Behaviour> init(CMC_ObjectsContainer::find<CMC_Behaviour>(kInit));
  if (!init) return;
  // It may belong to a level above; for this run it stands in this scene.
  const Ref<CMC_ObjectsContainer> own(init->getScene());
  init->setScene(this);
  init->run(nullptr, nullptr, false);
  init->setScene(own.get());
}

// Leaving

void CMC_Scene::unload(CMC_Scene* next) {
  const Ref<CMC_Scene> self(this);
  if (CMC_ObjectsContainer* parent = getParent()) parent->onSubSceneDone(this);
  saveStats();
  unloadSubScene(next);
  CMC_ObjectsContainer::unload();
  while (!monitored_.empty()) removeMonitorCollisions(monitored_.back().get(), nullptr);
  CCursorClip::release(true);
  removeAllBehaviours();
  doneDLLs();
  if (unit_ != nullptr) {
    unit_->done(this, next != nullptr ? getDefUnit() : nullptr);
    unit_->flushEditBoxes();
    unit_->setUnitName(previousUnitName_);
  }
  if (next == nullptr || next->getMusicFilename() != getMusicFilename()) stopMusic();
}

CCollisionInspector* CMC_Scene::startMonitoring(CGraphicsObject* object, bool useAlpha) {
  CCollisionInspector* inspector = getWindow() != nullptr ? getWindow()->getCollisionInspector() : nullptr;
  std::erase_if(monitored_, [](const auto& item) { return !item; });
  const bool isNew = std::none_of(monitored_.begin(), monitored_.end(),
                                  [object](const auto& item) { return item.get() == object; });
  if (object == nullptr || inspector == nullptr || !isNew) return nullptr;
  inspector->addMonitoredObject(object, useAlpha);
  object->setMonitorCollisions(true);
  monitored_.emplace_back(object);
  return inspector;
}

void CMC_Scene::removeMonitorCollisions(CGraphicsObject* object, const CCollisionObserver* observer) {
  std::erase_if(monitored_, [object](const auto& item) { return item.get() == object; });
  CCollisionInspector* inspector = getWindow() != nullptr ? getWindow()->getCollisionInspector() : nullptr;
  if (inspector == nullptr) return;
  if (object != nullptr) inspector->removeMonitoredObject(object);
  if (object != nullptr) object->setMonitorCollisions(false);
  inspector->removeNotifier(observer);
}

void CMC_Scene::saveStats() {
  CConfig* config = getConfig();
  if (config != nullptr) {
    const bool ran = enteredAt_ > 0;
    const int seconds = ran ? wrap_sub(secondsNow(), enteredAt_) : 0;
    config->PutInt(getName(), "Time", wrap_add(config->GetInt(getName(), "Time"), seconds));
    config->PutInt(getName(), "Played", wrap_add(config->GetInt(getName(), "Played"), ran ? 1 : 0));
    config->flush();
  }
  enteredAt_ = 0;
}

// Signals

bool CMC_Scene::onSignal(const CXString& name) {
  if (CMC_Object::onSignal(name)) return true;
  const Ref<CMC_Behaviour> handler(
      CMC_ObjectsContainer::find<CMC_Behaviour>((CXString("__") + name + "__").view()));
  if (handler) handler->run(nullptr, nullptr, false);
  return false;
}

// Music

CXString CMC_Scene::getMusicFilename() const {
  if (music_.IsString()) return music_;
  const auto* parent = object_cast<CMC_Scene>(getParent());
  return parent != nullptr ? parent->getMusicFilename() : CXString();
}

void CMC_Scene::startMusic(const char* name, bool force) {
  if (unit_ == nullptr) return;
  if (name != nullptr && getMusicFilename() != name) {
    music_ = name;
    shouldStartMusic_ = true;
  }
  unit_->startMusic(name, force);
}

void CMC_Scene::stopMusic() {
  if (unit_ != nullptr) unit_->stopMusic();
  shouldStartMusic_ = true;
}

// Objects

void CMC_Scene::createObject(const CXString& word, const CXString& name) {
  std::unique_ptr<CMC_Object> made;
  if (word == "BUTTON") made = CMC_Button::makeBare(this, name);
  if (word == "VGO") {
    made = std::make_unique<CMC_VirtualGraphicsObject>(this);
    made->setName(name);
  }
  if (!made) {
    if (diagnose::isOn())
      diagnose::reportCall(diagnose::Group::arguments, "no object is made of the word " + word.str());
    return;
  }
  made->setScene(this);
  made->initializeBehaviours(this, nullptr);
  addObject(made.release());
}

void CMC_Scene::removeAndDestroy(CMC_Object* object) {
  if (object == nullptr) return;
  const Ref<CMC_Object> keep(object);
  const bool isOurs = !isTypeOf(object->getType()) && removeObject(object);
  if (isOurs) {
    destroy(object);
  } else if (diagnose::isOn()) {
    diagnose::reportCall(diagnose::Group::object,
                         object->getName().str() + " is no object of " + getName().str());
  }
}

// External modules

void CMC_Scene::resolveDLLs(const CXString& list) {
  CStringTokenizer tokenizer(list, ", ");
  while (tokenizer.hasMoreTokens()) {
    modules_.push_back(std::make_unique<CMC_DLLExModuleInterface>(tokenizer.nextToken(), this));
  }
}

CMC_Object* CMC_Scene::resolveEx(const CMElement* element) {
  for (const auto& module : modules_) {
    CMC_ExternObject* extern_object = module->getObject();
    CMC_Object* made = extern_object != nullptr ? extern_object->resolve(this, element) : nullptr;
    if (made != nullptr) return made;
  }
  return nullptr;
}

CMC_Object* CMC_Scene::serializeEx(CXArchive& archive, int type) {
  for (const auto& module : modules_) {
    CMC_ExternObject* extern_object = module->getObject();
    CMC_Object* made = extern_object != nullptr ? extern_object->restore(this, archive, type) : nullptr;
    if (made != nullptr) return made;
  }
  return nullptr;
}

void CMC_Scene::doneDLLs() { modules_.clear(); }

}  // namespace footlight
