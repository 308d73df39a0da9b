#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "anim/frames.h"
#include "anim/run.h"
#include "anim/speech.h"
#include "anim/words.h"
#include "support/test_platform.h"

namespace footlight::anim {
namespace {

using test::TemporaryFolder;
using testing::HasSubstr;

constexpr const char* kDescription = R"(# a figure
bits 15
packing lzo
fps 12
opacity 200
random 3
flags stream-sounds 5
author "A. Painter"
description "two \"lines\"\nof text"
frame a.png at -3 7
frame b.png
frame a.png at 4 0
frame -
event walk fps 10 loop 1 2 times 4 ping-pong flags 0x100
step a.png
step 1 offset 2 -9 opacity 128 name left text "a b" sound step.wav
step 3
event "świt dnia" opacity 9
)";

image::Picture drawing(int width, int height, std::uint32_t alpha) {
  image::Picture picture;
  picture.pixels = {width, height, {}};
  for (int i = 0; i < width * height; ++i)
    picture.pixels.pixels.push_back(alpha << 24 | static_cast<std::uint32_t>(i * 8 % 256) * 0x010101);
  picture.hasAlpha = alpha != 255;
  return picture;
}

void write(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
}

std::string read(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Speech, ListsTheEventsOfAFigure) {
  AnnFile animation;
  const std::string none =
      "before: none: there is no START, STARTING has no effect\n"
      "talks:  none: whatever event is drawn comes in their place\n"
      "after:  none: there is no END or STOP, ENDING has no effect\n";
  EXPECT_EQ(speechOf(animation, ""), "no events: the figure speaks without pictures\n");
  for (const char* name : {"P_START", "9", "p_x", "P_STOP", "P_", "PA"}) {
    animation.events.emplace_back().name = name;
    animation.events.back().frames.resize(animation.events.size() - 1);
  }
  EXPECT_EQ(speechOf(animation, "P"),
            "before: P_START, no frames: nothing moves until the sound ends\ntalks:  p_x, 2 frames\n"
            "talks:  P_, 4 frames\nafter:  P_STOP, 3 frames\n");
  animation.events.erase(animation.events.begin() + 1);
  EXPECT_EQ(speechOf(animation, ""), none);
  EXPECT_EQ(run({.command = Command::speech, .file = "x", .prefix = "\xFF"}).failure,
            "x: the prefix has letters that no event can have");
}

TEST(Description, SaysWhatWasReadAndReadsWhatItSays) {
  std::string why;
  const auto parsed = parse(kDescription, &why);
  ASSERT_TRUE(parsed) << why;
  const AnnFile& animation = parsed->animation;
  EXPECT_EQ(animation.flags, 0x400005u);
  EXPECT_EQ(animation.description, "two \"lines\"\nof text");
  ASSERT_EQ(animation.events.size(), 2u);
  const _annEventInfo3& walk = animation.events[0];
  EXPECT_EQ(walk.flags, 0x20100u);
  EXPECT_EQ(walk.frames, (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(walk.infos[1].offset, CXPoint(2, -9));
  EXPECT_EQ(walk.infos[1].text, "a b");
  EXPECT_EQ(animation.events[1].name, "\x9Cwit dnia");  // in code page 1250
  const std::string printed = print(*parsed);
  const auto again = parse(printed, &why);
  ASSERT_TRUE(again) << why << "\n" << printed;
  EXPECT_EQ(print(*again), printed);
  EXPECT_EQ(writeAnn(again->animation), writeAnn(animation));
}

TEST(Description, KeepsNamesOfFilesAndBackslashes) {
  std::string why;
  const auto parsed = parse("author \"C:\\\\new\"\nframe \"\xC5\xBC \xFF.png\"\nevent e\nstep 0\n", &why);
  ASSERT_TRUE(parsed) << why;
  EXPECT_EQ(parsed->animation.author, "C:\\new");
  const auto again = parse(print(*parsed), &why);
  ASSERT_TRUE(again) << why;
  EXPECT_EQ(again->animation.author, "C:\\new");
  EXPECT_EQ(again->pictures, parsed->pictures);
}

TEST(Description, NamesTheLineAndWhatIsWrong) {
  constexpr struct {
    const char* text;
    const char* why;
  } kRows[] = {
      {"fps 15\ncolour 3\n", "line 2: \"colour\" is no command; there are bits, packing"},
      {"bits 24", "line 1: the bits must be a number from 15 to 16, not \"24\""},
      {"opacity", "line 1: the opacity is missing"},
      {"author \"A", "a double quote is missing"},
      {"step 0", "a step needs an event before it"},
      {"event e\nstep 0", "line 2: no frame before this line is \"0\""},
      {"frame a.png\nevent e\nstep a.png offset 1", "line 3: Y is missing"},
      {"frame a.png at 40000 0", "X must be a number from -32768"},
      {"event e loud", "\"loud\" means nothing here; there are fps"},
      {"event 12345678901234567890123456789012", "at most 31 bytes"},
      {"author \xE6\x97\xA5", "code page 1250"},
      {"fps 15 16", "\"16\" is too much here"},
  };
  for (const auto& row : kRows) {
    std::string why;
    EXPECT_FALSE(parse(row.text, &why)) << row.text;
    EXPECT_THAT(why, HasSubstr(row.why));
  }
}

class Tool : public testing::Test {
 protected:
  std::string in(const char* name) const { return (folder_.path() / name).string(); }

  void writeFolder() {
    write(in("animation.txt"), kDescription);
    std::string why;
    for (const auto& [name, width, alpha] : {std::tuple{"a.png", 9, 255u}, std::tuple{"b.png", 5, 77u}}) {
      const auto png = *image::toPng(drawing(width, 6, alpha), &why);
      write(in(name), {reinterpret_cast<const char*>(png.data()), png.size()});
    }
  }

  TemporaryFolder folder_;
};

TEST_F(Tool, BuildsWhatItTakesApart) {
  writeFolder();
  Outcome outcome =
      run({.command = Command::build, .file = in("one.ann"), .folder = folder_.path().string()});
  ASSERT_EQ(outcome.failure, "");
  EXPECT_THAT(outcome.text, HasSubstr("4 frames of at most 9x6, 15 bits per pixel"));
  ASSERT_EQ(run({.command = Command::extract, .file = in("one.ann"), .folder = in("apart")}).failure, "");
  ASSERT_EQ(run({.command = Command::build, .file = in("two.ann"), .folder = in("apart")}).failure, "");
  EXPECT_EQ(read(in("two.ann")), read(in("one.ann")));
  EXPECT_FALSE(read(in("one.ann")).empty());
}

TEST_F(Tool, ShowsAnEventInTheMiddleOfItsWindow) {
  writeFolder();
  ASSERT_EQ(
      run({.command = Command::build, .file = in("one.ann"), .folder = folder_.path().string()}).failure, "");
  const Outcome outcome = run({.command = Command::view,
                               .file = in("one.ann"),
                               .event = "WALK",
                               .hostWords = {"--headless", "--ticks", "3", "--shot", "3:" + in("shot.png")}});
  ASSERT_EQ(outcome.failure, "");
  const auto shot = platform::readPngFile(in("shot.png"));
  ASSERT_TRUE(shot);
  int lit = 0;
  CXRect seen(shot->width, shot->height, 0, 0);
  for (int i = 0; i < shot->width * shot->height; ++i) {
    if ((shot->pixels[static_cast<std::size_t>(i)] & 0xFFFFFF) == 0) continue;
    ++lit;
    seen = {std::min(seen.left, i % shot->width), std::min(seen.top, i / shot->width),
            std::max(seen.right, i % shot->width + 1), std::max(seen.bottom, i / shot->width + 1)};
  }
  EXPECT_GT(lit, 9);
  EXPECT_NEAR((seen.left + seen.right) / 2, shot->width / 2, 12);
  EXPECT_NEAR((seen.top + seen.bottom) / 2, shot->height / 2, 12);
}

TEST_F(Tool, NamesTheFileAndWhatIsWrong) {
  writeFolder();
  write(in("bad.ann"), "NVP");
  std::filesystem::create_directory(in("empty"));
  std::filesystem::create_directory(in("linked"));
  std::filesystem::create_symlink("../outside", in("linked/animation.txt"));
  run({.command = Command::build, .file = in("good.ann"), .folder = folder_.path().string()});
  const struct {
    Words words;
    const char* why;
  } kRows[] = {
      {{.command = Command::info, .file = in("none.ann")}, "none.ann: cannot be read"},
      {{.command = Command::extract, .file = in("bad.ann"), .folder = in("x")}, "bad.ann: "},
      {{.command = Command::build, .file = in("x.ann"), .folder = in("empty")},
       "animation.txt: cannot be read"},
      {{.command = Command::build, .file = in("empty"), .folder = folder_.path().string()},
       "empty: is a folder"},
      {{.command = Command::extract, .file = in("good.ann"), .folder = in("linked")},
       "animation.txt: is a link"},
  };
  for (const auto& row : kRows) EXPECT_THAT(run(row.words).failure, HasSubstr(row.why));
  write(in("b.png"), "no picture");
  const Outcome outcome =
      run({.command = Command::build, .file = in("x.ann"), .folder = folder_.path().string()});
  EXPECT_THAT(outcome.failure, HasSubstr("b.png: "));
  EXPECT_FALSE(std::filesystem::exists(in("x.ann")));
  EXPECT_FALSE(std::filesystem::exists(in("outside")));
}

TEST(Words, AskForHelpOrNameWhatIsWrong) {
  const char* const help[] = {"footlight-anim", "view", "--help"};
  EXPECT_EQ(parseWords(3, help).exitStatus, kDone);
  EXPECT_THAT(parseWords(3, help).message, HasSubstr("--event"));
  const char* const none[] = {"footlight-anim", "paint"};
  EXPECT_EQ(parseWords(2, none).exitStatus, kFailed);
}

}  // namespace
}  // namespace footlight::anim
