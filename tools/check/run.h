#pragma once

// One run of the checker: the machine that it needs, every language of the game, files that nothing names.

#include <string>
#include <vector>

#include "findings.h"

namespace footlight::check {

struct Options {
  std::string dataRoot{};                // as it was typed
  std::string root{};                    // the folder that the game is started in; empty: the data root
  std::vector<std::string> languages{};  // names of language folders; empty: all that the game has
};

struct Outcome {
  std::string failure;  // empty when the tool could work
  Findings findings;
  std::vector<std::string> files;  // all definition files that were read, sorted
};

Outcome run(const Options& options);

}  // namespace footlight::check
