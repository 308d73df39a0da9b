#include "app/mc_application.h"

#include "app/mc_episode.h"
#include "app/structure_parser.h"
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

CMC_Application::~CMC_Application() = default;

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
