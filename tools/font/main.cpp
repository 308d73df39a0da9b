// footlight-font: makes fonts for games, and takes them apart.

#include <cstdio>

#include "font/run.h"
#include "font/words.h"

int main(int count, char** words) {
  namespace font = footlight::font;
  const font::Parsed parsed = font::parseWords(count, words);
  if (!parsed.words) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == font::kDone ? stdout : stderr);
    return parsed.exitStatus;
  }
  const font::Outcome outcome = font::run(*parsed.words);
  if (!outcome.failure.empty()) {
    std::fprintf(stderr, "footlight-font: %s\n", outcome.failure.c_str());
    return font::kNoWork;
  }
  if (!outcome.remark.empty()) std::fprintf(stderr, "footlight-font: %s\n", outcome.remark.c_str());
  if (!outcome.info.empty()) std::puts(outcome.info.c_str());
  return font::kDone;
}
