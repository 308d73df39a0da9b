// Random code comes to the same whether statements take their short ways or read every text literally.

#include <limits>
#include <random>

#include "objects/data/mc_array.h"
#include "script/caches.h"
#include "script/melement.h"
#include "script/script_fixture.h"

namespace footlight {
namespace {

class RandomCode {
 public:
  explicit RandomCode(unsigned seed) : random_(seed) {}

  std::string program() {
    std::string code;
    for (int i = 0; i < 6; ++i) code += statement(2);
    return code;
  }
  TextList arguments() {
    constexpr int kNumbers[] = {0, 7, -4, 1234567890, std::numeric_limits<int>::min()};
    const char* const texts[] = {"12", "-5", "I", "word", "2.5", ""};
    TextList list;
    for (int i = 0; i < 3; ++i) {
      if (random_() % 3 == 0) {
        list.emplace_back(pick(texts));
      } else {
        list.emplace_back(pick(kNumbers));
      }
    }
    return list;
  }

 private:
  template <class T, std::size_t N>
  T pick(const T (&choices)[N]) {
    return choices[random_() % N];
  }
  std::string operand() {
    const char* const operands[] = {"I",
                                    "J",
                                    "D",
                                    "S",
                                    "B",
                                    "5",
                                    "-3",
                                    "2.5",
                                    "\"text\"",
                                    "TRUE",
                                    "$1",
                                    "$2",
                                    "[I+J]",
                                    "[$1+2]",
                                    "[$2*$1-3]",
                                    "[D+I]",
                                    "[S+I]",
                                    "[J*D%7]",
                                    "NAMELESS",
                                    "L^GET(I)",
                                    "I^GET()",
                                    "[I^GET()-J]",
                                    "L^GETSIZE()",
                                    "[B+$3]",
                                    "L^FIND(J)",
                                    "[[I]@$1]",
                                    "&I",
                                    "T",
                                    "S^FIND(\"x\")",
                                    "_I_"};
    return pick(operands);
  }
  std::string statement(int depth) {
    const char* const variables[] = {"I", "J", "D", "S", "B", "T", "*NAME", "L"};
    const char* const operations[] = {"SET", "ADD", "SUB", "MUL", "DIV", "MOD"};
    const char* const comparisons[] = {"\"_\"", "\"!_\"", "\"<\"", "\">_\"",
                                       "_",     "\"?\"",  "WORD",  "\"nothing\""};
    switch (random_() % (depth > 0 ? 8 : 5)) {
      case 0:
        return "P^RUN(" + operand() + "," + operand() + ");";
      case 1:
        return "@INT(\"T\"," + operand() + ");";
      case 2:
        return "L^ADD(" + operand() + ");";
      case 3:
      case 4:
        return std::string(pick(variables)) + "^" + pick(operations) + "(" + operand() + ");";
      case 5:
        return "@LOOP({" + statement(depth - 1) + "}," + operand() + ",3,1);";
      default:
        return "@IF(" + operand() + "," + pick(comparisons) + "," + operand() + ",{" + statement(depth - 1) +
               "},{" + statement(depth - 1) + "});";
    }
  }

  std::minstd_rand random_;
};

class Reading : public ScriptTest {
 public:
  explicit Reading(bool isLiteral) {
    caches::enable(!isLiteral);
    add<CMC_Integer>("I", 3);
    add<CMC_Integer>("J", -8);
    add<CMC_Double>("D", 1.5);
    add<CMC_String>("S", CXString("4x"));
    add<CMC_Bool>("B", true);
    add<CMC_String>("NAME", CXString("J"));
    add<CMC_String>("WORD", CXString("<_"));
    const CMElement element("L", Origin());
    array_ = new CMC_Array(scope_, &element);
    scope_->addObject(array_);
    addBehaviour("P", "I^ADD([$1+$2]);S^ADD($1);@IF($1,\"<\",[$2-1],{J^SUB($2);},{D^ADD(I);J^SET($1);});");
  }
  ~Reading() override { caches::enable(true); }
  void TestBody() override {}

  // What the code leaves behind; it is compiled once and run twice.
  std::string outcome(const std::string& code, const TextList& arguments) {
    const Ref<CMC_Behaviour> behaviour(addBehaviour("RUNNER", code.c_str()));
    std::string left;
    for (int i = 0; i < 2; ++i) {
      left += behaviour->run(nullptr, &arguments, false) ? "broke " : "";
      for (const char* name : {"I", "J", "D", "S", "B"})
        left += scope_->find<CMC_Variable>(name)->toString().str() + " ";
      left += array_->toString().str() + "; ";
    }
    return left;
  }

 private:
  CMC_Array* array_;
};

TEST(Readings, AgreeOnRandomCode) {
  constexpr unsigned kPrograms = 500;
  for (unsigned seed = 1; seed <= kPrograms; ++seed) {
    RandomCode random(seed);
    const std::string code = random.program();
    const TextList arguments = random.arguments();
    const std::string remembered = Reading(false).outcome(code, arguments);
    ASSERT_EQ(remembered, Reading(true).outcome(code, arguments)) << seed << ": " << code;
  }
}

}  // namespace
}  // namespace footlight
