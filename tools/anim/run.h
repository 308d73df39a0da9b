#pragma once

// One run of the tool. Names here are the machine's, in UTF-8.

#include <string>
#include <vector>

namespace footlight::anim {

enum ExitStatus : int { kDone = 0, kFailed = 2 };

enum class Command { info, build, extract, view, speech };

struct Words {
  Command command = Command::info;
  std::string file{};                    // the animation
  std::string folder{};                  // of the description and the PNG files
  std::string event{};                   // to begin with; empty: the first one
  std::string prefix{};                  // of a figure that speaks, in UTF-8
  std::vector<std::string> hostWords{};  // for the viewer's host
};

struct Outcome {
  std::string failure{};  // empty when all went well; else names the file and says what is wrong with it
  std::string text{};     // for standard output
};

// What is written is written whole or not at all; of a folder that holds for each of its files.
Outcome run(const Words& words);

}  // namespace footlight::anim
