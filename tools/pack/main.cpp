// footlight-pack: lists, unpacks and makes big files.

#include <cstdio>

#include "pack/run.h"
#include "pack/words.h"

int main(int count, char** words) {
  namespace pack = footlight::pack;
  const pack::Parsed parsed = pack::parseWords(count, words);
  if (!parsed.words) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == 0 ? stdout : stderr);
    return parsed.exitStatus;
  }
  const pack::Outcome outcome = pack::run(*parsed.words);
  for (const std::string& line : outcome.lines) std::puts(line.c_str());
  std::fflush(stdout);
  for (const std::string& remark : outcome.remarks)
    std::fprintf(stderr, "footlight-pack: %s\n", remark.c_str());
  const std::string& last = outcome.failure.empty() ? outcome.summary : outcome.failure;
  std::fprintf(stderr, "footlight-pack: %s\n", last.c_str());
  return outcome.status();
}
