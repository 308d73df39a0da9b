#pragma once

// One run of footlight-data.

#include <string>

#include "data/words.h"

namespace footlight::data {

struct Outcome {
  std::string failure;  // empty when all went well; else names the file and says what is wrong with it
  std::string text;     // for standard output
};

// The output is written as a whole or not at all.
Outcome run(const Words& words);

}  // namespace footlight::data
