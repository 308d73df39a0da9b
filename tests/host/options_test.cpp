#include "host/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace footlight::host {
namespace {

using testing::HasSubstr;

Parsed parse(std::vector<const char*> words) { return parseOptions(words); }

TEST(Options, HaveTheirDefaults) {
  const Parsed parsed = parse({});
  ASSERT_TRUE(parsed.options);
  const Options& options = *parsed.options;
  EXPECT_FALSE(options.headless);
  EXPECT_EQ(options.engineLine, "");
  EXPECT_EQ(options.step, 16U);
  EXPECT_EQ(options.clockStart, 10000U);
  EXPECT_FALSE(options.pacedReal);
  EXPECT_FALSE(options.ticks);
  EXPECT_EQ(options.ini, "footlight.ini");
  EXPECT_EQ(options.bigFile, "");
  EXPECT_EQ(options.bpp, 16);
  EXPECT_EQ(options.locale, "");
  EXPECT_FALSE(options.time);
  EXPECT_FALSE(options.seed);
  EXPECT_EQ(options.diagnose, Diagnose::quiet);
  EXPECT_FALSE(options.vocabulary);
}

TEST(Options, TakeTheirValuesFromAnywhereAndLeaveTheRestToTheEngine) {
  const Parsed parsed = parse({"-window",
                               "--headless",
                               "--step",
                               "5",
                               "/nosound",
                               "--clock",
                               "4294967295",
                               "bare",
                               "--pace",
                               "real",
                               "-res",
                               "800",
                               "600",
                               "--ticks",
                               "0",
                               "--ini",
                               "a b.ini",
                               "--big",
                               "-odd",
                               "--folder",
                               "f",
                               "--out=o",
                               "--name",
                               "",
                               "--bpp",
                               "32",
                               "--locale",
                               "040e",
                               "--time",
                               "1",
                               "--input",
                               "in.txt",
                               "--shot",
                               "3:a:b.png",
                               "--shot=4:c.png",
                               "--seed",
                               "7",
                               "--diagnose",
                               "stop",
                               "--vocabulary",
                               "--record-input",
                               "r.txt",
                               "--modules",
                               "m",
                               "-path",
                               "-",
                               "++",
                               "-5"});
  ASSERT_TRUE(parsed.options) << parsed.message;
  const Options& options = *parsed.options;
  EXPECT_EQ(options.engineLine, "-window /nosound bare -res 800 600 -path - ++ -5");
  EXPECT_TRUE(options.headless);
  EXPECT_EQ(options.step, 5U);
  EXPECT_EQ(options.clockStart, 4294967295U);
  EXPECT_TRUE(options.pacedReal);
  EXPECT_EQ(options.ticks, 0U);
  EXPECT_EQ(options.ini, "a b.ini");
  EXPECT_EQ(options.bigFile, "-odd");
  EXPECT_EQ(options.packFolder, "f");
  EXPECT_EQ(options.packFile, "o");
  EXPECT_EQ(options.packName, "");
  EXPECT_EQ(options.bpp, 32);
  EXPECT_EQ(options.locale, "040E");
  EXPECT_EQ(options.time, 1);
  EXPECT_EQ(options.input, "in.txt");
  ASSERT_EQ(options.shots.size(), 2U);
  EXPECT_EQ(options.shots[0].tick, 3U);
  EXPECT_EQ(options.shots[0].file, "a:b.png");
  EXPECT_EQ(options.shots[1].file, "c.png");
  EXPECT_EQ(options.seed, 7U);
  EXPECT_EQ(options.diagnose, Diagnose::stop);
  EXPECT_TRUE(options.vocabulary);
  EXPECT_EQ(options.recordInput, "r.txt");
  EXPECT_EQ(options.modules, "m");
}

TEST(Options, NameWhatIsBad) {
  using Words = std::vector<const char*>;
  for (const Words& words : {Words{"--headless", "--step", "-1"},
                             Words{"--headless", "--step", "4294967296"},
                             Words{"--headless", "--clock", "x"},
                             Words{"--headless", "--pace", "fast"},
                             Words{"--step", "5"},
                             Words{"--ticks", "1.5"},
                             Words{"--ticks", "-1"},
                             Words{"--ticks"},
                             Words{"--ticks", "--headless"},
                             Words{"--ticks", ""},
                             Words{"--bpp", "24"},
                             Words{"--locale", "04"},
                             Words{"--locale", "04G9"},
                             Words{"--time", "-1"},
                             Words{"--time", "99999999999999999999"},
                             Words{"--shot", "0:a.png"},
                             Words{"--shot", "5"},
                             Words{"--shot", "5:"},
                             Words{"--shot", ":a.png"},
                             Words{"--shot", "-5:a.png"},
                             Words{"--seed", "none"},
                             Words{"--diagnose", "loud"},
                             Words{"--headless=2"},
                             Words{"--unknown"},
                             Words{"--unknown=5"},
                             Words{"--"},
                             Words{"--bind", "127.0.0.1"},
                             Words{"--folder"},
                             Words{"--record", "f.wav"}}) {
    const Parsed parsed = parse(words);
    EXPECT_FALSE(parsed.options) << words.back();
    EXPECT_EQ(parsed.exitStatus, 1);
    const std::string_view first = words[0];
    const std::string name(words.size() > 2 ? words[1] : first.substr(0, first.find('=')));
    EXPECT_THAT(parsed.message, HasSubstr(name)) << words.back();
  }
}

TEST(Options, HelpAndVersionEndWell) {
  const Parsed help = parse({"--help", "-window"});
  EXPECT_FALSE(help.options);
  EXPECT_EQ(help.exitStatus, 0);
  for (const char* option : {"--headless", "--shot", "--diagnose", "--vocabulary", "-window"}) {
    EXPECT_THAT(help.message, HasSubstr(option));
  }
  const Parsed version = parse({"--version"});
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_THAT(version.message, HasSubstr("footlight "));
}

}  // namespace
}  // namespace footlight::host
