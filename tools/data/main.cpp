// footlight-data: shows the files that games keep their data in, and makes them.

#include <cstdio>

#include "data/run.h"
#include "data/words.h"

int main(int count, char** words) {
  namespace data = footlight::data;
  const data::Parsed parsed = data::parseWords(count, words);
  if (!parsed.words) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == data::kDone ? stdout : stderr);
    return parsed.exitStatus;
  }
  const data::Outcome outcome = data::run(*parsed.words);
  if (!outcome.failure.empty()) {
    std::fprintf(stderr, "footlight-data: %s\n", outcome.failure.c_str());
    return data::kNoWork;
  }
  if (!outcome.text.empty()) std::puts(outcome.text.c_str());
  return data::kDone;
}
