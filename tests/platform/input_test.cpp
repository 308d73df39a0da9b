#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "platform/input_recorder.h"
#include "platform/input_script.h"

namespace footlight::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(InputQueue, StateFollowsEventsAndQueuesAreBounded) {
  resetGuardHits();
  InputQueue queue(false);
  for (int i = 0; i < limits::kInputEvents; ++i) queue.put(KeyEvent{30, i % 2 == 0});
  EXPECT_EQ(guardHits("input-queue"), 0);
  queue.put(KeyEvent{57, true});
  queue.put(KeyEvent{256, true});
  queue.put(KeyEvent{-1, true});
  EXPECT_EQ(guardHits("input-queue"), 1);
  EXPECT_TRUE(queue.isKeyDown(57)) << "the state follows even a dropped event";
  EXPECT_FALSE(queue.isKeyDown(30));
  EXPECT_FALSE(queue.isKeyDown(256));
  EXPECT_FALSE(queue.isKeyDown(-1));
  EXPECT_EQ(queue.takeKeyEvents().size(), static_cast<std::size_t>(limits::kInputEvents));
  EXPECT_THAT(queue.takeKeyEvents(), IsEmpty());
}

TEST(InputQueue, MovingTheCursorMakesNoEvent) {
  InputQueue queue(false);
  queue.put(MouseEvent{MouseEventKind::move, 5, 6});
  EXPECT_EQ(queue.cursorPosition(), (CursorPosition{5, 6}));
  queue.moveCursor({7, 8});
  EXPECT_EQ(queue.cursorPosition(), (CursorPosition{7, 8}));
  EXPECT_EQ(queue.takeMouseEvents().size(), 1U);
}

TEST(InputQueue, TwoThreadsLoseNothing) {
  InputQueue queue(true);
  constexpr int kEvents = 3000;
  std::thread writer([&] {
    for (int i = 0; i < kEvents; ++i) {
      queue.put(MouseEvent{MouseEventKind::move, i, 0});
      queue.put(KeyEvent{1, true});
    }
  });
  std::vector<int> seen;
  std::size_t keys = 0;
  while (seen.size() < kEvents || keys < kEvents) {
    for (const MouseEvent& event : queue.takeMouseEvents()) seen.push_back(event.x);
    keys += queue.takeKeyEvents().size();
    std::this_thread::yield();
  }
  writer.join();
  for (int i = 0; i < kEvents; ++i) ASSERT_EQ(seen[static_cast<std::size_t>(i)], i);
}

TEST(InputScript, PlaysEveryEventAtItsTick) {
  InputScript script;
  ASSERT_EQ(script.parse("# a click\n"
                         "\t3 down left   # where the cursor is\r\n"
                         "2 move 10 -20\n"
                         "\n"
                         "3 up left\n"
                         "3 down right\n"
                         "4 dblclick 1 2\n"
                         "4 keydown 57\n"
                         "4 activate 0\n"
                         "4294967295 keyup 255",
                         "x"),
            "");
  InputQueue queue(false);
  std::vector<WindowEvent> window;
  script.play(1, queue, window);
  EXPECT_THAT(queue.takeMouseEvents(), IsEmpty());
  script.play(2, queue, window);
  EXPECT_THAT(queue.takeMouseEvents(), ElementsAre(MouseEvent{MouseEventKind::move, 10, -20}));
  script.play(3, queue, window);
  EXPECT_THAT(queue.takeMouseEvents(),
              ElementsAre(MouseEvent{MouseEventKind::buttonDown, 10, -20},
                          MouseEvent{MouseEventKind::buttonUp, 10, -20},
                          MouseEvent{MouseEventKind::buttonDown, 10, -20, MouseButton::right}));
  EXPECT_THAT(window, IsEmpty());
  script.play(4, queue, window);
  EXPECT_THAT(queue.takeMouseEvents(), ElementsAre(MouseEvent{MouseEventKind::doubleClick, 1, 2}));
  EXPECT_THAT(queue.takeKeyEvents(), ElementsAre(KeyEvent{57, true}));
  EXPECT_THAT(window, ElementsAre(WindowEvent{WindowEvent::Kind::activate, 0}));
  script.play(4294967295U, queue, window);
  EXPECT_THAT(queue.takeKeyEvents(), ElementsAre(KeyEvent{255, false}));
}

TEST(InputScript, NamesTheBadLine) {
  for (const char* line :
       {"0 move 1 2",    "-1 move 1 2", "4294967296 move 1 2", "x move 1 2",     "1",
        "1 jump 1 2",    "1 move 1",    "1 move 1 2 3",        "1 move 1 2x",    "1 move 32768 0",
        "1 down centre", "1 down",      "1 keydown 256",       "1 keydown -1",   "1 keyup A",
        "1 char a",      "1 char 256",  "1 charrepeat",        "1 keyrepeat -1", "1 activate 2",
        "1 Move 1 2",    "1move 1 2"}) {
    InputScript script;
    const std::string text = std::string("1 move 1 2\n# fine\n") + line + "\n2 up left\n";
    EXPECT_THAT(script.parse(text, "play.txt"), HasSubstr("play.txt:3: ")) << line;
    EXPECT_THAT(script.lines(), IsEmpty()) << line;
  }
  InputScript script;
  EXPECT_THAT(script.load("/nowhere/input.txt"), HasSubstr("/nowhere/input.txt"));
  EXPECT_THAT(script.load("/"), HasSubstr("cannot be read"));
}

TEST(InputRecorder, WritesWhatTheScriptPlays) {
  const auto path = std::filesystem::temp_directory_path() / ("footlight_input_" + std::to_string(getpid()));
  const std::vector<MouseEvent> mouse = {{MouseEventKind::move, 3, 4},
                                         {MouseEventKind::buttonDown, 3, 4, MouseButton::middle},
                                         {MouseEventKind::doubleClick, 5, 6},
                                         {MouseEventKind::buttonUp, 5, 6, MouseButton::middle}};
  const std::vector<CharacterEvent> typed = {{' '}, {185, true}};
  {
    InputRecorder recorder(path.string());
    ASSERT_TRUE(recorder.failure().empty());
    InputQueue queue(false);
    queue.tellTyping();
    queue.recordTo(&recorder);
    recorder.setTick(7);
    for (const MouseEvent& event : mouse) queue.put(event);
    queue.put(KeyEvent{57, true});
    recorder.setTick(8);
    for (const CharacterEvent& event : typed) queue.put(event);
    queue.put(KeyEvent{57, true, true});
    recorder.setTick(9);
    queue.put(KeyEvent{57, false});
    recorder.write(WindowEvent{WindowEvent::Kind::activate, 0});
  }
  InputScript script;
  ASSERT_EQ(script.load(path.string()), "");
  std::filesystem::remove(path);
  InputQueue queue(false);
  std::vector<WindowEvent> window;
  script.play(6, queue, window);
  EXPECT_THAT(queue.takeMouseEvents(), IsEmpty());
  script.play(7, queue, window);
  EXPECT_EQ(queue.takeMouseEvents(), mouse);
  EXPECT_THAT(queue.takeKeyEvents(), ElementsAre(KeyEvent{57, true}));
  EXPECT_TRUE(script.tellsTyping());
  queue.takeCharacters();
  script.play(8, queue, window);
  EXPECT_EQ(queue.takeCharacters(), typed);
  EXPECT_THAT(queue.takeKeyEvents(), ElementsAre(KeyEvent{57, true, true}));
  script.play(9, queue, window);
  EXPECT_THAT(queue.takeKeyEvents(), ElementsAre(KeyEvent{57, false}));
  EXPECT_THAT(window, ElementsAre(WindowEvent{WindowEvent::Kind::activate, 0}));
  EXPECT_EQ(InputRecorder("/nowhere/input.txt").failure(), "there is no such folder");
}

}  // namespace
}  // namespace footlight::platform
