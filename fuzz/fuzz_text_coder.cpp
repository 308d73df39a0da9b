// A text file, plain or coded: read line by line, coded with a cycle that the first two bytes choose, and
// decoded. What went through both once goes through them unchanged, where the form can hold it.

#include <algorithm>

#include "demand.h"
#include "files/text_coder.h"

namespace footlight::fuzz {

namespace {

void readAll(const CXString& name, std::size_t size) {
  CTextCoder coder(nullptr, name, true);
  for (std::size_t lines = 0; coder.LastError() == 0 && !coder._eof(); ++lines) {
    demand(lines <= 2 * size + 2);  // a line takes bytes, so there is an end
    coder.getLine();
  }
}

std::string contentOf(const char* name) {
  const auto bytes = platform::current().files().readWhole(name, std::int64_t{1} << 24);
  if (!bytes) return {};
  return std::string(textOf({reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()}));
}

// Whether no shifted byte reads as a mark or a line feed, for which the form has no escape.
bool isWhole(const std::string& plain, std::string_view coded, int cycle) {
  std::ptrdiff_t lines = std::ranges::count(plain, '\n');
  if (!plain.empty() && !plain.ends_with('\n')) ++lines;
  std::ptrdiff_t marks = 0;
  for (std::size_t at = 0; (at = coded.find("<E>", at)) != std::string_view::npos; at += 3) ++marks;
  return marks == lines && std::ranges::count(coded, '\n') == 1 + (lines + cycle - 1) / cycle;
}

// The end of coded text shows by a line that is not there, so each round adds a line feed.
std::string withoutEnd(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

void play(std::span<const std::uint8_t> data) {
  const std::size_t head = std::min<std::size_t>(data.size(), 2);
  const int cycle = head == 2 ? 1 + data[0] + 256 * (data[1] % 128) : 1;
  const test::Disk disk{{"C:\\GAME\\a", test::contentOf(textOf(data.subspan(head)))}};
  const Machine machine(disk);
  readAll("a", data.size());
  CTextCoder::decode(nullptr, "a", "plain");
  CTextCoder::code(nullptr, "a", "b", cycle);
  readAll("b", 2 * data.size());
  CTextCoder::decode(nullptr, "b", "c");
  const std::string plain = contentOf("a");
  // Blanks behind a tab and all but the last carriage return at a line's end go in the second round alone.
  if (plain.find_first_of("\t\r") != std::string::npos || !isWhole(plain, contentOf("b"), cycle)) return;
  CTextCoder::code(nullptr, "c", "d", cycle);
  CTextCoder::decode(nullptr, "d", "e");
  if (isWhole(contentOf("c"), contentOf("d"), cycle))
    demand(withoutEnd(contentOf("c")) == withoutEnd(contentOf("e")));
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
