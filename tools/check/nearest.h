#pragma once

// The nearest of many names to one that names nothing, by the number of letters to change, add, drop or swap.
// Letter case counts less than anything else. All searches of a run share a budget of work, so that a file
// full of mistakes among a million names still ends: when it is spent there are no more suggestions.

#include <cstddef>
#include <string>
#include <string_view>

namespace footlight::check {

class Nearest {
 public:
  explicit Nearest(std::string_view word);

  void consider(std::string_view candidate);
  // The nearest name so far, empty when none is near enough.
  const std::string& name() const { return name_; }
  // True when the budget is spent: there is no point in going through more names.
  static bool isSpent();
  // Fills the budget.
  static void beginRun();

 private:
  std::string word_;  // in one letter case
  std::string written_;
  std::size_t most_;  // mistakes that a candidate may have
  std::string name_;
};

}  // namespace footlight::check
