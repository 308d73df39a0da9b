#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "platform/posix/system_locale.h"
#include "platform/sdl/scan_codes.h"
#include "platform/sdl/sdl_platform.h"

namespace footlight::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ScanCodes, AreThoseOfTheHardware) {
  struct Case {
    SDL_Scancode key;
    int code;
  };
  for (const Case& c :
       {Case{SDL_SCANCODE_ESCAPE, 1},  Case{SDL_SCANCODE_0, 11},      Case{SDL_SCANCODE_TAB, 15},
        Case{SDL_SCANCODE_P, 25},      Case{SDL_SCANCODE_RETURN, 28}, Case{SDL_SCANCODE_LCTRL, 29},
        Case{SDL_SCANCODE_L, 38},      Case{SDL_SCANCODE_LSHIFT, 42}, Case{SDL_SCANCODE_M, 50},
        Case{SDL_SCANCODE_RSHIFT, 54}, Case{SDL_SCANCODE_LALT, 56},   Case{SDL_SCANCODE_SPACE, 57},
        Case{SDL_SCANCODE_F10, 68},    Case{SDL_SCANCODE_KP_7, 71},   Case{SDL_SCANCODE_KP_0, 82},
        Case{SDL_SCANCODE_F12, 88},    Case{SDL_SCANCODE_RCTRL, 157}, Case{SDL_SCANCODE_RALT, 184},
        Case{SDL_SCANCODE_UP, 200},    Case{SDL_SCANCODE_LEFT, 203},  Case{SDL_SCANCODE_RIGHT, 205},
        Case{SDL_SCANCODE_DOWN, 208},  Case{SDL_SCANCODE_DELETE, 211}}) {
    EXPECT_EQ(scanCodeOf(c.key), c.code);
  }
  EXPECT_EQ(scanCodeOf(SDL_SCANCODE_UNKNOWN), -1);
}

TEST(Viewport, KeepsTheAspectAndMapsBack) {
  struct Case {
    int width, height;
    Rect target;
    bool whole;
  };
  for (const Case& c : {Case{800, 600, {0, 0, 800, 600}, true}, Case{1600, 1200, {0, 0, 1600, 1200}, true},
                        Case{1700, 1200, {50, 0, 1650, 1200}, true},
                        Case{800, 1000, {0, 200, 800, 800}, true}, Case{1200, 900, {0, 0, 1200, 900}, false},
                        Case{400, 300, {0, 0, 400, 300}, false}, Case{1, 1000, {0, 499, 1, 500}, false}}) {
    const Viewport viewport(800, 600, c.width, c.height);
    const Rect& target = viewport.target();
    EXPECT_THAT((std::vector<int>{target.left, target.top, target.right, target.bottom}),
                ElementsAre(c.target.left, c.target.top, c.target.right, c.target.bottom));
    EXPECT_EQ(viewport.isWhole(), c.whole) << c.width;
    EXPECT_EQ(viewport.toScreen(-5, -5), (CursorPosition{0, 0}));
    EXPECT_EQ(viewport.toScreen(100000, 100000), (CursorPosition{799, 599}));
    if (target.right - target.left < 800) continue;
    for (const CursorPosition at :
         {CursorPosition{0, 0}, CursorPosition{799, 599}, CursorPosition{123, 456}}) {
      const CursorPosition window = viewport.toWindow(at);
      EXPECT_EQ(viewport.toScreen(window.x, window.y), at) << c.width;
    }
  }
}

TEST(SystemLocale, KnowsTheEnginesLanguages) {
  EXPECT_EQ(localeCode("pl_PL.UTF-8"), "0415");
  EXPECT_EQ(localeCode("hu"), "040E");
  EXPECT_EQ(localeCode("sk_SK@euro"), "041B");
  for (const char* unknown : {"", "C", "POSIX", "C.UTF-8", "xx_YY", "PL"})
    EXPECT_EQ(localeCode(unknown), "0409");
}

// A desktop without a screen of its own: everything but the last step to the glass.
class SdlPlatformTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("SDL_VIDEODRIVER", "dummy", 1); }
  void SetUp() override {
    ASSERT_EQ(platform_.display().openWindow(64, 48), Status::ok);
    platform_.pump();
  }

  static void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1); }
  static SDL_Event key(SDL_EventType type, SDL_Scancode code, int modifiers = 0, int repeat = 0) {
    SDL_Event event{};
    event.type = type;
    event.key.keysym.scancode = code;
    event.key.keysym.mod = static_cast<std::uint16_t>(modifiers);
    event.key.repeat = static_cast<std::uint8_t>(repeat);
    return event;
  }
  static SDL_Event text(const char* typed) {
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, typed, sizeof event.text.text);
    return event;
  }
  static SDL_Event motion(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    return event;
  }
  static SDL_Event button(SDL_EventType type, int number, int clicks = 1) {
    SDL_Event event{};
    event.type = type;
    event.button.button = static_cast<std::uint8_t>(number);
    event.button.clicks = static_cast<std::uint8_t>(clicks);
    event.button.x = 10;
    event.button.y = 20;
    return event;
  }
  static SDL_Event window(SDL_WindowEventID id) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = static_cast<std::uint8_t>(id);
    return event;
  }

  SdlPlatform platform_;
};

TEST_F(SdlPlatformTest, ShowsInEveryDepth) {
  for (const int bpp : {15, 16, 32}) {
    SdlDisplay display(bpp, "Test");
    ASSERT_EQ(display.openWindow(64, 48), Status::ok) << bpp;
    const auto surface = display.createSurface(64, 48, false);
    ASSERT_EQ(display.fill(*surface, {0, 0, 64, 48}, display.format().green), Status::ok);
    ASSERT_EQ(display.show(0, 0, *surface, {0, 0, 64, 48}), Status::ok);
    display.present();
    std::uint32_t glass = 0;
    const SDL_Rect corner{63, 47, 1, 1};
    ASSERT_EQ(
        SDL_RenderReadPixels(SDL_GetRenderer(display.window()), &corner, SDL_PIXELFORMAT_RGB888, &glass, 4),
        0);
    EXPECT_EQ(glass & 0xFFF8FF, 0xF800U) << bpp;  // the low bits are the texture's affair
  }
}

TEST_F(SdlPlatformTest, AResizedWindowKeepsThePicture) {
  SdlDisplay& display = platform_.display();
  const auto surface = display.createSurface(64, 48, false);
  ASSERT_EQ(display.fill(*surface, {32, 24, 64, 48}, display.format().red), Status::ok);
  ASSERT_EQ(display.show(0, 0, *surface, {0, 0, 64, 48}), Status::ok);
  display.present();
  SDL_SetWindowSize(display.window(), 200, 96);  // twice the picture, with a margin at both sides
  platform_.pump();
  display.present();
  const auto glass = [&display](int x, int y) {
    std::uint32_t pixel = 0;
    const SDL_Rect place{x, y, 1, 1};
    EXPECT_EQ(
        SDL_RenderReadPixels(SDL_GetRenderer(display.window()), &place, SDL_PIXELFORMAT_RGB888, &pixel, 4),
        0);
    return pixel & 0xF8F8F8;
  };
  EXPECT_EQ(glass(35, 95), 0U) << "margin";
  EXPECT_EQ(glass(36 + 63, 48), 0U);
  EXPECT_EQ(glass(36 + 64, 48), 0xF80000U) << "whole factors are sharp";
  EXPECT_EQ(glass(36 + 127, 95), 0xF80000U);
  EXPECT_EQ(glass(36 + 128, 95), 0U) << "margin";
  push(motion(36 + 127, 95));
  platform_.pump();
  EXPECT_EQ(platform_.input().cursorPosition(), (CursorPosition{63, 47}));
}

TEST_F(SdlPlatformTest, HandsInputToTheDevices) {
  push(key(SDL_KEYDOWN, SDL_SCANCODE_SPACE));
  push(key(SDL_KEYDOWN, SDL_SCANCODE_SPACE, 0, 1));
  push(key(SDL_KEYUP, SDL_SCANCODE_SPACE));
  push(key(SDL_KEYDOWN, SDL_SCANCODE_MUTE));
  push(motion(32, 24));
  push(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT));
  push(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X1));
  push(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 2));
  EXPECT_THAT(platform_.pump(), IsEmpty());
  EXPECT_THAT(platform_.input().takeKeyEvents(),
              ElementsAre(KeyEvent{57, true}, KeyEvent{57, true, true}, KeyEvent{57, false}));
  EXPECT_THAT(platform_.input().takeMouseEvents(),
              ElementsAre(MouseEvent{MouseEventKind::move, 32, 24},
                          MouseEvent{MouseEventKind::buttonDown, 10, 20, MouseButton::right},
                          MouseEvent{MouseEventKind::buttonDown, 10, 20, MouseButton::left},
                          MouseEvent{MouseEventKind::doubleClick, 10, 20}));
}

TEST_F(SdlPlatformTest, WhatIsTypedComesInTheCodePage) {
  push(key(SDL_KEYDOWN, SDL_SCANCODE_A));
  push(text("a\u0105"));
  push(key(SDL_KEYDOWN, SDL_SCANCODE_A, 0, 1));
  push(text("\u4e2d\u00fc\xc4"));
  platform_.pump();
  EXPECT_TRUE(platform_.input().tellsTyping());
  EXPECT_THAT(platform_.input().takeCharacters(),
              ElementsAre(CharacterEvent{'a'}, CharacterEvent{0xB9}, CharacterEvent{0xFC, true}))
      << "what the code page lacks is left out";
}

TEST_F(SdlPlatformTest, HandsWindowEventsToTheHost) {
  push(window(SDL_WINDOWEVENT_FOCUS_LOST));
  push(motion(1, 1));
  push(window(SDL_WINDOWEVENT_FOCUS_GAINED));
  push(window(SDL_WINDOWEVENT_EXPOSED));
  push(window(SDL_WINDOWEVENT_MOVED));
  SDL_Event quit{};
  quit.type = SDL_QUIT;
  push(quit);
  EXPECT_THAT(
      platform_.pump(),
      ElementsAre(WindowEvent{WindowEvent::Kind::activate, 0}, WindowEvent{WindowEvent::Kind::activate, 1},
                  WindowEvent{WindowEvent::Kind::move}, WindowEvent{WindowEvent::Kind::close}));
  EXPECT_THAT(platform_.input().takeMouseEvents(), IsEmpty()) << "the mouse was somebody else's";
}

TEST_F(SdlPlatformTest, AltEnterIsThePlayersAndNotTheGames) {
  push(key(SDL_KEYDOWN, SDL_SCANCODE_RETURN, KMOD_LALT));
  push(key(SDL_KEYUP, SDL_SCANCODE_RETURN, KMOD_LALT));
  platform_.pump();
  EXPECT_THAT(platform_.input().takeKeyEvents(), IsEmpty());
  EXPECT_NE(SDL_GetWindowFlags(platform_.display().window()) & SDL_WINDOW_FULLSCREEN_DESKTOP, 0U);
  EXPECT_FALSE(platform_.display().isFullScreen()) << "the engine keeps its window mode";
  push(key(SDL_KEYDOWN, SDL_SCANCODE_RETURN));
  push(key(SDL_KEYUP, SDL_SCANCODE_RETURN, KMOD_LALT));
  platform_.pump();
  EXPECT_THAT(platform_.input().takeKeyEvents(), ElementsAre(KeyEvent{28, true}, KeyEvent{28, false}));
}

}  // namespace
}  // namespace footlight::platform
