#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/run.h"
#include "platform/posix/atomic_file.h"
#include "support/test_platform.h"

namespace footlight::data {
namespace {

using test::TemporaryFolder;
using testing::HasSubstr;

Bytes bytesOf(std::initializer_list<int> numbers) {
  Bytes bytes;
  for (const int number : numbers) bytes.push_back(static_cast<std::byte>(number));
  return bytes;
}
Bytes bytesOf(std::string_view text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

// What a game writes, byte by byte: 7, 2.5, TRUE and an a with a tail.
const Bytes kArray = bytesOf({4, 0, 0, 0, 1, 0, 0, 0, 7, 0, 0, 0, 4, 0, 0, 0, 0xC4, 9,   0,
                              0, 3, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0,    0xB9});
// 16 by 16, -1 at 1, 2.
const Bytes kGrid = bytesOf(
    {2, 0, 0, 0, 16, 0, 0, 0, 16, 0, 0, 0, 33, 0, 0, 0, 1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0, 0});

TEST(Forms, AreKnownAndComeBack) {
  const struct {
    Form form;
    Bytes file;
    const char* json;
  } kRows[] = {
      {Form::array, kArray, R"([7,2.5,true,"ą"])"},
      {Form::array, bytesOf({0, 0, 0, 0}), "[]"},
      {Form::grid, kGrid, R"({"sizes":[16,16],"cells":[{"x":1,"y":2,"value":-1}]})"},
      {Form::table, bytesOf("anna|7|\r\n\n\xB9||\n"), R"([["anna","7"],["ą",""]])"},
      {Form::ini, bytesOf("; note\n[MAIN]\nA=1=2\nA=3\n\n[B]\n"), R"({"MAIN":{"A":"1=2"},"B":{}})"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.json);
    EXPECT_EQ(formOf(row.file), row.form);
    std::string why;
    const auto json = rowOf(row.form).read(row.file, &why);
    ASSERT_TRUE(json) << why;
    EXPECT_EQ(json->dump(), row.json);
    if (rowOf(row.form).write == nullptr) continue;
    const auto file = rowOf(row.form).write(*json, &why);
    ASSERT_TRUE(file) << why;
    EXPECT_EQ(*file, row.file);
  }
}

TEST(Forms, FilesCutShortAreNone) {
  std::string why;
  for (const Bytes* file : {&kArray, &kGrid}) {
    for (std::size_t i = 0; i < file->size(); ++i) {
      const std::span part = std::span(*file).first(i);
      EXPECT_FALSE(rowOf(Form::array).read(part, &why)) << i;
      EXPECT_FALSE(rowOf(Form::grid).read(part, &why)) << i;
    }
  }
  Bytes longer = kArray;
  longer.push_back(std::byte{0});
  EXPECT_FALSE(rowOf(Form::array).read(longer, &why));
}

TEST(Forms, JsonThatIsNoValueIsNamed) {
  for (const auto& [form, json, reason] : std::vector<std::tuple<Form, const char*, const char*>>{
           {Form::array, "7", "an array is wanted"},
           {Form::array, "[1,null]", "null is no INTEGER"},
           {Form::array, "[2147483648]", "2147483648 is no"},
           {Form::array, "[1e300]", "is no INTEGER"},
           {Form::array, "[\"\xE4\xB8\xAD\"]", "is no INTEGER"},
           {Form::grid, "[]", "sizes"},
           {Form::grid, R"({"sizes":[0],"cells":[]})", "impossible"},
           {Form::grid, R"({"sizes":[65536,65536],"cells":[]})", "impossible"},
           {Form::grid, R"({"sizes":[4,4],"cells":[{"x":4,"y":0,"value":1}]})", "no cell"},
           {Form::grid, R"({"sizes":[4,4],"cells":[{"x":0,"y":9,"value":1}]})", "no cell"},
           {Form::grid, R"({"sizes":[4,4],"cells":[{"x":0,"y":0}]})", "no cell"}}) {
    std::string why;
    EXPECT_FALSE(rowOf(form).write(Json::parse(json), &why)) << json;
    EXPECT_THAT(why, HasSubstr(reason)) << json;
  }
}

Outcome runWords(std::vector<const char*> words) {
  words.insert(words.begin(), "footlight-data");
  const Parsed parsed = parseWords(static_cast<int>(words.size()), words.data());
  EXPECT_TRUE(parsed.words) << parsed.message;
  return parsed.words ? run(*parsed.words) : Outcome();
}

TEST(DataTool, MakesAndShows) {
  const TemporaryFolder folder;
  const std::string json = folder.path().string() + "/a.json", file = folder.path().string() + "/a.dat";
  const std::string text = "[1, 2.0, \"x\"]";
  ASSERT_EQ(platform::writeAtomically(json, bytesOf(text)), "");
  EXPECT_EQ(runWords({"make", json.c_str(), file.c_str()}).failure, "");
  EXPECT_EQ(Json::parse(runWords({"show", file.c_str()}).text).dump(), "[1,2.0,\"x\"]");
  EXPECT_THAT(runWords({"show", file.c_str(), "--as", "grid"}).failure, HasSubstr("is no grid file"));
  EXPECT_THAT(runWords({"show", "/nowhere"}).failure, HasSubstr("cannot be read"));
  EXPECT_THAT(runWords({"make", file.c_str(), json.c_str()}).failure, HasSubstr("is no JSON"));
}

}  // namespace
}  // namespace footlight::data
