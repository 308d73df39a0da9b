#include "foundation/command_line6.h"

#include <gtest/gtest.h>

namespace footlight {
namespace {

TEST(CommandLine6, AnEmptyLineGivesDefaults) {
  const CCommandLine6 line("");
  EXPECT_EQ(line.getNoArgs(), 0);
  EXPECT_EQ(line.getResolution(), CXSize(800, 600));
  EXPECT_TRUE(line.isMusicEnabled());
  EXPECT_TRUE(line.isSoundEnabled());
  EXPECT_FALSE(line.isWindowMode());
  EXPECT_FALSE(line.isGFXEnabled());
  EXPECT_EQ(line.getPath(), "");
}

TEST(CommandLine6, KnowsItsFlags) {
  struct Row {
    const char* token;
    bool (CCommandLine6::*getter)() const;
    bool present;
  };
  const Row rows[] = {
      {"nomusic", &CCommandLine6::isMusicEnabled, false},
      {"nosound", &CCommandLine6::isSoundEnabled, false},
      {"window", &CCommandLine6::isWindowMode, true},
      {"nogfx", &CCommandLine6::isGFXEnabled, true},
      {"server", &CCommandLine6::isServer, true},
      {"client", &CCommandLine6::isClient, true},
      {"pf", &CCommandLine6::isPageFlippingEnabled, true},
      {"vmem", &CCommandLine6::isVMem, true},
      {"code", &CCommandLine6::isToCode, true},
      {"decode", &CCommandLine6::isToDecode, true},
      {"remove", &CCommandLine6::isToRemove, true},
      {"brunakolte", &CCommandLine6::isCheatMode, true},
      {"cheat", &CCommandLine6::isCheatMode, true},
      {"2bin", &CCommandLine6::is2Bin, true},
      {"forceCNV", &CCommandLine6::isForceCNV, true},
      {"debug", &CCommandLine6::isDebugMode, true},
      {"bigfile", &CCommandLine6::isCreateBigFile, true},
      {"log", &CCommandLine6::isLogEnabled, true},
  };
  for (const Row& row : rows) {
    const std::string name = row.token;
    for (const std::string& line : {"-" + name, "/" + name, "x  -" + name + " y"}) {
      EXPECT_EQ((CCommandLine6(line).*row.getter)(), row.present) << line;
    }
    std::string otherCase = name;
    otherCase[name.size() - 1] = static_cast<char>(otherCase[name.size() - 1] ^ 0x20);
    for (const std::string& line : {name, "--" + name, "-" + name + "x", "-" + otherCase, "\t-" + name}) {
      EXPECT_EQ((CCommandLine6(line).*row.getter)(), !row.present) << line;
    }
  }
}

TEST(CommandLine6, ReadsTheResolution) {
  struct Row {
    const char* line;
    CXSize size;
  };
  const Row rows[] = {
      {"-res 1024 768", {1024, 768}},
      {"-res 1024", {1024, 600}},
      {"-res", {800, 600}},
      {"-res 800 800", {800, 600}},  // the repeated token ends the line
      {"-res 640 640 -res 1 2", {640, 600}},
      {"res 640 480", {800, 600}},             // a bare word is no option,
      {"res 640 480 -res 1 2", {640, 480}},    // but the search starts at it
      {"-path 640 x -res 640 480", {640, 0}},  // the height stands behind the first "640"
      {"/res 12abc -5", {12, -5}},
  };
  for (const Row& row : rows) EXPECT_EQ(CCommandLine6(row.line).getResolution(), row.size) << row.line;
}

TEST(CommandLine6, ReadsThePath) {
  EXPECT_EQ(CCommandLine6("-path C:\\game -window").getPath(), "C:\\game");
  EXPECT_EQ(CCommandLine6("-window -path").getPath(), "");
  EXPECT_EQ(CCommandLine6("path C:\\game").getPath(), "");
  EXPECT_EQ(CCommandLine6("path a -path b").getPath(), "a");
}

TEST(CommandLine6, EndsAtARepeatedToken) {
  const CCommandLine6 line("a b a a -window");
  EXPECT_EQ(line.getNoArgs(), 3);
  EXPECT_FALSE(line.isWindowMode());
}

}  // namespace
}  // namespace footlight
