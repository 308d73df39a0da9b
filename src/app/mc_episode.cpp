#include "app/mc_episode.h"

#include <algorithm>

#include "app/level_copy.h"
#include "app/level_words.h"
#include "app/structure_parser.h"
#include "files/archive.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr int kNone = -1;

}  // namespace

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

bool CMC_Episode::passScenes(CXArchive& archive, CMC_Scene& parent, std::vector<Owned<CMC_Scene>>& scenes) {
  const std::vector<CMC_Scene*> stored = getSubScenes();
  int count = static_cast<int>(stored.size());
  int start = getSubId(startWith_);
  archive.pass(count);
  archive.pass(start);
  for (CMC_Scene* scene : stored) CLevelCopy(*scene, &parent)->serialize(archive);
  for (int i = 0; !archive.isStoring() && i < count && !archive.hasFailed(); ++i) readScene(archive, scenes);
  if (archive.isStoring()) return true;
  const auto& read = getSubScenes();
  const bool isThere = start >= 0 && start < std::ssize(read);
  if (start != kNone && !read.empty())
    startWith_ = isThere ? read[static_cast<std::size_t>(start)] : read.front();
  return count != kNone;
}

void CMC_Episode::readScene(CXArchive& archive, std::vector<Owned<CMC_Scene>>& scenes) {
  Owned<CMC_Scene> made(new CMC_Scene(getWindow()));
  made->serialize(archive);
  if (archive.hasFailed()) return;
  const auto known = std::ranges::find_if(scenes, [&](const auto& scene) {
    return scene->getType() == type::kScene && scene->getName() == made->getName();
  });
  if (known != scenes.end()) return addSubScene(known->get());
  addSubScene(made.get());
  scenes.push_back(std::move(made));
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
    {1, "NEXT", "", method<next>,
     "Goes to the scene behind the current one in SCENES; does nothing at the last."},
    {2, "PREV", "", method<prev>,
     "Goes to the scene in front of the current one in SCENES; does nothing at the first."},
    {3, "BACK", "", method<back>,
     "Goes back to the scene that was shown before this one; does nothing in the first."},
    {4, "RESTART", "", method<restart>, "Goes to the first of its scenes and raises ONRESTART."},
    {5, "GOTO", "scene:name", method<gotoScene>, "Goes to a scene of the episode with the next step."},
    {6, "GETLATESTSCENE", "-> text", method<getLatestScene>, "The name of the scene that was left last."},
    {7, "GETCURRENTSCENE", "-> text", method<getCurrentScene>, "The name of its scene that runs."},
};

constexpr auto kProperties = level_words::withProperties({
    {"SCENES", PropertyKind::list, "", "Its scenes, in the order of NEXT and PREV."},
    {"STARTWITH", PropertyKind::name, "", "The scene where it begins; without it none runs."},
});

}  // namespace

extern constinit const ScriptType kEpisodeType = {
    .number = type::kEpisode,
    .idWord = "EPISODE",
    .stringWord = "EPISODE",
    .meaning = "A part of the game with scenes of its own.",
    .signals = level_words::kSignals,
    .properties = kProperties,
    .methods = kMethods,
};

}  // namespace footlight
