#include "files/language_os_ver.h"

#include <gtest/gtest.h>

#include "support/test_platform.h"

namespace footlight {
namespace {

TEST(LanguageOSVer, KnowsTheSystemsLanguage) {
  struct Row {
    const char* locale;
    int language;
    const char* folder;
  };
  const Row rows[] = {{"0415", 1, "POL"}, {"0405", 2, "CZE"}, {"0402", 3, "BUL"},
                      {"0418", 4, "ROM"}, {"0419", 5, "RUS"}, {"040e", 6, "HUN"},
                      {"041B", 7, "SLO"}, {"0409", 9, ""},    {"", 9, ""}};
  test::TestPlatform machine;
  for (const Row& row : rows) {
    machine.systemLocale = row.locale;
    const CLanguageOSVer language;
    EXPECT_EQ(language.getLang(), row.language) << row.locale;
    EXPECT_EQ(language.getLanguageFolder(), row.folder) << row.locale;
  }
}

TEST(LanguageOSVer, ChangesTellTheWindow) {
  test::TestPlatform machine;
  CLanguageOSVer language;
  int calls = 0;
  language.onLanguageChange = [&] { ++calls; };
  language.setLanguageFolder("0415");
  EXPECT_EQ(calls, 0);  // no window yet
  char memory = 0;
  language.setWindowIfc(reinterpret_cast<CWindow*>(&memory));
  language.setLanguageFolder("0000");
  EXPECT_EQ(language.getLang(), 1);
  EXPECT_EQ(language.getLanguageFolder(), "POL");
  EXPECT_EQ(calls, 1);
}

TEST(LanguageOSVer, FindsLanguageVersions) {
  test::TestPlatform machine;
  machine.folder.write("dir/pol/both.txt", "");
  machine.folder.write("dir/both.txt", "");
  machine.folder.write("dir/plain.txt", "");
  CLanguageOSVer language;
  EXPECT_EQ(language.getLocalFileName("dir\\both.txt"), "dir\\both.txt");
  language.setLanguageFolder("0415");
  EXPECT_EQ(language.getLocalFileName("dir\\both.txt"), "dir\\POL\\both.txt");
  EXPECT_EQ(language.getLocalFileName("dir\\plain.txt"), "dir\\plain.txt");
  EXPECT_EQ(language.getLocalFileName("bare.txt"), "POL\\bare.txt");
}

}  // namespace
}  // namespace footlight
