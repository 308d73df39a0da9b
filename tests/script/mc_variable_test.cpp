#include "script/mc_variable.h"

#include <cstring>

#include "foundation/limits.h"
#include "script/script_fixture.h"

namespace footlight {
namespace {

using Factory = CMC_VariableFactory;
using Variable = ScriptTest;

TEST_F(Variable, DoublesAsText) {
  const struct {
    double value;
    const char* text;
  } rows[] = {{1.5, "1.50000"},  {0.001, "0.00100"}, {-2.0, "-2.00000"}, {0.0, "0"},
              {-0.0, "0"},       {0.000001, "0"},    {-0.000001, "0"},   {12345.678901, "12345.67890"},
              {-0.5, "-0.50000"}};
  for (const auto& row : rows) EXPECT_EQ(CXString::toString(row.value), row.text);
}

TEST_F(Variable, Literals) {
  const struct {
    const char* literal;
    int type;
    const char* text;
  } rows[] = {
      {"\"5\"", type::kString, "5"},  {"5", type::kInteger, "5"},        {"5.0", type::kDouble, "5.00000"},
      {"TRUE", type::kBool, "TRUE"},  {"true", type::kString, "true"},   {"007", type::kString, "007"},
      {"-", type::kInteger, "0"},     {"0.5", type::kDouble, "0.50000"}, {"", type::kString, ""},
      {"-12", type::kInteger, "-12"}, {"\"abc", type::kString, "abc"},   {"5-3", type::kString, "5-3"}};
  for (const auto& row : rows) {
    const Ref<CMC_Variable> value = CMC_Variable::resolve(row.literal);
    EXPECT_EQ(value->getType(), row.type) << row.literal;
    EXPECT_EQ(value->asText(), row.text) << row.literal;
  }
}

TEST_F(Variable, ConversionsRoundAwayFromZeroAndSaturate) {
  const struct {
    double value;
    int whole;
  } rows[] = {{1.5, 2}, {-1.5, -2}, {1.49, 1}, {-0.5, -1}, {1e300, 2147483647}, {-1e300, -2147483647 - 1}};
  for (const auto& row : rows) EXPECT_EQ(CMC_Double(row.value).asInteger(), row.whole) << row.value;
}

TEST_F(Variable, ArithmeticKeepsTheTypeOfTheLeft) {
  const auto calculate = [](CMC_Variable&& left, const char* right, Operation operation) {
    CMC_String text{CXString(right)};
    return left.calculate(&text, operation)->asText();
  };
  EXPECT_EQ(calculate(CMC_Integer(7), "2", Operation::divide), "3");
  EXPECT_EQ(calculate(CMC_Integer(-7), "2", Operation::modulo), "-1");
  EXPECT_EQ(calculate(CMC_Integer(7), "0", Operation::divide), "0");
  EXPECT_EQ(calculate(CMC_Integer(-2147483647 - 1), "-1", Operation::divide), "-2147483648");
  EXPECT_EQ(calculate(CMC_Integer(2147483647), "1", Operation::add), "-2147483648");
  EXPECT_EQ(calculate(CMC_Double(7.9), "2.9", Operation::modulo), "1.00000");
  EXPECT_EQ(calculate(CMC_Bool(true), "FALSE", Operation::add), "FALSE");
  EXPECT_EQ(calculate(CMC_Bool(true), "FALSE", Operation::multiply), "TRUE");
  EXPECT_EQ(calculate(CMC_String("n"), "5", Operation::add), "n5");
  EXPECT_EQ(calculate(CMC_String("n"), "5", Operation::subtract), "n");
}

TEST_F(Variable, TextsCompareWithCaseAndEqualWithout) {
  CMC_String a("abc");
  CMC_String b("ABC");
  EXPECT_TRUE(a.equals(&b));
  EXPECT_NE(a.compare(&b), 0);
  CMC_Integer five(5);
  CMC_String zeroFive("05");
  EXPECT_TRUE(five.equals(&zeroFive));
  EXPECT_FALSE(zeroFive.equals(&five));
}

TEST_F(Variable, NetworkRecords) {
  const auto record = [](const CMC_Variable& variable) {
    std::vector<std::byte> bytes(static_cast<std::size_t>(variable.getBufferLen()));
    variable.netstore(bytes);
    return bytes;
  };
  const auto bytes = [](std::initializer_list<int> list) {
    std::vector<std::byte> result;
    for (const int b : list) result.push_back(static_cast<std::byte>(b));
    return result;
  };
  EXPECT_EQ(record(CMC_Integer(-2)), bytes({1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(record(CMC_Bool(true)), bytes({3, 0, 0, 0, 1}));
  EXPECT_EQ(record(CMC_Double(1.0)), bytes({4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F}));
  EXPECT_EQ(record(CMC_String("ab")), bytes({2, 0, 0, 0, 'a', 'b', 0}));

  EXPECT_EQ(Factory::netrestore(record(CMC_String("ab")))->asText(), "ab");
  EXPECT_EQ(Factory::netrestore(record(CMC_Double(-2.5)))->asDouble(), -2.5);
  EXPECT_FALSE(Factory::netrestore(bytes({2, 0, 0, 0, 'a', 'b'})));  // no zero byte
  EXPECT_FALSE(Factory::netrestore(bytes({1, 0, 0, 0, 1, 0})));      // cut short
  EXPECT_FALSE(Factory::netrestore(bytes({9, 0, 0, 0, 1, 0, 0, 0})));
  EXPECT_FALSE(Factory::netrestore(bytes({1, 0})));
}

TEST_F(Variable, FreedTemporariesKeepTheirValueForARound) {
  CMC_Integer* freed = nullptr;
  {
    const Ref<CMC_Variable> value = Factory::makeInteger(4711);
    freed = static_cast<CMC_Integer*>(value.get());
  }
  for (int i = 0; i < Factory::kFirstSlots - 1; ++i) Factory::makeInteger(1);
  EXPECT_EQ(freed->getValue(), 4711);
  Factory::makeInteger(1);
  EXPECT_EQ(freed->getValue(), 1);
}

TEST_F(Variable, FullPoolsGrowToTheirLimitAndShrinkAgain) {
  std::vector<Ref<CMC_Variable>> held;
  resetGuardHits();
  for (int i = 0; i < limits::kPoolSlots; ++i) held.push_back(Factory::makeInteger(i));
  const int most = guardHits("pool of temporaries full");
  held.push_back(Factory::makeInteger(-1));
  EXPECT_EQ(guardHits("pool of temporaries full"), most + 1);
  EXPECT_EQ(held.back()->asInteger(), -1);
  EXPECT_EQ(held.front()->asInteger(), 0);
  held.clear();
  Factory::clearPool();
  EXPECT_EQ(Factory::used(), 0);
}

}  // namespace
}  // namespace footlight
