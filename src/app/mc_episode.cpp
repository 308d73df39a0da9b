#include "app/mc_episode.h"

#include "app/structure_parser.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/method_tables.h"

namespace footlight {

CMC_Episode::CMC_Episode(CWindow* window, const CMElement* element, const CMC_StructureParser& built)
    : CMC_Scene(window, element, type::kEpisode) {
  CStringTokenizer names(element->getPropertyValue("SCENES"), ", ");
  while (names.hasMoreTokens()) addSubScene(built.getReported(names.nextToken(), *element, "SCENES"));
  const CXString start = element->getPropertyValue("STARTWITH");
  if (start.IsEmpty()) {
    reportNoStart(*element);
    return;
  }
  startWith_ = find(start);
  if (startWith_ != nullptr) return;
  CMC_StructureParser::reportMissing(start, *element, "STARTWITH");
  if (!getSubScenes().empty()) startWith_ = getSubScenes().front();
}

// Such an episode waits for a GOTO.
void CMC_Episode::reportNoStart(const CMElement& element) {
  if (!diagnose::isOn()) return;
  diagnose::report(diagnose::Group::definition, element.getName(), "",
                   "has no STARTWITH: it is entered without a scene", element.origin());
}

bool CMC_Episode::initialize(CMC_Scene* /*previous*/) {
  enterLevelFolder();
  enterParents();
  loadCnv();
  initContents();
  if (startWith_ == nullptr) {
    clearCurrentScene();
    return false;
  }
  _goto(startWith_, nullptr);
  return true;
}

void CMC_Episode::unload(CMC_Scene* next) {
  const CMC_Scene* leaving = getCurrentScene();
  if (leaving == nullptr) return;
  if (getBehaviour("ONDONE") != nullptr) onSignal("ONDONE");
  latestScene_ = leaving->getName();
  unloadSubScene(next);
}

// Scripts' methods

namespace {

Result next(CMC_Episode& episode, Call& /*call*/) {
  if (CMC_Scene* scene = episode.getNextScene()) episode.setPending(scene);
  return {};
}

Result prev(CMC_Episode& episode, Call& /*call*/) {
  if (CMC_Scene* scene = episode.getPreviousScene()) episode.setPending(scene);
  return {};
}

Result back(CMC_Episode& episode, Call& /*call*/) {
  episode.back();
  return {};
}

Result restart(CMC_Episode& episode, Call& /*call*/) {
  episode.restart();
  return {};
}

Result gotoScene(CMC_Episode& episode, Call& call) {
  episode.setPending(episode.findReported(call.text(0)));
  return {};
}

Result getLatestScene(CMC_Episode& episode, Call& /*call*/) {
  return CMC_VariableFactory::makeString(episode.getLatestScene());
}

Result getCurrentScene(CMC_Episode& episode, Call& /*call*/) {
  const CMC_Scene* scene = episode.getCurrentScene();
  return CMC_VariableFactory::makeString(scene != nullptr ? scene->getName() : CXString());
}

constexpr Method kMethods[] = {
    {1, "NEXT", 0, 0, method<next>},
    {2, "PREV", 0, 0, method<prev>},
    {3, "BACK", 0, 0, method<back>},
    {4, "RESTART", 0, 0, method<restart>},
    {5, "GOTO", 1, 1, method<gotoScene>},
    {6, "GETLATESTSCENE", 0, 0, method<getLatestScene>},
    {7, "GETCURRENTSCENE", 0, 0, method<getCurrentScene>},
};

}  // namespace

std::span<const Method> methods::episode() { return kMethods; }

}  // namespace footlight
