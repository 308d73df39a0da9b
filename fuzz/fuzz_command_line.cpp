// A command line, a word a line: the host's part and the engine's. It asks for a run, or there is a message.

#include "demand.h"
#include "foundation/command_line6.h"
#include "host/options.h"

namespace footlight::fuzz {

namespace {

void play(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty() && words.size() < 64) {
    const std::string_view word = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    words.emplace_back(word.substr(0, word.find('\0')));
  }
  std::vector<const char*> pointers;
  for (const std::string& word : words) pointers.push_back(word.c_str());
  const host::Parsed parsed = host::parseOptions(pointers);
  demand(parsed.options.has_value() == parsed.message.empty());
  if (!parsed.options) return;
  const CCommandLine6 line(parsed.options->engineLine);
  demand(line.getNoArgs() <= static_cast<int>(parsed.options->engineLine.size()));
  line.getResolution();
  demand(line.getPath().Length() <= static_cast<int>(parsed.options->engineLine.size()));
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play(footlight::fuzz::textOf({data, size}));
  return 0;
}
