#include "app/mc_application.h"

#include "app/level_copy.h"
#include "app/mc_episode.h"
#include "app/structure_parser.h"
#include "files/archive.h"
#include "files/file.h"
#include "files/path.h"
#include "foundation/depth.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "script/mc_behaviour.h"
#include "script/mc_plain_object.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr const char* kDataFolder = "Dane";
constexpr int kNoEpisode = -1;

}  // namespace

CMC_Application::CMC_Application(CWindow* window, const CMElement* element, const CMC_StructureParser& built)
    : CMC_Scene(window, element, type::kApplication) {
  if (getName() == "DEMO") setName("GAME");
  CMC_Behaviour::initTrash();
  CStringTokenizer episodes(element->getPropertyValue("EPISODES"), ", ");
  while (episodes.hasMoreTokens()) {
    CMC_Scene* episode = built.getReported(episodes.nextToken(), *element, "EPISODES");
    if (episode == nullptr) continue;
    addSubScene(episode);
    for (CMC_Scene* scene : episode->getSubScenes()) addObject(scene);
  }
  CStringTokenizer scenes(element->getPropertyValue("SCENES"), ", ");
  while (scenes.hasMoreTokens()) {
    CMC_Scene* scene = built.getReported(scenes.nextToken(), *element, "SCENES");
    addSubScene(scene);
    addObject(scene);
  }
  const CXString start = element->getPropertyValue("STARTWITH");
  if (start.IsString()) startWith_ = built.getReported(start, *element, "STARTWITH");
  if (startWith_ == nullptr && !getSubScenes().empty()) startWith_ = getSubScenes().front();
  enterLevelFolder();
  loadCnv();
}

CMC_Application::CMC_Application(CWindow* window) : CMC_Scene(window, type::kApplication) {
  CMC_Behaviour::initTrash();
  {
    CFile file(window, kBinaryFile, CFile::kReadBinary);
    CXArchive archive(file);
    serialize(archive);
    isWhole_ = !archive.hasFailed();
    if (!isWhole_) reportMisfit(file.getFileName(), archive.position(), "application.def");
  }
  for (const auto& level : levels_) level->readHead();
  readHead();
  enterLevelFolder();
  loadCnv();
}

// Levels know each other, so all let go of their objects before the first one ends.
CMC_Application::~CMC_Application() {
  for (const auto& level : levels_) level->letGo();
  letGo();
}

void CMC_Application::close() {
  const Ref<CMC_Application> self(this);
  onSignal("ONDONE");
  unloadSubScene(nullptr);
  CMC_ObjectsContainer::unload();
  for (CMC_Scene* scene : getSubScenes()) {
    if (scene->getType() == type::kEpisode) scene->CMC_ObjectsContainer::unload();
  }
  CMC_Behaviour::doneTrash();
  doneDefUnit();
}

// The binary form

// A scene that stands in no episode counts as one, with no count of scenes.
void CMC_Application::storeLevel(CXArchive& archive, CMC_Scene& level) {
  const CLevelCopy copy(level, this);
  copy->serialize(archive);
  if (auto* episode = object_cast<CMC_Episode>(&level)) {
    episode->passScenes(archive, *copy, levels_);
  } else {
    archive.store(kNoEpisode);
    archive.store(kNoEpisode);
  }
}

void CMC_Application::readLevel(CXArchive& archive) {
  Owned<CMC_Scene> made(new CMC_Episode(getWindow()));
  made->serialize(archive);
  if (archive.hasFailed()) return;
  const bool isEpisode = static_cast<CMC_Episode&>(*made).passScenes(archive, *made, levels_);
  if (!isEpisode) {
    Owned<CMC_Scene> scene(new CMC_Scene(getWindow()));
    scene->takeLevel(*made);
    made = std::move(scene);
  }
  addSubScene(made.get());
  if (!isEpisode) addObject(made.get());
  for (CMC_Scene* scene : made->getSubScenes()) addObject(scene);
  levels_.push_back(std::move(made));
}

void CMC_Application::serialize(CXArchive& archive) {
  constexpr std::size_t kLevelBytes = 20;
  CMC_Scene::serialize(archive);
  const std::vector<CMC_Scene*> levels = getSubScenes();
  int count = archive.passCount(levels.size(), kLevelBytes);
  int start = getSubId(startWith_);
  archive.pass(start);
  if (archive.isStoring()) {
    for (CMC_Scene* level : levels) storeLevel(archive, *level);
    return;
  }
  for (; count > 0 && !archive.hasFailed(); --count) readLevel(archive);
  const auto& read = getSubScenes();
  const bool isThere = start >= 0 && start < std::ssize(read);
  if (!read.empty()) startWith_ = isThere ? read[static_cast<std::size_t>(start)] : read.front();
}

// The file of an application of that name would be the file of the whole game.
bool CMC_Application::isNameTaken() const {
  return getPath().IsEmpty() && (getName() + ".bin").equalsIgnoreCase(kBinaryFile);
}

bool CMC_Application::storeBinary() {
  if (isNameTaken()) {
    diagnose::report(diagnose::Group::file, getName(), "",
                     "an application of this name needs a PATH to be stored");
    return false;
  }
  const CXString here = CFile::getCurrentDirectory();
  const bool isInRoot = CFile::chDir(CPath::getFullPath(CWindow::getRootPath(), kDataFolder)) == 0;
  if (!isInRoot) CFile::chDir(CPath::getFullPath(getWindow()->getDataRoot(), kDataFolder));
  CXArchive archive(getWindow(), CFile::getCurrentDirectory() + kBinaryFile);
  serialize(archive);
  const bool isStored = archive.Close();
  CFile::chDir(here);
  if (!isStored && diagnose::isOn())
    diagnose::report(diagnose::Group::file, kBinaryFile, "", "the binary form could not be stored");
  return isStored;
}

bool CMC_Application::initialize(CMC_Scene* /*previous*/) {
  addObject(new CMC_PlainObject("RANDOM", type::kRandom));
  addObject(new CMC_System());
  addObject(new CMC_CNVLoader(getWindow()));
  initContents();
  if (startWith_ == nullptr) return false;
  _goto(startWith_, nullptr);
  return true;
}

void CMC_Application::domodal() {
  CMC_VariableFactory::clearPool();
  CMC_Behaviour::flushTrash();
  CMC_Scene::domodal();
}

void CMC_Application::restart() {
  if (startWith_ == nullptr) return;
  if (getCurrentScene() == startWith_) {
    startWith_->restart();
    return;
  }
  const DepthGuard depth;  // the start may ask for another one
  if (!depth) return;
  unloadSubScene(startWith_);
  makeCurrent(startWith_);
  startWith_->initialize(nullptr);
}

void CMC_Application::unload(CMC_Scene* next) {
  if (getCurrentScene() == nullptr) return;
  onSignal("ONDONE");
  unloadSubScene(next);
}

void CMC_Application::exit() {
  getWindow()->quit();
  onSignal("ONEXIT");
}

}  // namespace footlight
