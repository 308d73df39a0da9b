// A sound file, decoded as a whole and streamed, with other settings of the voice meanwhile. What plays twice
// sounds the same.

#include <cstdlib>

#include "foundation/limits.h"
#include "input_bytes.h"
#include "platform/headless/headless_platform.h"
#include "sound/snd_stream.h"
#include "sound/sound4.h"
#include "sound/sound_codec.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

namespace {

constexpr int kSettings = 6;
constexpr std::uint32_t kStep = 40;  // milliseconds

void demand(bool holds) {
  if (!holds) std::abort();
}

void playWhole(InputBytes& input, platform::HeadlessPlatform& machine) {
  CSound4 sound(nullptr);
  const bool isLoaded = sound.Load("a.wav");
  sound.play();
  demand(sound.isPlaying() == isLoaded);
  for (int i = 0; i < kSettings; ++i) {
    sound.setVolume(-static_cast<int>(input.next()) * 50);
    sound.setPanning((static_cast<int>(input.next()) - 128) * 80);
    sound.setFrequency(static_cast<int>(input.next()) * 900);
    sound.SetPosition(static_cast<int>(input.next()) * 17 - 100);
    machine.clock().advance(kStep);
    if (input.next() % 4 == 0) sound.pause();
    if (input.next() % 2 == 0) sound.resume();
  }
}

void playStream(InputBytes& input, platform::HeadlessPlatform& machine) {
  CSndStream stream(nullptr, "a.wav");
  stream.Play(input.next() % 2 == 0);
  demand(stream.GetBufferSize() <= 4 << 20);
  for (int i = 0; i < kSettings; ++i) {
    stream.setFreq(static_cast<int>(input.next()) * 900);
    machine.clock().advance(kStep * (1 + input.next() % 16U));
    if (input.next() % 8 == 0) stream.Stop();
    if (input.next() % 4 == 0) stream.Resume();
  }
}

void checkSound(std::span<const std::uint8_t> data) {
  constexpr std::size_t kSettingBytes = 64;
  InputBytes input(data.first(std::min(data.size(), kSettingBytes)));
  const auto bytes = std::as_bytes(data.subspan(std::min(data.size(), kSettingBytes)));
  const test::Disk disk = {
      {"C:\\GAME\\a.wav", std::make_shared<const std::vector<std::byte>>(bytes.begin(), bytes.end())}};
  platform::HeadlessPlatform machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  CSoundCodec::init_codecs();
  playWhole(input, machine);
  playStream(input, machine);
  CSoundCodec::done_codecs();
  platform::use(nullptr);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkSound({data, size});
  return 0;
}
