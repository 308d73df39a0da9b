// A type of script object is one source and one line in a list. This is such a source, with the list behind
// it: a counter that tells when it is full.

#include <gtest/gtest.h>

#include "app/mc_scene.h"
#include "objects/all_types.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/vocabulary.h"
#include "support/game_world.h"

namespace footlight {

namespace type {
inline constexpr int kCounter = 9000;
}

namespace {

enum class CounterSignal { onFull = kFirstOwnSignal, count };

class CMC_Counter : public CMC_Object {
 public:
  CMC_Counter(CMC_ObjectsContainer* container, const CMElement* element)
      : CMC_Object(container, element, type::kCounter), most_(element->getPropertyIntValue("MOST")) {
    initializeBehaviours(container, element);
  }
  static bool isTypeOf(int type) { return type == type::kCounter; }

  int count(int by) {
    count_ += by;
    if (count_ >= most_) raise(CounterSignal::onFull, CXString::toString(count_));
    return count_;
  }

 private:
  int most_;
  int count_ = 0;
};

Result count(CMC_Counter& counter, Call& call) {
  return CMC_VariableFactory::makeInteger(counter.count(call.has(0) ? call.integer(0) : 1));
}

constexpr Method kMethods[] = {
    {1, "COUNT", "[by:int] -> int", method<count>, "Counts on."},
};

constexpr auto kSignals = signalTable<CounterSignal>({
    {CounterSignal::onFull, "ONFULL", "It has counted as far as it can; as ONFULL^NUMBER."},
});

constexpr Property kProperties[] = {
    {"MOST", PropertyKind::integer, "0", "How far it counts."},
};

constexpr ScriptType kCounterType = {
    .number = type::kCounter,
    .idWord = "COUNTER",
    .stringWord = "COUNTER",
    .definitionWord = "COUNTER",
    .meaning = "Counts.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Counter>,
};

// The usual types and the new one, for the time of a test.
class NewType : public testing::Test {
 protected:
  NewType() {
    installTypes({});
    installAllTypes();
    types_.assign(allTypes().begin(), allTypes().end());
    types_.push_back(&kCounterType);
    installTypes(types_);
  }
  ~NewType() override {
    installTypes({});
    installAllTypes();
  }

 private:
  std::vector<const ScriptType*> types_;
};

constexpr const char* kLevels =
    "DEF:MAIN(TYPE=SCENE)\nDEF:EP(TYPE=EPISODE|SCENES=MAIN|STARTWITH=MAIN)\nDEF:GAME(TYPE=APPLICATION|"
    "EPISODES=EP)\n";
constexpr const char* kScene =
    "DEF:SEEN(TYPE=INTEGER)\nDEF:OTHERS(TYPE=INTEGER)\n"
    "DEF:C(TYPE=COUNTER|MOST=2|ONFULL^3={SEEN^INC();}|ONFULL={OTHERS^INC();})\n";

TEST_F(NewType, WorksInAGame) {
  test::Disk disk;
  disk["C:\\GAME\\Dane\\application.def"] = test::contentOf(kLevels);
  disk["C:\\GAME\\Dane\\MAIN.cnv"] = test::contentOf(kScene);
  test::World world(disk, {});
  CMC_Scene* scene = world.scene();
  ASSERT_NE(scene, nullptr);
  world.run(scene, "CODE", "C^COUNT();C^COUNT();C^COUNT();SEEN^ADD(C^COUNT(10));");
  const auto* seen = object_cast<CMC_Integer>(scene->getObject("SEEN"));
  const auto* others = object_cast<CMC_Integer>(scene->getObject("OTHERS"));
  ASSERT_NE(seen, nullptr);
  ASSERT_NE(others, nullptr);
  EXPECT_EQ(seen->getValue(), 14);   // ONFULL^3 once, and the last count
  EXPECT_EQ(others->getValue(), 2);  // for 2 and 13
  EXPECT_EQ(CMC_Object::getTypeId("COUNTER"), type::kCounter);
  EXPECT_NE(vocabularyJson().find("\"How far it counts.\""), std::string::npos);
}

}  // namespace
}  // namespace footlight
