#pragma once

// The command line of footlight-data.

#include <optional>
#include <string>

#include "data/forms.h"

namespace footlight::data {

enum ExitStatus : int { kDone = 0, kNoWork = 2 };
enum class Command { show, make };

struct Words {
  Command command = Command::show;
  std::string input;
  std::string output;
  std::optional<Form> form;  // none: what the file looks like
};

// What the command line asks for: either work, or a text for the user and the end.
struct Parsed {
  std::optional<Words> words;
  int exitStatus = kDone;  // without words: kNoWork for a bad command line
  std::string message;     // without words: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::data
