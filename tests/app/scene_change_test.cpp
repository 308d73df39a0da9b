// What must not outlive a scene, where scripts cannot see it.

#include <gtest/gtest.h>

#include "app/mc_scene.h"
#include "input/cursor_clip.h"
#include "support/game_world.h"

namespace footlight {
namespace {

using test::contentOf;
using test::Disk;
using test::World;

Disk twoScenes() {
  const std::string dane = "C:\\GAME\\Dane\\";
  return {{dane + "application.def",
           contentOf("DEF:A(TYPE=SCENE)\nDEF:B(TYPE=SCENE)\nDEF:GAME(TYPE=APPLICATION|SCENES=A,B)\n")},
          {dane + "GAME.cnv", contentOf("DEF:M(TYPE=MOUSE)\n")}};
}

TEST(SceneChange, FreesTheCursorForGood) {
  const Disk disk = twoScenes();
  World world(disk, {});
  world.tick();
  world.run(world.scene(), "CLIP", "{MOUSE^SETCLIPRECT(10,10,60,60);}");
  ASSERT_TRUE(world.machine().shell().clip().has_value());
  world.run(world.scene(), "LEAVE", "{GAME^GOTO(\"B\");}");
  world.tick();
  world.tick();
  ASSERT_EQ(world.scene()->getName(), "B");
  EXPECT_FALSE(world.machine().shell().clip().has_value());
  CCursorClip::restore();
  EXPECT_FALSE(world.machine().shell().clip().has_value()) << "not when the window comes back either";
}

}  // namespace
}  // namespace footlight
