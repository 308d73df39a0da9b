#include "oracle.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "state.h"

namespace footlight::fuzz {

namespace {

std::string lineAt(const std::string& text, std::size_t position) {
  const std::size_t start = position == 0 ? 0 : text.rfind('\n', position - 1) + 1;
  return text.substr(start, text.find('\n', start) - start);
}

void compare(const std::string& first, const std::string& other, const char* how) {
  if (first == other) return;
  const auto place = std::mismatch(first.begin(), first.end(), other.begin(), other.end());
  const auto position = static_cast<std::size_t>(place.first - first.begin());
  std::fprintf(stderr, "The run %s leaves another state.\n--- first\n%s\n--- other\n%s\n", how, first.c_str(),
               other.c_str());
  std::fprintf(stderr, "--- the first line that differs\n%s\n%s\n", lineAt(first, position).c_str(),
               lineAt(other, position).c_str());
  std::abort();
}

struct Outcome {
  std::string state;
  bool isWhole;  // nothing was cut short by the budget
};

Outcome playOnce(const Disk& disk, const test::Rules& rules, const Play& play) {
  World world(disk, rules);
  std::string state = play(world);
  world.close();
  return {state + describeDisk(world), !world.isBudgetUsedUp()};
}

}  // namespace

void playAndCompare(const Disk& disk, int budget, std::uint8_t choice, const Play& play) {
  const Outcome first = playOnce(disk, {.literal = false, .budget = budget}, play);
  if (choice % 4 == 1) {
    compare(first.state, playOnce(disk, {.literal = false, .budget = budget}, play).state, "again");
  }
  if (choice % 4 < 2) return;
  const Outcome literal = playOnce(disk, {.literal = true, .budget = budget}, play);
  // What counts as a statement is the interpreter's own matter.
  if (first.isWhole && literal.isWhole) compare(first.state, literal.state, "read literally");
}

}  // namespace footlight::fuzz
