#pragma once

// One run of footlight-font, from files to files.

#include <string>

#include "font/words.h"

namespace footlight::font {

struct Outcome {
  std::string failure;  // empty when all went well; else names the file and says what is wrong with it
  std::string info;     // for standard output
  std::string remark;   // for standard error: what was left out
};

// Each output is written as a whole or not at all.
Outcome run(const Words& words);

}  // namespace footlight::font
