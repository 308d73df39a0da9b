#pragma once

// One run of the converter, from file to file.

#include <optional>
#include <string>

#include "convert.h"

namespace footlight::image {

struct Options {
  std::string input{};
  std::string output{};  // empty: only tell what the input is
  bool isInfo = false;
  Form form{};
  std::optional<CXPoint> position{};  // in place of the input's
};

struct Outcome {
  std::string failure;  // empty when all went well; else names the file and says what is wrong with it
  std::string info;     // a line for standard output
};

// The output is written as a whole or not at all.
Outcome run(const Options& options);

}  // namespace footlight::image
