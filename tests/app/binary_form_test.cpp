// What storing must leave alone in a game that runs, and what a damaged form must not do.

#include <gtest/gtest.h>

#include "app/mc_application.h"
#include "app/mc_scene.h"
#include "foundation/code_page.h"
#include "script/mc_variable.h"
#include "support/game_world.h"

namespace footlight {
namespace {

using test::contentOf;
using test::Disk;
using test::World;

const std::string kDane = "C:\\GAME\\Dane\\";

// The name as a world gives the files that it has changed.
std::string fileOf(const std::string& name) { return code_page::foldCase(kDane + name); }

Disk textForm() {
  return {{kDane + "application.def", contentOf("DEF:A(TYPE=SCENE|MUSIC=tune.wav)\nDEF:B(TYPE=SCENE|MUSIC="
                                                "tune.wav)\nDEF:ACT(TYPE=EPISODE|SCENES=A,B|STARTWITH=A)\n"
                                                "DEF:GAME(TYPE=APPLICATION|EPISODES=ACT)\n")},
          {kDane + "GAME.cnv", contentOf("DEF:M(TYPE=MOUSE)\nDEF:TOLD(TYPE=STRING)\n")},
          {kDane + "ACT.cnv", contentOf("DEF:KEEP(TYPE=BEHAVIOUR|CODE={TOLD^ADD(\"k\");})\n")},
          {kDane + "A.cnv",
           contentOf(
               "OBJECT=A\nA:ONINIT={TOLD^ADD(\"i\");}\nA:ONDONE={TOLD^ADD(\"d\");}\nDEF:N(TYPE=INTEGER|VALUE="
               "1|ONDONE=KEEP)\n"
               "DEF:P(TYPE=IMAGE|FILENAME=p.img|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=3|ONINIT={N^INC();})\n"
               "DEF:BOX(TYPE=EDITBOX|RECT=1,2,3,4|TEXT=old)\nDEF:T(TYPE=TIMER|ELAPSE=16|ONTICK={N^INC();})\n"
               "DEF:M(TYPE=MOUSE|ONCLICK=KEEP)\n")},
          {kDane + "B.cnv", contentOf("OBJECT=B\nB:ONINIT={TOLD^ADD(\"b\");}\n")}};
}

CXString textOf(const World& world, const char* name) {
  CMC_Object* object = world.scene()->getObject(std::string_view(name));
  return object != nullptr ? object->toString() : CXString("none");
}

Disk storedForm() {
  const Disk text = textForm();
  World world(text, {});
  world.run(world.scene(), "FORGET", "{TOLD^SET(\"\");}");  // what the application holds is stored as it is
  world.game()->storeBinary();
  Disk stored;
  for (const auto& [name, content] : world.files().changes()) {
    if (name.ends_with(fileOf(".bin").substr(kDane.size()))) stored[name] = content;
  }
  return stored;
}

TEST(BinaryForm, IsStoredWhileTheGameRuns) {
  const Disk disk = textForm();
  World world(disk, {});
  world.tick();
  world.run(world.scene(), "CHANGE", "{P^HIDE();P^SETPRIORITY(9);BOX^SETTEXT(\"new\");}");
  const CXString told = textOf(world, "TOLD");
  const CXString count = textOf(world, "N");
  const CMC_Object* mouse = world.scene()->getObject("MOUSE");
  const std::size_t bound = mouse->storedBindings().size();
  const int objects = world.scene()->getElementsNo();
  world.run(world.scene(), "STORE", "{GAME^STOREBINARY();}");
  EXPECT_EQ(textOf(world, "TOLD"), told) << "no code of the game has run";
  EXPECT_EQ(textOf(world, "N"), count);
  EXPECT_EQ(mouse->storedBindings().size(), bound);
  EXPECT_EQ(world.scene()->getElementsNo(), objects + 1) << "only the behaviour that stored";
  world.run(world.scene(), "ASK",
            "{@STRING(\"S\",\"\");S^ADD(P^ISVISIBLE());S^ADD(BOX^GETTEXT());TOLD^SET(S);}");
  EXPECT_EQ(textOf(world, "TOLD"), "FALSEnew");
  world.run(world.scene(), "AGAIN", "{N^SET(0);}");
  world.tick();
  EXPECT_EQ(textOf(world, "N"), "1") << "one timer ticks";
}

TEST(BinaryForm, PlaysLikeTheText) {
  const Disk stored = storedForm();
  EXPECT_EQ(stored.size(), 5U);
  CXString told;
  for (const bool isBinary : {false, true}) {
    const Disk disk = isBinary ? stored : textForm();
    World world(disk, {});
    ASSERT_NE(world.game(), nullptr);
    EXPECT_EQ(world.game()->isBinary(), isBinary);
    EXPECT_EQ(world.game()->find("ACT")->find("B")->getMusicFilename(), "tune.wav") << "before it is entered";
    EXPECT_EQ(textOf(world, "N"), "2");
    world.tick();
    EXPECT_EQ(textOf(world, "N"), "3");
    for (const char* scene : {"B", "A"}) {
      world.run(world.game()->find("ACT"), "GO", "{ACT^GOTO(\"" + std::string(scene) + "\");}");
      world.tick();
    }
    if (isBinary) EXPECT_EQ(textOf(world, "TOLD"), told);
    told = textOf(world, "TOLD");
    EXPECT_TRUE(told.view().starts_with("ik") && told.view().ends_with("bi")) << told.str();
  }
}

// Cut anywhere, the game starts or says that it cannot, and ends well.
TEST(BinaryForm, MayBeCutAtEveryByte) {
  const Disk whole = storedForm();
  for (const char* name : {"application.bin", "GAME.bin", "A.bin"}) {
    Disk disk = whole;
    const auto& bytes = *whole.at(fileOf(name));
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      disk[fileOf(name)] = std::make_shared<const std::vector<std::byte>>(
          bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
      World world(disk, {});
      world.tick();
      EXPECT_TRUE(world.game() != nullptr || name == std::string("application.bin")) << name << " " << size;
    }
  }
}

}  // namespace
}  // namespace footlight
