#pragma once

// The command line of footlight-pack.

#include <optional>
#include <string>

#include "pack/run.h"

namespace footlight::pack {

// What the command line asks for: either work, or a text for the user and the end.
struct Parsed {
  std::optional<Words> words;
  int exitStatus = kDone;  // without words: kFailed for a bad command line
  std::string message;     // without words: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::pack
