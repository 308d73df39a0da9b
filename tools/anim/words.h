#pragma once

// The tool's command line.

#include <optional>
#include <string>

#include "anim/run.h"

namespace footlight::anim {

// What the command line asks for: either a run, or a text for the user and the end.
struct Parsed {
  std::optional<Words> words;
  int exitStatus = kDone;  // without words: kFailed for a bad command line
  std::string message;     // without words: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::anim
