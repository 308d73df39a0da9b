// The steady state of a loop takes no memory: whatever its statements need stands in place after
// the first rounds.

#include <cstdlib>
#include <new>

#include "script/caches.h"
#include "script/script_fixture.h"

namespace {

std::size_t allocations = 0;

void* countedMemory(std::size_t size) {
  ++allocations;
  void* memory = std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) std::abort();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return countedMemory(size); }
void* operator new[](std::size_t size) { return countedMemory(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

namespace footlight {
namespace {

using AllocationsTest = ScriptTest;

// What a run of the behaviour allocates when it has run before.
std::size_t allocationsOf(CMC_Behaviour& behaviour) {
  behaviour.run(nullptr, nullptr, false);
  behaviour.run(nullptr, nullptr, false);
  const std::size_t before = allocations;
  behaviour.run(nullptr, nullptr, false);
  return allocations - before;
}

TEST_F(AllocationsTest, RoundsOfALoopTakeNoMemory) {
  add<CMC_Integer>("X", 0);
  add<CMC_Integer>("A", 1);
  add<CMC_Integer>("B", 1);
  add<CMC_Double>("D", 0.5);
  struct Row {
    const char* name;
    const char* body;
  };
  const Row rows[] = {
      {"INCS", "X^INC();"},
      {"TESTS", "@IF(A,_,B,{X^INC();});"},
      {"MISSES", "@IF(A,!_,B,{X^INC();},{X^DEC();});"},
      {"CALCULATES", "X^SET([A+B*3-X]);"},
      {"REALS", "D^SET([D*2+A]);"},
      {"READS", "X^SET(_I_);"},
  };
  for (const Row& row : rows) {
    const auto looped = [&](int rounds) {
      const std::string code = "@LOOP({" + std::string(row.body) + "},0," + std::to_string(rounds) + ",1);";
      return allocationsOf(*addBehaviour((row.name + std::to_string(rounds)).c_str(), code.c_str()));
    };
    // The loop itself may need some: a thousand rounds more must not need more.
    EXPECT_EQ(looped(10), looped(1010)) << row.body;
  }
}

}  // namespace
}  // namespace footlight
