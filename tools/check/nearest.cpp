#include "nearest.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "foundation/code_page.h"

namespace footlight::check {

namespace {

constexpr std::size_t kLongestWord = 64;
constexpr std::int64_t kBudget = 50'000'000;  // cells of distance tables in one run

std::int64_t& budget() {
  static std::int64_t left = kBudget;
  return left;
}

// A third of the letters may be wrong, up to three; short words are told by their case alone.
std::size_t mostMistakes(std::size_t length) { return std::min<std::size_t>(length / 3, 3); }

// Optimal string alignment: a swap of neighbours counts as one.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({change, last[j] + 1, row[j - 1] + 1});
      const bool isSwap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isSwap) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

Nearest::Nearest(std::string_view word)
    : word_(code_page::foldCase(word)), written_(word), most_(mostMistakes(word.size())) {}

void Nearest::beginRun() { budget() = kBudget; }

bool Nearest::isSpent() { return budget() < 0; }

void Nearest::consider(std::string_view candidate) {
  if (word_.empty() || candidate.empty() || candidate == written_ || isSpent()) return;
  --budget();
  if (word_.size() > kLongestWord || candidate.size() > kLongestWord) return;
  const std::size_t longer = std::max(word_.size(), candidate.size());
  if (longer - std::min(word_.size(), candidate.size()) > most_) return;
  budget() -= static_cast<std::int64_t>(word_.size() * candidate.size());
  const std::size_t mistakes = distance(word_, code_page::foldCase(candidate));
  // Of equally near ones the first in the alphabet, so that a run says the same each time.
  if (mistakes > most_ || (mistakes == most_ && !name_.empty() && candidate > name_)) return;
  most_ = mistakes;
  name_ = candidate;
}

}  // namespace footlight::check
