// footlight-anim: makes animations, takes them apart and plays them.

#include <cstdio>

#include "anim/run.h"
#include "anim/words.h"

int main(int count, char** words) {
  namespace anim = footlight::anim;
  const anim::Parsed parsed = anim::parseWords(count, words);
  if (!parsed.words) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == anim::kDone ? stdout : stderr);
    return parsed.exitStatus;
  }
  const anim::Outcome outcome = anim::run(*parsed.words);
  std::fputs(outcome.text.c_str(), stdout);
  if (outcome.failure.empty()) return anim::kDone;
  std::fprintf(stderr, "footlight-anim: %s\n", outcome.failure.c_str());
  return anim::kFailed;
}
