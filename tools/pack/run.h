#pragma once

// One run of footlight-pack. Names here are the machine's, in UTF-8.

#include <optional>
#include <string>
#include <vector>

namespace footlight::pack {

enum ExitStatus : int { kDone = 0, kDoneInPart = 1, kFailed = 2 };

enum class Command { list, extract, build };

struct Words {
  Command command = Command::list;
  std::string bigFile{};
  std::string folder{};               // to unpack into, or to pack
  std::optional<std::string> name{};  // for the head of a new one
};

struct Outcome {
  std::vector<std::string> lines;    // for standard output
  std::vector<std::string> remarks;  // what was left out, and why
  std::string summary;
  std::string failure;  // empty when something was done

  ExitStatus status() const { return !failure.empty() ? kFailed : remarks.empty() ? kDone : kDoneInPart; }
};

Outcome run(const Words& words);

}  // namespace footlight::pack
