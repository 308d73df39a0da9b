// footlight-image: converts pictures between PNG and the engine's IMG files, and those of others into these.

#include <cstdio>

#include "run.h"
#include "words.h"

int main(int count, char** words) {
  namespace image = footlight::image;
  const image::Parsed parsed = image::parseWords(count, words);
  if (!parsed.options) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == image::kDone ? stdout : stderr);
    return parsed.exitStatus;
  }
  const image::Outcome outcome = image::run(*parsed.options);
  if (!outcome.failure.empty()) {
    std::fprintf(stderr, "footlight-image: %s\n", outcome.failure.c_str());
    return image::kNoWork;
  }
  if (!outcome.info.empty()) std::puts(outcome.info.c_str());
  return image::kDone;
}
