#include "foundation/limits.h"

#include <algorithm>
#include <cstdint>

#include "objects/system/mc_system.h"
#include "platform/large_stack.h"
#include "script/code_text.h"
#include "script/mc_expression.h"
#include "script/mc_groupped.h"
#include "script/melement.h"
#include "script/script_fixture.h"
#include "script/watchdog.h"

namespace footlight {
namespace {

// Notes how deep the stack was when a script called it.
class Probe : public CMC_Integer {
 public:
  explicit Probe(CMC_ObjectsContainer* scope) : CMC_Integer("PROBE", kNoPool) { setScene(scope); }
  void inc() override {
    ++calls;
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    deepest = std::min(deepest, here);
    highest = std::max(highest, here);
  }
  std::uintptr_t depth() const { return highest - deepest; }

  int calls = 0;
  std::uintptr_t deepest = UINTPTR_MAX;
  std::uintptr_t highest = 0;
};

class LimitsTest : public ScriptTest {
 public:
  LimitsTest() {
    probe_ = new Probe(scope_);
    scope_->addObject(probe_);
  }

  bool clones(std::int64_t n) {
    auto* original = add<CMC_Bool>("ORIGINAL", true);
    original->clone(static_cast<int>(n));
    const bool isDone = original->getClonesNo() == n;
    for (std::int64_t i = n; isDone && i > 0; --i) {
      CMC_Object::destroy(scope_->getOwnObject("ORIGINAL_" + std::to_string(i)));
    }
    return isDone;
  }
  CMC_String* addText(std::int64_t length) {
    return add<CMC_String>("TEXT", CXString(std::string(static_cast<std::size_t>(length), 'x')));
  }
  bool appends(std::int64_t n) {
    const CMC_String* text = addText(n - 2);
    run("TEXT^ADD(\"yz\");");
    return text->getValue().Length() == n;
  }
  bool inserts(std::int64_t n) {
    const CMC_String* text = addText(n - 2);
    run("TEXT^INSERTAT(1,\"y\",2);");
    return text->getValue().Length() == n;
  }
  bool fills(std::int64_t n) {
    const TextList arguments{CXString(std::string(static_cast<std::size_t>(n) - 1, 'x'))};
    return code_text::fillMarks("a$1", &arguments).Length() == n;
  }
  // The bracket of the call is the outermost of n. What lies deeper is a plain value, as it is here
  // in any case.
  bool nestsBrackets(std::int64_t n) {
    const auto* value = add<CMC_Integer>("VALUE", 0);
    const auto depth = static_cast<std::size_t>(n - 1);
    const std::string code = std::string(depth, '[') + "1" + std::string(depth, ']');
    run(("VALUE^SET(" + code + ");").c_str());
    return value->getValue() == 1 && guardHits("brackets in one statement") == 0;
  }

  Probe* probe_;
};

TEST_F(LimitsTest, RecursionEndsWithinHalfOfTheStack) {
  struct Row {
    const char* way;
    const char* code;  // of the behaviour REC
  };
  const Row rows[] = {
      {"a call", "PROBE^INC();REC^RUN();"},
      {"arguments", "PROBE^INC();REC^RUN(1,\"text\",[1+$1],PROBE,$2);"},
      {"a test", "PROBE^INC();@IF(1,_,1,{@IF(2,_,2,{REC^RUN(7);});});"},
      {"a short test", "PROBE^INC();@IF(\"1'1&&2'2\",{REC^RUN();});"},
      {"a loop", "PROBE^INC();@LOOP({REC^RUN();},0,1,1);"},
      {"a looped run", "PROBE^INC();REC^RUNLOOPED(0,1);"},
      {"a condition's operand", "PROBE^INC();@IF(\"REC^RUN()'1\",{PROBE^INC();});"},
      {"an operand", "PROBE^INC();PROBE^SET([1+REC^RUN()]);"},
      {"a filled operand", "PROBE^INC();PROBE^SET([$1+REC^RUN(1)]);"},
      {"an argument", "PROBE^INC();PROBE^SET(REC^RUN());"},
      {"a filled argument", "PROBE^INC();PROBE^SET(REC^RUN($1));"},
      {"a computed name", "PROBE^INC();*[\"REC\"]^RUN();"},
      {"a marked name", "PROBE^INC();RE$1^RUN(\"C\");"},
      {"a signal", "PROBE^INC();PROBE^SEND(\"AGAIN\");"},
  };
  std::size_t used = 0;
  for (const Row& row : rows) {
    CMC_Behaviour* behaviour = addBehaviour("REC", row.code);
    probe_->addBehaviour("ONSIGNAL^AGAIN", behaviour, nullptr, scope_);
    probe_->calls = 0;
    probe_->highest = 0;
    probe_->deepest = UINTPTR_MAX;
    const TextList arguments{"C"};
    ASSERT_TRUE(platform::runOnLargeStack([&] { behaviour->run(nullptr, &arguments, false); }));
    // Some ways nest two or three runs a round.
    EXPECT_GE(probe_->calls, limits::kNestedRuns / 3) << row.way;
    EXPECT_LT(probe_->depth(), platform::largeStackBytes() / 2) << row.way;
    used = std::max<std::size_t>(used, probe_->depth());
  }
  RecordProperty("deepest_stack_bytes", static_cast<int>(used));
}

TEST_F(LimitsTest, RunsNestToTheLimitAndNoFurther) {
  CMC_Behaviour* behaviour = addBehaviour("REC", "PROBE^INC();@IF(PROBEMAX,>,PROBECOUNT,{});REC^RUN();");
  resetGuardHits();
  platform::runOnLargeStack([&] { behaviour->run(nullptr, nullptr, false); });
  EXPECT_EQ(guardHits("nested runs"), 1);
  EXPECT_EQ(probe_->calls, limits::kNestedRuns);
}

TEST_F(LimitsTest, BranchingRecursionUnwinds) {
  addBehaviour("REC", "PROBE^INC();REC^RUN();REC^RUN();REC^RUN();");
  resetGuardHits();
  CMC_Behaviour* start = addBehaviour("START", "REC^RUN();");
  platform::runOnLargeStack([&] { start->run(nullptr, nullptr, false); });
  EXPECT_EQ(guardHits("recursion that branches"), 1);
  EXPECT_LT(probe_->calls, limits::kNestedRuns + limits::kRefusedRuns);
  // The next run has all of its depth again.
  const int before = probe_->calls;
  addBehaviour("LINE", "PROBE^INC();LINE^RUN();");
  CMC_Behaviour* line = scope_->find<CMC_Behaviour>("LINE");
  platform::runOnLargeStack([&] { line->run(nullptr, nullptr, false); });
  EXPECT_EQ(probe_->calls - before, limits::kNestedRuns);
}

TEST_F(LimitsTest, EachLimitHoldsAtItsEdge) {
  struct Row {
    const char* guard;
    std::int64_t limit;
    bool (LimitsTest::*work)(std::int64_t n);  // with a size of n; true when it was done
  };
  const Row rows[] = {
      {"clones by one call", limits::kClonesByOneCall, &LimitsTest::clones},
      {"string too long", limits::kStringBytes, &LimitsTest::appends},
      {"string too long", limits::kStringBytes, &LimitsTest::inserts},
      {"filled text too long", limits::kFilledTextBytes, &LimitsTest::fills},
      {"brackets in one statement", limits::kBracketDepth, &LimitsTest::nestsBrackets},
  };
  for (const Row& row : rows) {
    for (const int beyond : {-1, 0, 1}) {
      resetGuardHits();
      EXPECT_EQ((this->*row.work)(row.limit + beyond), beyond <= 0) << row.guard << " at " << beyond;
      EXPECT_EQ(guardHits(row.guard) > 0, beyond > 0) << row.guard << " at " << beyond;
    }
  }
}

// Each of a chain of things that hold the next one twice doubles the work: it is done as told, but the host
// may end it.
TEST_F(LimitsTest, WorkThatDoublesCanBeEnded) {
  constexpr int kLinks = 40;
  CMElements document(true);
  CMC_Object* operand = add<CMC_Integer>("E", 1);
  CMC_Object* member = probe_;
  for (int i = 0; i < kLinks; ++i) {
    CMElement* element = document.make("E" + std::to_string(i), {});
    for (const char* property : {"OPERAND1", "OPERAND2"})
      element->addProperty(property, operand->getName(), {});
    element->addProperty("OPERATOR", "ADD", {});
    operand = new CMC_Expression(scope_, element);
    operand->init();
    auto* group = new CMC_Groupped("G" + CXString::toString(i));
    for (int twice = 0; twice < 2; ++twice) group->add(member);
    member = group;
    scope_->addObject(operand);
    scope_->addObject(group);
  }
  for (const char* work : {"PROBE^SET(E39);", "G39^INC();"}) {
    int asked = 0;
    watchdog::use([&] { return ++asked < 3; });
    run(work);
    EXPECT_GE(asked, 3) << work;
  }
  int asked = 0;
  watchdog::use([&] { return ++asked < 2; });
  watchdog::askSoon();
  EXPECT_TRUE(watchdog::mayContinue());
  EXPECT_EQ(asked, 1) << "at once, and then no more";
  EXPECT_TRUE(watchdog::mayContinue());
  EXPECT_EQ(asked, 1);
  watchdog::askSoon();
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(watchdog::mayContinue()) << "the rest of the run ends";
  watchdog::use({});
  EXPECT_GT(probe_->calls, 0);
}

TEST_F(LimitsTest, AScopeHoldsSoManyObjects) {
  const int there = scope_->getElementsNo();
  const auto fill = [&](int count) {
    for (int i = scope_->getElementsNo(); i < count; ++i) {
      scope_->addObject(new CMC_Object(CXString::toString(i), type::kRandom));
    }
  };
  fill(limits::kObjectsInScope - 1);
  resetGuardHits();
  EXPECT_TRUE(scope_->addObject(new CMC_Object("LAST", type::kRandom)));
  EXPECT_FALSE(scope_->addObject(new CMC_Object("TOOMANY", type::kRandom)));
  EXPECT_EQ(guardHits("objects in a scope"), 1);
  EXPECT_EQ(scope_->getElementsNo(), limits::kObjectsInScope);
  EXPECT_EQ(scope_->getObject("TOOMANY"), nullptr);
  // A name that is there already finds its place all the same once the older one has gone.
  EXPECT_TRUE(scope_->addObject(new CMC_Object("LAST", type::kRandom)));
  EXPECT_GT(scope_->getElementsNo(), there);
}

}  // namespace
}  // namespace footlight
