#include "platform/engine_path.h"

#include <gtest/gtest.h>

#include "foundation/limits.h"

namespace footlight::platform {
namespace {

TEST(EnginePath, MakesNamesNormal) {
  const EnginePath base = *EnginePath::of("C:\\Game\\Dane");
  struct Row {
    std::string name;
    const char* text;
  };
  const Row rows[] = {{"a.txt", "C:\\Game\\Dane\\a.txt"},
                      {".\\a\\\\b/./c\\", "C:\\Game\\Dane\\a\\b\\c"},
                      {"c:a", "C:\\Game\\Dane\\a"},
                      {"C:", "C:\\Game\\Dane"},
                      {"\\a", "C:\\a"},
                      {"C:/a/../b", "C:\\b"},
                      {"..\\x", "C:\\Game\\x"},
                      {"..\\..\\..\\..\\x", "C:\\x"},
                      {"\\", "C:\\"},
                      {"...", "C:\\Game\\Dane\\..."},
                      {"a:b", "(none)"},
                      {"D:\\a", "(none)"},
                      {"", "(none)"},
                      {"a\nb", "(none)"},
                      {"a\x7F", "(none)"},
                      {std::string("a\0b", 3), "(none)"},
                      {std::string(limits::kNameBytes + 1, '.'), "(none)"},
                      {std::string(limits::kNameBytes, 'n'), "(none)"}};
  for (const Row& row : rows) {
    const auto path = EnginePath::of(row.name, base);
    EXPECT_EQ(path ? path->text() : "(none)", row.text) << row.name;
  }
}

TEST(EnginePath, ComparesWithoutCase) {
  const EnginePath path = *EnginePath::of("C:\\Game\\\xA3\xF3\\x.txt");
  EXPECT_EQ(path.key(), EnginePath::of("/GAME/\xB3\xD3/X.TXT")->key());
  EXPECT_EQ(path.below(*EnginePath::of("C:\\gAME")), "\xA3\xF3\\x.txt");
  EXPECT_EQ(path.below(path), "");
  EXPECT_EQ(path.below({}), "Game\\\xA3\xF3\\x.txt");
  EXPECT_EQ(path.below(*EnginePath::of("C:\\Gam")), std::nullopt);
  EXPECT_EQ(path.parent().below(path), std::nullopt);
  EXPECT_EQ(EnginePath().parent().folderText(), "C:\\");
}

}  // namespace
}  // namespace footlight::platform
