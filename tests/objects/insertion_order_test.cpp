#include "objects/data/insertion_order.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace footlight {
namespace {

std::unique_ptr<CMC_Variable> randomValue(std::minstd_rand& random) {
  const int number = static_cast<int>(random() % 40) - 15;
  switch (random() % 4) {
    case 0:
      return std::make_unique<CMC_Integer>(number);
    case 1:
      return std::make_unique<CMC_Double>(number * 0.4);
    case 2:
      return std::make_unique<CMC_Bool>(number > 0);
    default:
      return std::make_unique<CMC_String>(CXString::toString(number));
  }
}

// The rule itself, one comparison after the other.
std::vector<int> plainOrder(const std::vector<CMC_Variable*>& values) {
  std::vector<int> order;
  for (int i = 0; i < static_cast<int>(values.size()); ++i) {
    CMC_Variable* value = values[static_cast<std::size_t>(i)];
    const auto above = std::find_if(order.begin(), order.end(), [&](int at) {
      return values[static_cast<std::size_t>(at)]->compare(value) > 0;
    });
    order.insert(above, i);
  }
  return order;
}

TEST(InsertionOrder, IsThatOfInsertingOneByOne) {
  std::minstd_rand random;
  for (int round = 0; round < 200; ++round) {
    std::vector<std::unique_ptr<CMC_Variable>> owned(random() % 60);
    std::vector<CMC_Variable*> values;
    for (auto& value : owned) values.push_back((value = randomValue(random)).get());
    ASSERT_EQ(insertionOrder(values), plainOrder(values)) << "round " << round;
  }
}

}  // namespace
}  // namespace footlight
