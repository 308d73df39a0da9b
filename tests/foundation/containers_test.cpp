#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/integer.h"
#include "foundation/sorted_vector.h"

namespace footlight {
namespace {

using testing::ElementsAre;

class Item : public CInteger {
 public:
  using CInteger::CInteger;
  // By the tens, so that there are equal ones.
  int compare(const CXObject* other) const override {
    return toInt() / 10 - dynamic_cast<const Item*>(other)->toInt() / 10;
  }
};

std::vector<int> numbers(const CXVector& vector) {
  std::vector<int> result;
  for (const CXObject* object : vector) {
    const auto* number = dynamic_cast<const CInteger*>(object);
    result.push_back(number != nullptr ? number->toInt() : -1);
  }
  return result;
}

TEST(Arrays, CapacityDoublesByTheLoadFactor) {
  CXVector array;
  CInteger item;
  for (int i = 0; i < 75; ++i) array.add(&item);
  EXPECT_EQ(array.Capacity(), 101);
  array.add(&item);
  EXPECT_EQ(array.Capacity(), 202);
  array.removeAll();
  EXPECT_EQ(array.Capacity(), 202);

  CXVector exact(4, 0.75F);
  for (int i = 0; i < 3; ++i) exact.add(&item);
  EXPECT_EQ(exact.Capacity(), 4);  // strictly above 3
  exact.add(&item);
  EXPECT_EQ(exact.Capacity(), 8);

  CXVector none(0, 0.75F);
  none.add(&item);
  EXPECT_EQ(none.Capacity(), 0);
  EXPECT_EQ(none.size(), 1);

  CXVector far(8, 0.75F);
  far.insertAt(&item, 20);
  EXPECT_EQ(far.size(), 21);
  EXPECT_EQ(far[19], nullptr);
  EXPECT_EQ(far[20], &item);
  EXPECT_EQ(far.Capacity(), 32);
  far.insertAt(&item, limits::kArrayElements + 1);
  EXPECT_EQ(far.size(), 21);
}

TEST(Arrays, ChangeByPlaceAndByPointer) {
  Item one(1), two(2), three(3);
  CXVector vector;
  vector.add(&one);
  vector.add(&two);
  vector.add(&one);
  vector.insertAt(&three, 1);
  EXPECT_THAT(numbers(vector), ElementsAre(1, 3, 2, 1));
  EXPECT_EQ(vector.find(&one), 0);
  EXPECT_TRUE(vector.remove(&one));
  EXPECT_THAT(numbers(vector), ElementsAre(3, 2, 1));
  vector.replace(&two, &three);
  vector.setAt(2, &two);
  vector.setAt(3, &two);
  EXPECT_THAT(numbers(vector), ElementsAre(3, 3, 2));
  EXPECT_EQ(vector.removeAt(1), &three);
  EXPECT_EQ(vector.removeAt(2), nullptr);
  EXPECT_EQ(vector.removeAt(-1), nullptr);
  EXPECT_EQ(vector[-1], nullptr);
  EXPECT_EQ(vector.at(2), nullptr);
  vector.add(&vector);
  EXPECT_THAT(numbers(vector), ElementsAre(3, 2, 3, 2));
  CXVector other;
  vector.copyInto(&other);
  const auto copy = other.clone();
  EXPECT_THAT(numbers(dynamic_cast<const CXVector&>(*copy)), ElementsAre(3, 2, 3, 2));
}

TEST(SortedVector, KeepsOrderAndTheOrderOfEquals) {
  std::vector<std::unique_ptr<Item>> items;
  CSortedVector sorted;
  for (const int value : {21, 10, 22, 5, 12, 20}) {
    items.push_back(std::make_unique<Item>(value));
    sorted.add(items.back().get());
  }
  EXPECT_THAT(numbers(sorted), ElementsAre(5, 10, 12, 21, 22, 20));
  EXPECT_THAT(numbers(*sorted.reverse()), ElementsAre(20, 22, 21, 12, 10, 5));
  Item late(15), last(29);
  CXVector more;
  more.add(&last);
  more.add(&late);
  more.add(static_cast<CXObject*>(nullptr));
  sorted.add(&more);
  EXPECT_THAT(numbers(sorted), ElementsAre(5, 10, 12, 15, 21, 22, 20, 29));
}

TEST(Integer, IsItsOwnHash) {
  CInteger number(CXString("-5x"));
  EXPECT_EQ(number.getHashcode(), 0xFFFFFFFBU);
  const CInteger same(-5);
  EXPECT_TRUE(number.equals(&same));
  number.increment();
  EXPECT_FALSE(number.equals(&same));
  EXPECT_FALSE(number.equals(nullptr));
  EXPECT_EQ(number.toString(), "-4");
  number.parse("2147483647");
  number.increment();
  EXPECT_EQ(number.toInt(), -2147483647 - 1);
}

}  // namespace
}  // namespace footlight
