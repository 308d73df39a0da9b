// Sequence files of more and more elements, to the tree that can be played and to its end: nodes of ten
// children, most of them sounds of files of their own, the rest figures that speak and further nodes. The
// time an element must stay the same.

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>

#include "app/application.h"
#include "files/resources_manager.h"
#include "gfx/window.h"
#include "sequence/multimedia_sequence_creator.h"
#include "sound/sound_manager.h"
#include "support/game_world.h"

namespace footlight {

namespace {

constexpr int kChildren = 10;
constexpr int kDeepest = 50;  // nodes of which each holds the next one

std::string element(int i) {
  const std::string name = "e" + std::to_string(i);
  const int above = (i - 1) / kChildren * kChildren;
  const std::string parent = above % (kChildren * kDeepest) == 0 ? "S" : "e" + std::to_string(above);
  std::string text = "NAME=" + name + "\n";
  if (i % kChildren > 1) text += name + ":FILENAME=" + name + ".wav\n";
  text += name + (i % kChildren > 1    ? ":TYPE=SIMPLE\n"
                  : i % kChildren == 1 ? ":TYPE=SPEAKING\n"
                                       : ":TYPE=SEQUENCE\n");
  return text + name + ":ADD=" + parent + "\n";
}

std::string text(int elements) {
  std::string made = "NAME=S\nS:TYPE=SEQUENCE\n";
  for (int i = 1; i <= elements; ++i) made += element(i);
  return made;
}

void loadSequence(benchmark::State& state) {
  test::Disk disk;
  const auto elements = static_cast<int>(state.range(0));
  disk["C:\\GAME\\S.SEQ"] = test::contentOf(text(elements));
  test::World world(disk, {});
  for (auto _ : state) {
    CResourcesManager resources(&world.window());
    CPlayableTree tree =
        CMultimediaSequenceCreator::load(&world.window(), "C:\\GAME\\S.SEQ", &resources, {}, nullptr);
    if (tree.root() == nullptr) std::exit(1);
    tree.end();
    resources.flush();
    state.PauseTiming();
    CWindow::soundsOf(&world.window())->domodal();  // forgets what has gone
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * elements);
}

}  // namespace

}  // namespace footlight

BENCHMARK(footlight::loadSequence)->Arg(1000)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
