// A script of events as for --input: read, and played into the devices. A script with a fault plays nothing.

#include "demand.h"
#include "platform/input_script.h"

namespace footlight::fuzz {

namespace {

void play(std::string_view text) {
  platform::InputScript script;
  const std::string fault = script.parse(text, "script");
  demand(fault.empty() || script.lines().empty());
  platform::InputQueue devices(false);
  if (script.usesController()) devices.connectController(0);
  std::vector<platform::WindowEvent> windowEvents;
  for (std::uint32_t tick = 1; tick < 20; ++tick) script.play(tick, devices, windowEvents);
  script.play(0xFFFFFFFFU, devices, windowEvents);
  demand(windowEvents.size() <= script.lines().size());
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play(footlight::fuzz::textOf({data, size}));
  return 0;
}
