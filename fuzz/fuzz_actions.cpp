// Orders of actions over a whole game of episodes and scenes: the bytes become procedures and handlers in the
// definitions of all levels, and then a list of what happens at which of 200 ticks: code that runs on some
// level, the mouse, keys, the window, lost surfaces.

#include <array>

#include "app/mc_application.h"
#include "cast.h"
#include "code_maker.h"
#include "oracle.h"
#include "state.h"

namespace footlight::fuzz {

using test::contentOf;

namespace {

constexpr int kTicks = 200;
constexpr int kBudget = 1600;
constexpr std::size_t kMostSteps = 64;
constexpr const char* kDane = "C:\\GAME\\Dane\\";
constexpr const char* kTree =
    "DEF:S1(TYPE=SCENE|MUSIC=one.wav)\nDEF:S2(TYPE=SCENE)\nDEF:S3(TYPE=SCENE|BACKGROUND=A.IMG)\nDEF:SOLO("
    "TYPE=SCENE)\n"
    "DEF:EP1(TYPE=EPISODE|SCENES=S1,S2|STARTWITH=S1)\nDEF:EP2(TYPE=EPISODE|SCENES=S3|STARTWITH=S3)\n"
    "DEF:GAME(TYPE=APPLICATION|EPISODES=EP1,EP2|SCENES=SOLO)\n";

// What happens between two ticks.
struct Step {
  enum class Kind { code, mouse, key, activation, loss };

  int ticks = 0;  // to run before it
  Kind kind = Kind::code;
  std::size_t level = 0;  // index in `levelOf`
  std::string name;       // of the procedure that runs the code
  std::string code;
  platform::MouseEvent mouse{platform::MouseEventKind::move, 0, 0};
  platform::KeyEvent key{0, false};
  int number = 0;
};

struct Plan {
  Disk disk;
  std::vector<Step> steps;
};

// The objects that code of any level may speak of.
const Cast& cast() {
  static const Cast made = [] {
    Cast result = wholeCast("S1");
    for (const char* scene : {"S2", "S3", "SOLO"}) result.know(scene, type::kScene);
    for (const char* episode : {"EP1", "EP2"}) result.know(episode, type::kEpisode);
    for (const char* name : {"HOOK1", "HOOK2", "BODY2"}) result.know(name, type::kBehaviour);
    return result;
  }();
  return made;
}

// Definitions

std::string code(CodeMaker& maker, InputBytes& bytes) {
  std::string text = "{";
  const std::size_t count = bytes.below(4);
  for (std::size_t i = 0; i < count && !bytes.isOver(); ++i)
    text += bytes.chance(192) ? maker.action() : maker.statement();
  return text + "}";
}

// Procedures, and objects with a handler for some signals of their type.
std::string procedures(CodeMaker& maker, InputBytes& bytes) {
  std::string text;
  for (const std::string name : {"BODY1", "BODY2", "BODY3"}) {
    text += "OBJECT=" + name + "\n" + name + ":TYPE=BEHAVIOUR\n";
    text += name + ":CODE=" + code(maker, bytes) + "\n";
    if (bytes.chance(32)) text += name + ":CONDITION=CONDITION1\n";
  }
  for (const std::string name : {"HOOK1", "HOOK2"}) {
    const ScriptType& description = *allTypes()[bytes.below(allTypes().size())];
    if (description.definitionWord == nullptr) continue;
    text += "OBJECT=" + name + "\n" + name + ":TYPE=" + description.definitionWord + "\n";
    const std::size_t count = bytes.below(4);
    for (std::size_t i = 0; i < count && !description.signals.empty(); ++i)
      text += name + ":" + bytes.oneOf(description.signals).name + "=" + code(maker, bytes) + "\n";
  }
  return text;
}

void addLevels(Disk& disk, CodeMaker& maker, InputBytes& bytes) {
  static const Cast whole = wholeCast("S1");
  static const Cast small = smallCast("GAME");
  const std::array texts{procedures(maker, bytes), procedures(maker, bytes), procedures(maker, bytes)};
  const auto put = [&disk](const char* name, const std::string& text) {
    disk[std::string(kDane) + name + ".cnv"] = contentOf(text);
  };
  for (const char* name : {"GAME", "EP1", "EP2"}) put(name, small.text + texts[0]);
  for (const char* name : {"S1", "S3"}) put(name, whole.text + texts[1]);
  for (const char* name : {"S2", "SOLO"}) put(name, whole.text + texts[2]);
}

// Steps

void fillMouse(Step& step, InputBytes& bytes) {
  using Kind = platform::MouseEventKind;
  constexpr Kind kKinds[] = {Kind::move, Kind::buttonDown, Kind::buttonUp, Kind::doubleClick};
  step.kind = Step::Kind::mouse;
  step.mouse.kind = bytes.oneOf(kKinds);
  step.mouse.x = static_cast<int>(bytes.below(32));
  step.mouse.y = static_cast<int>(bytes.below(24));
  step.mouse.button = static_cast<platform::MouseButton>(bytes.below(3));
}

Step nextStep(CodeMaker& maker, InputBytes& bytes) {
  Step step;
  step.ticks = static_cast<int>(bytes.below(8));
  switch (bytes.below(12)) {
    case 0:
      fillMouse(step, bytes);
      break;
    case 1:
      step.kind = Step::Kind::key;
      step.key = {static_cast<int>(bytes.below(64)), bytes.chance(128)};
      break;
    case 2:
      step.kind = bytes.chance(128) ? Step::Kind::activation : Step::Kind::loss;
      step.number = static_cast<int>(bytes.below(4));
      break;
    default:
      step.level = bytes.below(6);
      step.name = bytes.chance(128) ? "ACTION1" : "ACTION2";
      step.code = code(maker, bytes);
  }
  return step;
}

Plan planOf(InputBytes& bytes) {
  static const Disk base = [] {
    Disk disk;
    addCommonFiles(disk);
    disk[std::string(kDane) + "application.def"] = contentOf(kTree);
    return disk;
  }();
  Plan plan{base, {}};
  CodeMaker maker(bytes, cast());
  addLevels(plan.disk, maker, bytes);
  while (!bytes.isOver() && plan.steps.size() < kMostSteps) plan.steps.push_back(nextStep(maker, bytes));
  return plan;
}

// Playing

CMC_ObjectsContainer* levelOf(World& world, std::size_t index) {
  CMC_Scene* scene = world.scene();
  if (index == 3) return scene->getParent() != nullptr ? scene->getParent() : scene;
  if (index == 4) return world.game();
  auto* instance = index == 5 ? scene->CMC_ObjectsContainer::find<CMC_ObjectsContainer>("MADE1") : nullptr;
  return instance != nullptr ? instance : scene;
}

void loseSurfaces(platform::HeadlessDisplay& display, int which) {
  if (which == 0) display.loseScreen();
  if (which == 1) display.loseBackBuffer();
  if (which > 1) display.loseSurfaces();
}

void perform(World& world, const Step& step) {
  switch (step.kind) {
    case Step::Kind::code:
      world.run(levelOf(world, step.level), step.name, step.code);
      break;
    case Step::Kind::mouse:
      world.machine().input().put(step.mouse);
      break;
    case Step::Kind::key:
      world.machine().input().put(step.key);
      break;
    case Step::Kind::activation:
      world.window().OnActivateApp(step.number != 0);
      break;
    case Step::Kind::loss:
      loseSurfaces(world.machine().display(), step.number);
      break;
  }
}

std::string playSteps(World& world, const Plan& plan) {
  int tick = 0;
  for (const Step& step : plan.steps) {
    for (int i = 0; i < step.ticks && tick < kTicks; ++i, ++tick) world.tick();
    if (!world.hasEnded()) perform(world, step);
  }
  const std::string state = describe(world);
  for (; tick < kTicks; ++tick) world.tick();
  return state + describe(world);
}

void play(std::span<const std::uint8_t> input) {
  InputBytes bytes(input);
  const std::uint8_t choice = bytes.next();
  const Plan plan = planOf(bytes);
  playAndCompare(plan.disk, kBudget, choice, [&plan](World& world) { return playSteps(world, plan); });
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
