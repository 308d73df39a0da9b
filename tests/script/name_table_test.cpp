#include "script/name_table.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "script/mc_variable.h"

namespace footlight {
namespace {

// Short names and long ones, in the table and not, through many rounds of coming and going.
TEST(NameTable, FindsWhatIsThereThroughComingAndGoing) {
  std::minstd_rand random;
  std::vector<std::unique_ptr<CMC_Integer>> objects;
  for (int i = 0; i < 600; ++i) {
    const std::string name = std::string(random() % 20, 'n') + std::to_string(i);
    objects.push_back(std::make_unique<CMC_Integer>(name, CMC_Variable::kNoPool));
  }
  NameTable table;
  std::map<std::string, CMC_Object*> model;
  EXPECT_EQ(table.find("nothing"), nullptr);
  for (int step = 0; step < 20000; ++step) {
    CMC_Object* object = objects[random() % objects.size()].get();
    const std::string name = object->getName().str();
    if (model.contains(name)) {
      table.remove(name);
      model.erase(name);
    } else if (random() % 3 != 0 || step < 10000) {
      table.add(object);
      model[name] = object;
    }
    const std::string asked = objects[random() % objects.size()]->getName().str();
    const auto expected = model.find(asked);
    ASSERT_EQ(table.find(asked), expected == model.end() ? nullptr : expected->second) << asked;
  }
  table.clear();
  EXPECT_EQ(table.find(objects[0]->getName()), nullptr);
}

}  // namespace
}  // namespace footlight
