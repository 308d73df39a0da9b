#include "script/mc_behaviour.h"

#include "foundation/limits.h"
#include "script/code_text.h"
#include "script/mc_condition.h"
#include "script/melement.h"
#include "script/script_fixture.h"

namespace footlight {
namespace {

using Behaviour = ScriptTest;

TEST_F(Behaviour, CutsStatementsOutsideOfRoundBrackets) {
  const struct {
    const char* code;
    std::vector<CXString> statements;
  } rows[] = {
      {"A^SET(1);B^SET(2)", {"A^SET(1)"}},
      {"A^SET(\"x y\");", {"A^SET(\"xy\")"}},
      {"@IF(A,_,B,{C^SET(1);},{C^SET(2);});", {"@IF(A,_,B,{C^SET(1);},{C^SET(2);})"}},
      {";;", {"", ""}},
      {"", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(code_text::cutStatements(row.code), row.statements) << row.code;
}

TEST_F(Behaviour, FillsMarks) {
  const TextList arguments{"one", "$1", "three"};
  const struct {
    const char* text;
    const char* filled;
  } rows[] = {{"$1$3", "onethree"}, {"$2", "$1"},    {"$4", "$4"},     {"$0", "$0"},
              {"$", "$"},           {"$$1", "$one"}, {"a$1b", "aoneb"}};
  for (const auto& row : rows) EXPECT_EQ(code_text::fillMarks(row.text, &arguments), row.filled);
  EXPECT_EQ(code_text::fillMarks("$1", nullptr), "$1");
}

TEST_F(Behaviour, ExpressionsGoFromLeftToRight) {
  add<CMC_Integer>("A", 10);
  auto* text = add<CMC_String>("R", CXString());
  const struct {
    const char* expression;
    const char* result;
  } rows[] = {{"[1+2*3]", "9"},  {"[1.5+1]", "2.50000"}, {"[1+1.5]", "3"},
              {"[-1]", "-1"},    {"[A-[2+3]]", "5"},     {"[]", "0"},
              {"[+]", "0"},      {"[A+]", "10"},         {"[A@3]", "3"},
              {"[A%4]", "2"},    {"[\"a\"+A]", "a10"},   {"[A@0]", "0"},
              {"[[[A]]]", "10"}, {"[A*-1]", "-1"},       {"[NOTHING+1]", "NOTHING1"}};
  for (const auto& row : rows) {
    run((std::string("R^SET(") + row.expression + ");").c_str());
    EXPECT_EQ(text->getValue(), row.result) << row.expression;
  }
}

TEST_F(Behaviour, CompactConditions) {
  add<CMC_Integer>("A", 5);
  add<CMC_String>("S", CXString("abc"));
  const struct {
    const char* text;
    bool holds;
  } rows[] = {{"A'5", true},
              {"A!'5", false},
              {"A<6", true},
              {"A<'5", true},
              {"A>5", false},
              {"A>'5", true},
              {"A?INTEGER", true},
              {"S'ABC", true},
              {"S<\"abd\"", true},
              {"A", false},
              {"", true},
              {"'", true},
              {"NOSUCH?INTEGER", false},
              {"[A+1]'6", true},
              {"A^FOO(1)'1", false}};
  for (const auto& row : rows) EXPECT_EQ(CMC_Condition::valid(scope_, row.text), row.holds) << row.text;
  EXPECT_FALSE(CMC_Condition::valid(scope_, "A", "==", "5"));
  EXPECT_TRUE(CMC_Condition::valid(scope_, "A", "<>", "6"));
}

TEST_F(Behaviour, BreaksClimbAndOneBreaksStay) {
  auto* count = add<CMC_Integer>("N", 0);
  addBehaviour("BREAKS", "@BREAK();N^ADD(100);");
  addBehaviour("ENDS", "@ONEBREAK();N^ADD(100);");
  EXPECT_FALSE(run("ENDS^RUN();N^INC();"));
  EXPECT_TRUE(run("BREAKS^RUN();N^INC();"));
  EXPECT_EQ(count->getValue(), 1);
  EXPECT_TRUE(run("@LOOP({@BREAK();},0,3,1);N^INC();"));
  run("N^SET(@BREAK());N^INC();");
  EXPECT_EQ(count->getValue(), 2);
}

TEST_F(Behaviour, EndsWithoutHarmWhateverItRemoves) {
  auto* count = add<CMC_Integer>("N", 0);
  const Ref<CMC_Behaviour> suicide(addBehaviour("SELF", "SELF^BREAK();N^INC();SELF^RUN();"));
  suicide->run(nullptr, nullptr, false);
  EXPECT_EQ(count->getValue(), 1);
  EXPECT_EQ(scope_->getObject("SELF"), nullptr);
  addBehaviour("FOREVER", "N^INC();FOREVER^RUN();");
  resetGuardHits();
  run("FOREVER^RUN();");
  EXPECT_EQ(count->getValue(), limits::kNestedRuns);  // one of them is the caller's own
  EXPECT_GT(guardHits("nested runs"), 0);
  EXPECT_EQ(CMC_VariableFactory::used(), 0);
}

TEST_F(Behaviour, DeepNestingOfTextIsAPlainValue) {
  add<CMC_String>("R", CXString());
  for (const char bracket : {'[', '(', '{'}) {
    const char closing = bracket == '[' ? ']' : (bracket == '(' ? ')' : '}');
    run(("R^SET(" + std::string(3000, bracket) + "A" + std::string(3000, closing) + ");").c_str());
    run(("R^SET(" + std::string(3000, bracket) + ");").c_str());
  }
  for (const char* code : {"A^GET;", "[;", "\";", "*^X();", "STRUCT|;", "@;", "THIS;", "THIS^X();", "*[^(;",
                           "&;", "A^B(;", "^;"})
    run(code);
}

TEST_F(Behaviour, LocalsLeaveWithTheRunThatDeclaredThem) {
  auto* seen = add<CMC_Integer>("SEEN", 0);
  addBehaviour("INNER", "SEEN^SET(LOCAL);");
  run("@INT(\"LOCAL\",5);@INT(\"LOCAL\",6);INNER^RUN();");
  EXPECT_EQ(seen->getValue(), 5);
  EXPECT_EQ(scope_->getObject("LOCAL"), nullptr);
}

using Container = ScriptTest;

TEST_F(Container, NamesEndingInZero) {
  auto* plain = add<CMC_Integer>("A", 1);
  EXPECT_EQ(scope_->getObject("A_0"), plain);
  EXPECT_EQ(scope_->getObject("A_0_0"), plain);
  EXPECT_EQ(scope_->getObject("A_1"), nullptr);
  auto* zero = add<CMC_Integer>("A_0", 2);
  EXPECT_EQ(scope_->getObject("A_0"), zero);
  std::string endless = "B";
  for (int i = 0; i < 5000; ++i) endless += "_0";
  EXPECT_EQ(scope_->getObject(endless), nullptr);
}

TEST_F(Container, ANewObjectOfANameEndsTheOldOne) {
  const WeakRef<CMC_Object> older(add<CMC_Integer>("A", 1));
  auto* count = add<CMC_Integer>("N", 0);
  run("N^SET(A);");
  add<CMC_Integer>("A", 7);
  EXPECT_FALSE(older);
  run("N^SET(A);");
  EXPECT_EQ(count->getValue(), 7);
}

// A scope with no room: what comes in ends.
class FullScope : public CMC_ObjectsContainer {
 public:
  FullScope() : CMC_ObjectsContainer(nullptr, "FULL", type::kScene) {}
  bool addObject(CMC_Object* object) override {
    destroy(object);
    return false;
  }
};

TEST_F(Container, InlineCodeThatFindsNoRoomIsNotBound) {
  const Owned<FullScope> full(new FullScope);
  CMElement element("A", {});
  element.addProperty("ONCHANGED", "{A^INC();}");
  const Owned<CMC_Integer> variable(new CMC_Integer(full.get(), &element));
  EXPECT_EQ(variable->getBehaviour("ONCHANGED"), nullptr);
  EXPECT_FALSE(variable->isSignalBound(variable->getSignalIndex("ONCHANGED")));
}

TEST_F(Container, ClonesAreNamedAndCounted) {
  auto* source = add<CMC_Integer>("A", 3);
  run("A^CLONE(2);A_1^CLONE();");
  ASSERT_NE(scope_->getOwnObject("A_2"), nullptr);
  EXPECT_NE(scope_->getOwnObject("A_1_1"), nullptr);
  EXPECT_TRUE(scope_->getOwnObject("A_2")->isClone());
  EXPECT_EQ(scope_->getOwnObject("A_2")->getCloneIdx(), 2);
  EXPECT_EQ(source->getClonesNo(), 2);
  const int before = scope_->getElementsNo();
  run("A^CLONE(2000000000);A^CLONE(-1);");
  EXPECT_EQ(scope_->getElementsNo(), before);
}

}  // namespace
}  // namespace footlight
