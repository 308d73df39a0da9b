// The text of a sequence, in a game that plays it: events, parameters, pauses and stops, objects that go
// meanwhile, for some ticks. The game stays whole, and leaves nothing behind.

#include "app/mc_application.h"
#include "cast.h"
#include "demand.h"
#include "input_bytes.h"
#include "objects/sound/mc_sequence.h"
#include "sequence/sequenced_playable.h"
#include "support/game_world.h"

namespace footlight::fuzz {

namespace {

constexpr std::size_t kActBytes = 24;
constexpr int kTicksOfAct = 3;

constexpr const char* kScene =
    "DEF:N(TYPE=INTEGER)\nDEF:LIST(TYPE=ARRAY)\nDEF:FIGURE(TYPE=ANIMO|FILENAME=A.ANN|VISIBLE=TRUE)\n"
    "DEF:VOICE(TYPE=SOUND|FILENAME=A.WAV)\nDEF:S(TYPE=SEQUENCE|FILENAME=S.SEQ|ONSTARTED=CODE|ONFINISHED=CODE)"
    "\n"
    "DEF:CODE(TYPE=BEHAVIOUR|CODE={N^INC();})\nS:ONSTARTED^B={S^STOP(FALSE);}\nS:ONFINISHED^A={S^PLAY(\"E\");"
    "}\n"
    "S:ONFINISHED^C={MAIN^REMOVE(\"FIGURE\");}\nS:ONSTARTED^D={MAIN^REMOVE(\"S\");}\n";

constexpr const char* kActs[] = {
    "S^PLAY(\"E\");",
    "S^PLAY(\"E\",\"12\");",
    "S^PLAY(\"\",\"2a\");",
    "LIST^ADD(0,1,2);S^PLAY(\"E\",\"LIST\");",
    "S^STOP();",
    "S^STOP(FALSE);",
    "S^PAUSE();",
    "S^RESUME();",
    "S^HIDE();S^SHOW();",
    "S^SETVOLUME(300);S^SETPAN(9);S^SETFREQ(9000);",
    "N^SET(S^GETEVENTNAME(\"a\"));N^SET(S^GETPLAYING());",
    "MAIN^PAUSE();",
    "MAIN^RESUME();",
    "FIGURE^LOAD(\"B.ANN\");",
    "FIGURE^PLAY(\"ROUND\");",
    "MAIN^REMOVE(\"VOICE\");",
};

void seek(test::World& world, int place) {
  const auto* object = world.scene()->CMC_ObjectsContainer::find<CMC_Sequence>("S");
  auto* root = object != nullptr ? dynamic_cast<CSequencedPlayable*>(object->getLoadedSequence()) : nullptr;
  if (root == nullptr) return;
  const Ref<CXObject> keep(root);
  root->seek(place);
  demand(root->getCurrent() >= -1 && root->getCurrent() < root->getChildrenCount());
  root->move(place, 1);
  root->get("E");
}

void play(std::span<const std::uint8_t> data) {
  InputBytes input(data.first(std::min(data.size(), kActBytes)));
  Disk disk;
  addCommonFiles(disk);
  const std::string dane = "C:\\GAME\\Dane\\";
  disk[dane + "application.def"] = test::contentOf(
      "DEF:MAIN(TYPE=SCENE)\nDEF:LAST(TYPE=SCENE)\nDEF:GAME(TYPE=APPLICATION|SCENES=MAIN,LAST)\n");
  disk[dane + "MAIN.cnv"] = test::contentOf(kScene);
  disk[dane + "S.SEQ"] = test::contentOf(textOf(data.subspan(std::min(data.size(), kActBytes))));
  test::World world(disk, {.literal = false, .budget = 1 << 12});
  world.tick();
  for (std::size_t i = 0; i < kActBytes && !world.hasEnded(); ++i) {
    const std::uint8_t act = input.next();
    if (act >= 240) {
      seek(world, static_cast<int>(act) - 246);
    } else {
      world.run(world.scene(), "ACT", kActs[act % std::size(kActs)]);
    }
    for (int k = 0; k < kTicksOfAct; ++k) world.tick();
  }
  world.run(world.game(), "END", "GAME^GOTO(\"LAST\");");
  world.tick();
  world.tick();
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
