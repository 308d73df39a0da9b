#include "foundation/memory_budget.h"

#include <gtest/gtest.h>

#include "foundation/diagnose.h"

namespace footlight {
namespace {

std::int64_t taken = 0;

TEST(MemoryBudget, HoldsTheSumOfAllThatIsAskedFor) {
  EXPECT_TRUE(memory::hasRoom(std::int64_t{1} << 50)) << "nobody counts";
  memory::use([] { return taken; }, 1000);
  struct Case {
    std::int64_t taken, asked;
    bool room;
  };
  resetGuardHits();
  for (const Case& c : {Case{0, 1000, true}, Case{0, 1001, false}, Case{1000, 0, true}, Case{999, 1, true},
                        Case{999, 2, false}, Case{1001, 0, false}, Case{0, INT64_MAX, false}}) {
    taken = c.taken;
    EXPECT_EQ(memory::hasRoom(c.asked), c.room) << c.taken << " and " << c.asked;
  }
  EXPECT_EQ(guardHits("memory of the game"), 4);
  memory::use(nullptr, 0);
  EXPECT_TRUE(memory::hasRoom(2000));
}

}  // namespace
}  // namespace footlight
