// The binary form of a game. The first byte says what the others are: 0 "application.bin", `d` with any
// second byte the text of a scene, which is stored first, and any other the file of the scene of a whole
// game. The game runs for some ticks. What of the scene was read is stored again, and that in turn: the two
// must be the same.

#include "app/mc_application.h"
#include "app/mc_scene.h"
#include "cast.h"
#include "demand.h"
#include "foundation/byte_writer.h"
#include "foundation/code_page.h"
#include "support/game_world.h"

namespace footlight::fuzz {

namespace {

constexpr int kTicks = 6;
using Bytes = std::vector<std::byte>;
const std::string kEnding = code_page::foldCase(".bin");

// As a world names the files that it has changed.
std::string fileOf(const std::string& name) { return code_page::foldCase("C:\\GAME\\Dane\\" + name); }

ByteWriter& text(ByteWriter& out, std::string_view characters) {
  return out.i32(static_cast<std::int32_t>(characters.size())).text(characters);
}

// An application with an episode, and in it a scene.
std::string wholeApplication() {
  ByteWriter out;
  const auto identity = [&out](std::string_view name) -> ByteWriter& {
    text(text(out, name).i32(0), "");
    return out;
  };
  identity("GAME").i32(1).i32(0);
  identity("ACT").i32(1).i32(0);
  identity("MAIN");
  const auto bytes = out.written();
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// What a game leaves that was stored by itself: the files of its levels.
Disk storedBy(const Disk& disk) {
  test::World world(disk, {.literal = false, .budget = 1 << 12});
  if (world.game() == nullptr) return {};
  world.game()->storeBinary();
  Disk stored = disk;
  for (const auto& [name, content] : world.files().changes()) {
    if (name.ends_with(kEnding) && content) stored[name] = content;
  }
  return stored;
}

void play(const Disk& disk) {
  test::World world(disk, {.literal = false, .budget = 1 << 12});
  for (int tick = 0; tick < kTicks; ++tick) world.tick();
  if (world.game() != nullptr) world.run(world.game(), "AGAIN", "GAME^STOREBINARY();GAME^RESTART();");
  for (int tick = 0; tick < kTicks; ++tick) world.tick();
}

void run(std::span<const std::uint8_t> data) {
  const std::uint8_t kind = data.empty() ? std::uint8_t{0} : data[0];
  const std::string_view rest = textOf(data.subspan(std::min<std::size_t>(data.size(), kind == 'd' ? 2 : 1)));
  Disk disk;
  addCommonFiles(disk);
  if (kind == 'd') {
    disk[fileOf("application.def")] = test::contentOf(
        "DEF:MAIN(TYPE=SCENE)\nDEF:ACT(TYPE=EPISODE|SCENES=MAIN|STARTWITH=MAIN)\n"
        "DEF:GAME(TYPE=APPLICATION|EPISODES=ACT)\n");
    disk[fileOf("MAIN.cnv")] = test::contentOf(rest);
    disk = storedBy(disk);
  } else {
    disk[fileOf("application.bin")] =
        test::contentOf(kind != 0 ? std::string_view(wholeApplication()) : rest);
    disk[fileOf("MAIN.bin")] = test::contentOf(kind != 0 ? rest : std::string_view());
  }
  play(disk);
  const Disk once = storedBy(disk);
  const Disk twice = storedBy(once);
  const auto scene = [](const Disk& of) {
    const auto found = of.find(fileOf("MAIN.bin"));
    return found != of.end() ? *found->second : Bytes();
  };
  if (kind != 0) demand(scene(once) == scene(twice));
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::run({data, size});
  return 0;
}
