// What a tick of 16 milliseconds costs, painting left out (see frame_bench.cpp): with so many playing
// animations of ten frames, and with so many watched objects that all moved. Then what a second of so many
// voices costs the mixer. Half a tick is 8 milliseconds; a twentieth of a core is 50 milliseconds a second.

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

#include "app/mc_scene.h"
#include "gfx/animo.h"
#include "gfx/ann_format.h"
#include "gfx/collision_inspector.h"
#include "platform/sound_mixer.h"
#include "ratio_reporter.h"
#include "support/game_world.h"
#include "support/screen_world.h"

namespace footlight::bench {

namespace {

constexpr int kSide = 64;
constexpr int kFrames = 10;

std::vector<std::byte> animationFile() {
  AnnFile file;
  _annEventInfo3 event;
  event.name = "GO";
  event.loopTo = kFrames - 1;
  for (int i = 0; i < kFrames; ++i) {
    AnnFrame frame;
    frame.size = {kSide, kSide};
    frame.colour.assign(kSide * kSide * 2, static_cast<std::byte>(i * 20));
    frame.alpha.assign(kSide * kSide, std::byte{200});
    file.frames.push_back(std::move(frame));
    event.frames.push_back(i);
  }
  file.events.push_back(std::move(event));
  return writeAnn(file);
}

void playingAnimations(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  std::string main = "DEF:A(TYPE=ANIMO|FILENAME=A.ANN|TOCANVAS=TRUE|VISIBLE=TRUE|FPS=15)\n";
  test::Disk disk;
  disk["C:\\GAME\\Dane\\application.def"] =
      test::contentOf("DEF:MAIN(TYPE=SCENE)\nDEF:GAME(TYPE=APPLICATION|SCENES=MAIN)\n");
  disk["C:\\GAME\\Dane\\MAIN.cnv"] = test::contentOf(main);
  disk["C:\\GAME\\Dane\\A.ANN"] = std::make_shared<const std::vector<std::byte>>(animationFile());
  test::World world(disk, {.budget = 1 << 30});
  world.run(world.scene(), "STARTER", "A^CLONE(" + std::to_string(count) + ");");
  for (int i = 1; i <= count; ++i) {
    const std::string name = "A_" + std::to_string(i);
    const std::string place = std::to_string(i * 97 % 736) + "," + std::to_string(i * 61 % 536);
    world.run(world.scene(), "STARTER", name + "^SETPOSITION(" + place + ");" + name + "^PLAY(\"GO\");");
  }
  for (int i = 0; i < 5; ++i) world.tick();
  const auto* last = world.scene()->getGraphicsObject(CXString("A_" + std::to_string(count)));
  const auto* animation = dynamic_cast<const CAnimo*>(last);
  if (animation == nullptr || !animation->IsPlaying()) state.SkipWithError("nothing plays");
  for (auto round : state) {
    (void)round;
    world.tick();
  }
}
BENCHMARK(playingAnimations)->Arg(50)->Arg(500)->Arg(2000)->Unit(benchmark::kMicrosecond);

void movedAndWatched(benchmark::State& state) {
  test::ScreenWorld world({800, 600});
  world.open();
  CCollisionInspector inspector;
  std::vector<Owned<CGraphicsObject>> objects;
  for (int i = 0; i < state.range(0); ++i) {
    const CXPoint at(i * 97 % 760, i * 61 % 560);
    objects.push_back(test::plate(world.window.get(), {at.x, at.y, at.x + 32, at.y + 32}, 0x1234));
    inspector.addMonitoredObject(objects.back().get(), false);
  }
  int step = 1;
  for (auto round : state) {
    (void)round;
    step = -step;
    for (const auto& object : objects) {
      object->Move(step, 0);
      inspector.onPositionChanged(object.get());
    }
    inspector.tick();
  }
}
BENCHMARK(movedAndWatched)->Arg(20)->Arg(200)->Arg(2000)->Unit(benchmark::kMicrosecond);

void mixedVoices(benchmark::State& state) {
  platform::SoundMixer mixer;
  std::vector<std::unique_ptr<platform::SoundBuffer>> voices;
  for (int i = 0; i < state.range(0); ++i) {
    voices.push_back(mixer.createBuffer({.channels = 1 + i % 2, .rate = 22050, .bits = 16}, 88200));
    voices.back()->play(true);
  }
  std::vector<std::int16_t> samples(2048);
  constexpr int kRounds = platform::SoundMixer::kRate * 2 / 2048;  // of a second
  for (auto round : state) {
    (void)round;
    for (int i = 0; i < kRounds; ++i) mixer.mix(samples);
  }
}
BENCHMARK(mixedVoices)->Arg(8)->Arg(64)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace footlight::bench

int main(int count, char** words) { return footlight::bench::runAll(count, words); }
