#include "foundation/memory_budget.h"

#include "foundation/diagnose.h"

namespace footlight::memory {

namespace {

Count inUse = nullptr;
std::int64_t most = 0;

}  // namespace

void use(Count count, std::int64_t limit) {
  inUse = count;
  most = limit;
}

bool hasRoom(std::int64_t bytes) {
  if (inUse == nullptr || (bytes <= most && inUse() <= most - bytes)) return true;
  limitHit("memory of the game");
  return false;
}

}  // namespace footlight::memory
