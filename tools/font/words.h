#pragma once

// The command line of footlight-font.

#include <optional>
#include <string>

#include "font/outline.h"

namespace footlight::font {

enum ExitStatus : int { kDone = 0, kNoWork = 2 };
enum class Command { make, strip, unpack, info };

struct Words {
  Command command = Command::info;
  std::string input;
  std::string output;
  std::string letters;  // a file's name
  int size = 0;         // pixels
  int face = 0;
  Kerning kerning = Kerning::measured;
};

// What the command line asks for: either work, or a text for the user and the end.
struct Parsed {
  std::optional<Words> words;
  int exitStatus = kDone;  // without words: kNoWork for a bad command line
  std::string message;     // without words: for standard output with status 0, else for standard error
};

Parsed parseWords(int count, const char* const* words);

}  // namespace footlight::font
