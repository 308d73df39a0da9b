// An INI file, and values that are put into it and asked for: names and values are pieces of the input, the
// rest is the file at first. What reads back reads back from the disk too, and a value that was put stays
// where others are put.

#include "demand.h"
#include "files/config.h"
#include "input_bytes.h"

namespace footlight::fuzz {

namespace {

constexpr const char* kName = "C:\\GAME\\game.ini";
constexpr int kMostPuts = 12;

struct Put {
  CXString section, key, value;
};

CXString takeText(InputBytes& input, std::size_t most) { return CXString(input.text(input.below(most))); }

void play(std::span<const std::uint8_t> data) {
  InputBytes input(data);
  std::vector<Put> puts(input.below(kMostPuts));
  for (Put& put : puts) {
    put.section = takeText(input, 6);
    put.key = takeText(input, 6);
    put.value = takeText(input, 20);
  }
  const test::Disk disk{{kName, test::contentOf(input.rest())}};
  Machine machine(disk);
  CConfig config(kName);
  for (const Put& put : puts) {
    config.PutString(put.section, put.key, put.value);
    machine->clock().advance(put.value.Length() * 16U);
    config.tick();
    const CXString now = config.GetString(put.section, put.key);
    demand(CConfig(kName).GetString(put.section, put.key) == now);
    config.PutInt("other section", put.key, 1);
    demand(config.GetString(put.section, put.key) == now);
  }
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
