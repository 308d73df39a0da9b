#pragma once

// The checker's command line.

#include <optional>
#include <string>

#include "run.h"

namespace footlight::check {

enum ExitStatus : int { kNothingFound = 0, kFound = 1, kNoWork = 2 };

struct Words {
  Options options;
  bool json = false;
  bool files = false;
};

// What the command line asks for: either a run, or a text for the user and the end.
struct Parsed {
  std::optional<Words> words;
  int exitStatus = kNothingFound;  // without words: kNoWork for a bad command line
  std::string message;  // without words: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::check
