#pragma once

// The converter's command line.

#include <optional>
#include <string>
#include <vector>

#include "run.h"

namespace footlight::image {

enum ExitStatus : int { kDone = 0, kNoWork = 2 };

// What the command line asks for: either a run, or a text for the user and the end.
struct Parsed {
  std::optional<Options> options;
  int exitStatus = kDone;  // without options: kNoWork for a bad command line
  std::string message;     // without options: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::image
