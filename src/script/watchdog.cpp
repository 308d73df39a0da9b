#include "script/watchdog.h"

#include "foundation/diagnose.h"

namespace footlight::watchdog {

namespace {

std::function<bool()> question;

}  // namespace

void use(std::function<bool()> mayContinue) {
  question = std::move(mayContinue);
  statements = 0;
}

bool ask() {
  if (!question || question()) {
    statements = 0;
    return true;
  }
  askSoon();  // every further loop of the run ends at its first round
  limitHit("watchdog");
  return false;
}

}  // namespace footlight::watchdog
