#include "script/vocabulary.h"

#include <set>

#include "objects/gfx/mc_image.h"
#include "objects/input/mc_dialog.h"
#include "objects/plain_types.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "objects/system/mc_timer.h"
#include "script/script_fixture.h"

namespace footlight {
namespace {

using Vocabulary = ScriptTest;

TEST_F(Vocabulary, EveryRunnerHasAllItsMethods) {
  const struct {
    int type;
    std::size_t methods;
  } rows[] = {
      {type::kBuiltIns, 18}, {type::kInteger, 39},  {type::kExpression, 39},  {type::kCondition, 3},
      {type::kBehaviour, 6}, {type::kRandom, 2},    {type::kApplication, 14}, {type::kEpisode, 7},
      {type::kScene, 27},    {type::kTimer, 8},     {type::kImage, 43},       {type::kDialog, 4},
      {type::kGroup, 14},    {type::kStructure, 3}, {type::kClass, 2},        {type::kSystem, 16},
      {type::kCnvLoader, 2},
  };
  for (const auto& row : rows) {
    const CMC_Runner* runner = CMC_RunnerFactory::getRunner(row.type);
    ASSERT_NE(runner, nullptr) << row.type;
    EXPECT_EQ(runner->ownMethods().size(), row.methods) << row.type;
    std::set<int> numbers;
    std::set<std::string_view> names;
    for (const Method& method : runner->ownMethods()) {
      EXPECT_TRUE(numbers.insert(method.number).second) << row.type << " " << method.name;
      EXPECT_TRUE(names.insert(method.name).second) << row.type << " " << method.name;
      EXPECT_FALSE(method.number >= CMC_Runner::kFirstBaseMethod &&
                   method.number <= CMC_Runner::kLastBaseMethod);
      EXPECT_LE(method.least, method.most);
      EXPECT_EQ(runner->resolveMethod(method.name), method.number);
    }
    EXPECT_EQ(runner->resolveMethod("SEND"), 96);
    EXPECT_EQ(runner->resolveMethod("send"), -1);
  }
  EXPECT_EQ(CMC_RunnerFactory::getRunner(type::kNetPeer), nullptr);
}

TEST_F(Vocabulary, EveryTypeThatADefinitionCanNameHasARunnerAndTheThreeSignals) {
  for (const ScriptType* description : allTypes()) {
    if (description->definitionWord == nullptr) continue;
    EXPECT_NE(CMC_RunnerFactory::getRunner(description->number), nullptr) << description->definitionWord;
    ASSERT_GE(description->signals.size(), 3u) << description->definitionWord;
    EXPECT_STREQ(description->signals[0].name, "ONINIT");
    EXPECT_STREQ(description->signals[1].name, "ONDONE");
    EXPECT_STREQ(description->signals[2].name, "ONSIGNAL");
    EXPECT_GE(description->pass, 1);
    EXPECT_LE(description->signals.size(), 32u);
  }
}

TEST_F(Vocabulary, WordsAndNumbersOfTypes) {
  const struct {
    const char* word;
    int number;
    const char* text;
  } rows[] = {
      {"INTEGER", 1, "INTEGER"},
      {"VARIABLE", 5, "5"},
      {"COMPLEXCONDITION", 11, "COMPLEX CONDITION"},
      {"CANVASOBSERVER", 103, "CANVAS OBSERVER"},
      {"EDITBOX", 2009, "2009"},
      {"STRUCTURE", 3002, "3002"},
      {"integer", -1, "-1"},
      {"NOSUCH", -1, "-1"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CMC_Object::getTypeId(row.word), row.number) << row.word;
    EXPECT_EQ(CMC_Object::typeToString(row.number), row.text) << row.word;
  }
}

TEST_F(Vocabulary, JsonNamesTheTablesOnce) {
  const std::string json = vocabularyJson();
  for (const char* piece :
       {"\"statements\"", "\"everyObject\"", "\"RUNONTIMER\"", "\"ONBRUTALCHANGED\"", "\"ELAPSE\""}) {
    EXPECT_NE(json.find(piece), std::string::npos) << piece;
  }
  EXPECT_EQ(std::count(json.begin(), json.end(), '{'), std::count(json.begin(), json.end(), '}'));
  EXPECT_EQ(std::count(json.begin(), json.end(), '['), std::count(json.begin(), json.end(), ']'));
}

}  // namespace
}  // namespace footlight
