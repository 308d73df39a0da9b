// footlight-check: reads a game's definitions without running it and tells what in them means nothing.

#include <cstdio>

#include "platform/large_stack.h"
#include "run.h"
#include "words.h"

namespace {

namespace check = footlight::check;

int print(const check::Words& words, const check::Outcome& outcome) {
  if (!outcome.failure.empty()) {
    std::fprintf(stderr, "footlight-check: %s\n", outcome.failure.c_str());
    return check::kNoWork;
  }
  if (words.files) {
    for (const std::string& file : outcome.files) std::puts(file.c_str());
    return check::kNothingFound;
  }
  if (words.json) {
    std::puts(check::asJson(outcome.findings).c_str());
  } else {
    for (const check::Finding& finding : outcome.findings.list()) std::puts(check::asLine(finding).c_str());
  }
  if (outcome.findings.dropped() > 0)
    std::fprintf(stderr, "footlight-check: %zu more are not shown\n", outcome.findings.dropped());
  std::fprintf(stderr, "footlight-check: %zu files, %zu found\n", outcome.files.size(),
               outcome.findings.list().size() + outcome.findings.dropped());
  return outcome.findings.isEmpty() ? check::kNothingFound : check::kFound;
}

}  // namespace

int main(int count, char** words) {
  const check::Parsed parsed = check::parseWords(count, words);
  if (!parsed.words) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == 0 ? stdout : stderr);
    return parsed.exitStatus;
  }
  int status = check::kNoWork;
  const bool started = footlight::platform::runOnLargeStack(
      [&] { status = print(*parsed.words, check::run(parsed.words->options)); });
  if (!started) std::fputs("footlight-check: the machine gives no stack\n", stderr);
  return status;
}
