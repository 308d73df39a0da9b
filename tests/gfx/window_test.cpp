#include "gfx/window.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "input/input_poller.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"
#include "support/screen_world.h"

namespace footlight {
namespace {

using platform::MouseButton;
using platform::MouseEventKind;
using test::plate;
using test::ScreenWorld;
using testing::ElementsAre;

constexpr std::uint16_t kRed = 0xF800;

// Bringing up the display

TEST(Window, FindsTheBitsPerPixelOfTheDisplay) {
  struct Row {
    const char* commandLine;
    int displayBpp, asked, found;
  };
  const Row rows[] = {
      {"-window", 15, 0, 15}, {"-window", 16, 0, 16}, {"-window", 32, 0, 32},
      {"", 16, 15, 15},       {"", 16, 16, 16},       {"", 16, 32, 24},
  };
  for (const Row& row : rows) {
    ScreenWorld world({64, 48}, row.displayBpp, row.commandLine);
    EXPECT_EQ(world.window->GetBpp(), 0);
    world.open(row.asked);
    EXPECT_EQ(world.window->LastError(), 0);
    EXPECT_EQ(world.window->GetBpp(), row.found) << row.commandLine << row.displayBpp << row.asked;
    EXPECT_EQ(CSurface::getBppConversionTable().size(), row.found >= 24 ? 65536u : 0u);
    if (row.found >= 24) {
      EXPECT_EQ(CSurface::getBppConversionTable()[0xFFFF], 0xF8FCF8u);
    }
  }
}

TEST(Window, StartsAgainInAnotherModeWithAnEmptyScreen) {
  ScreenWorld world({64, 48}, 16, "");
  world.open(16);
  auto object = plate(world.window.get(), {0, 0, 8, 8}, kRed);
  world.screen().put(object.get(), 0);
  EXPECT_EQ(world.window->SetDisplayMode(0, 0, 15), 0);
  EXPECT_EQ(world.window->GetBpp(), 15);
  EXPECT_TRUE(world.screen().queue().isEmpty());
  object->Invalidate();
  world.window->Redraw();
  EXPECT_EQ(world.window->GetScreenSize(), CXSize(64, 48));
}

TEST(Window, ReportsADisplayThatRefuses) {
  for (const char* commandLine : {"-window", ""}) {
    ScreenWorld world({64, 48}, 16, commandLine);
    world.machine.display().faults.refuseOpen = true;
    world.window->ShowError("Caption");
    EXPECT_TRUE(world.machine.shell().boxes().empty());
    world.open();
    EXPECT_EQ(world.window->LastError(), CWindow::kGraphicsError);
    EXPECT_EQ(world.window->getRefreshScreen(), nullptr);
    world.window->Tick();
    world.window->Invalidate();
    world.window->ShowError("Caption");
    ASSERT_EQ(world.machine.shell().boxes().size(), 1u);
    EXPECT_EQ(world.machine.shell().boxes()[0].caption, "Caption");
    EXPECT_EQ(world.machine.shell().boxes()[0].text,
              "Nieprawid\xB3owe dzia\xB3"
              "anie karty graficznej.");
  }
}

// Showing frames

using Shown = platform::HeadlessDisplay::Shown;

std::vector<CXRect> places(const std::vector<Shown>& shown) {
  std::vector<CXRect> rects;
  for (const Shown& copy : shown) {
    rects.emplace_back(copy.x, copy.y, copy.x + copy.source.right - copy.source.left,
                       copy.y + copy.source.bottom - copy.source.top);
  }
  return rects;
}

TEST(Window, ShowsOnlyTheDirtyPartAtTheWindowsPlace) {
  platform::HeadlessOptions options;
  options.windowX = 30;
  options.windowY = 20;
  ScreenWorld world({64, 48}, options, "-window");
  world.open();
  world.machine.display().recordShown();
  world.window->Redraw();
  EXPECT_THAT(places(world.machine.display().takeShown()), ElementsAre(CXRect(30, 20, 94, 68)));
  world.window->Redraw();
  EXPECT_THAT(places(world.machine.display().takeShown()), ElementsAre());
  CXRect beyond(60, 40, 90, 90);
  CXRect apart(1, 2, 3, 4);
  world.window->Invalidate(&beyond);
  world.window->Invalidate(&apart);
  world.window->Redraw();
  EXPECT_THAT(places(world.machine.display().takeShown()),
              ElementsAre(CXRect(90, 60, 94, 68), CXRect(31, 22, 33, 24)));
}

TEST(Window, FlipsAndKeepsWhatIsDirtyUntilSomeoneValidatesIt) {
  ScreenWorld world({64, 48}, 16, "-pf");
  world.open(16);
  ASSERT_TRUE(world.window->GetSurface()->IsFlippingEnabled());
  world.machine.display().faults.busyFlips = 3;
  world.window->Redraw();
  EXPECT_EQ(world.machine.display().flips(), 1);
  world.window->Redraw();
  EXPECT_EQ(world.machine.display().flips(), 2);
  world.screen().validate();
  world.window->Redraw();
  EXPECT_EQ(world.machine.display().flips(), 2);
}

TEST(Window, StartsWithoutTheFlipChainThatTheDisplayRefuses) {
  ScreenWorld world({64, 48}, 16, "-pf");
  world.machine.display().faults.refuseFlipChain = true;
  world.open(16);
  EXPECT_EQ(world.window->LastError(), 0);
  EXPECT_FALSE(world.window->GetSurface()->IsFlippingEnabled());
  world.machine.display().recordShown();
  world.window->Redraw();
  EXPECT_EQ(world.machine.display().takeShown().size(), 1u);
}

TEST(Window, GoesOnAfterLostSurfaces) {
  for (const char* commandLine : {"-window", "", "-pf"}) {
    ScreenWorld world({64, 48}, 16, commandLine);
    world.open();
    auto object = plate(world.window.get(), {0, 0, 64, 48}, kRed);
    world.screen().put(object.get(), 0);
    world.window->Redraw();
    world.machine.display().loseSurfaces();
    world.machine.display().loseScreen();
    world.machine.display().loseBackBuffer();
    world.window->Invalidate();
    world.window->Redraw();
    EXPECT_EQ(world.pixel(3, 3), kRed) << commandLine;
    world.machine.display().recordShown();
    world.window->Invalidate();
    world.window->Redraw();
    EXPECT_EQ(world.pixel(3, 3), kRed) << commandLine;
  }
}

TEST(Window, DoesNothingInATickUntilItIsActive) {
  ScreenWorld world;
  world.open();
  world.window->OnActivateApp(false);
  world.machine.display().recordShown();
  world.window->Tick();
  EXPECT_TRUE(world.machine.display().takeShown().empty());
  EXPECT_EQ(world.machine.display().presents(), 0);
  world.window->Activate(true);
  world.window->Tick();
  EXPECT_EQ(world.machine.display().takeShown().size(), 1u);
  EXPECT_FALSE(world.window->domodal());
  world.window->quit();
  EXPECT_TRUE(world.window->domodal());
}

TEST(Window, CopiesCentredWhatIsSmallerThanTheRectangle) {
  ScreenWorld world;
  world.open();
  CDirectDrawSurface small(world.window.get(), {10, 10}, 16, false);
  CColor red(255, 0, 0);
  small.Fill(&red);
  const CXRect rect(0, 0, 64, 48);
  world.window->getBackSurface()->Blt(&small, 0, 0, &rect);
  EXPECT_EQ(world.pixel(27, 19), kRed);
  EXPECT_EQ(world.pixel(36, 28), kRed);
  EXPECT_EQ(world.pixel(26, 19), 0u);
  EXPECT_EQ(world.pixel(37, 28), 0u);
}

// Input

class Listener : public CXObject, public CMouseListener, public CKeyListener {
 public:
  Listener(std::string name, std::vector<std::string>* calls) : name_(std::move(name)), log(calls) {}

  bool onMouseMove(CXPoint p) override { return note("move", p); }
  bool onClick(int button, CXPoint p) override { return note("click" + std::to_string(button), p); }
  bool onClick(CXPoint p) override { return note("click", p); }
  using CMouseListener::onRelease;
  bool onRelease(int button, CXPoint p) override { return note("release" + std::to_string(button), p); }
  bool onDblClick(CXPoint p) override { return note("double", p); }
  void onSetFocus() override { log->push_back(name_ + " on"); }
  void onLooseFocus() override { log->push_back(name_ + " off"); }
  void onKeyDown(int key) override { log->push_back(name_ + " down " + std::to_string(key)); }
  void onKeyUp(int key) override { log->push_back(name_ + " up " + std::to_string(key)); }

  std::function<bool(const std::string&)> answer;

 private:
  bool note(const std::string& event, CXPoint p) {
    log->push_back(name_ + " " + event + " " + std::to_string(p.x) + "," + std::to_string(p.y));
    return answer && answer(event);
  }
  std::string name_;
  std::vector<std::string>* log;
};

TEST(WindowInput, PlaysTheDevicesEventsToTheListeners) {
  ScreenWorld world;
  world.open();
  std::vector<std::string> calls;
  Listener a("a", &calls);
  world.window->registerMouseListener(&a, 0);
  world.window->registerKeyListener(&a);
  world.window->registerKeyListener(&a);
  platform::InputQueue& devices = world.machine.input();
  devices.put(platform::MouseEvent{MouseEventKind::buttonDown, 50, 50, MouseButton::right});
  devices.put(platform::MouseEvent{MouseEventKind::move, 7, 8});
  devices.put(platform::MouseEvent{MouseEventKind::buttonDown, 50, 50, MouseButton::left});
  devices.put(platform::MouseEvent{MouseEventKind::buttonUp, 50, 50, MouseButton::middle});
  devices.put(platform::MouseEvent{MouseEventKind::doubleClick, 9, 9});
  devices.put(platform::KeyEvent{30, true});
  devices.put(platform::KeyEvent{30, true});
  world.window->Tick();
  EXPECT_THAT(calls, ElementsAre("a down 30", "a click2 0,0", "a move 7,8", "a click 7,8", "a click0 7,8",
                                 "a release1 7,8", "a double 9,9"));
  calls.clear();
  world.machine.clock().advance(9);
  world.window->Tick();
  EXPECT_TRUE(calls.empty()) << "keys are told every 10 milliseconds at most";
  world.machine.clock().advance(1);
  world.window->Tick();
  devices.put(platform::KeyEvent{30, false});
  world.machine.clock().advance(10);
  world.window->Tick();
  EXPECT_THAT(calls, ElementsAre("a down 30", "a up 30"));
  calls.clear();
  world.window->enableMouse(false);
  EXPECT_EQ(world.machine.shell().cursor(), platform::Cursor::wait);
  devices.put(platform::MouseEvent{MouseEventKind::move, 1, 1});
  world.window->Tick();
  world.window->enableMouse(true);
  world.window->Tick();
  EXPECT_TRUE(calls.empty()) << "what came while the mouse was off is gone";
}

TEST(WindowInput, AsksByPriorityAndStopsAtAYes) {
  ScreenWorld world;
  std::vector<std::string> calls;
  Listener low("low", &calls);
  Listener early("early", &calls);
  Listener late("late", &calls);
  world.window->registerMouseListener(&early, 5);
  world.window->registerMouseListener(&low, 1);
  world.window->registerMouseListener(&late, 5);
  world.window->registerMouseListener(&late, 5);
  world.window->OnMouseMove({1, 2}, 0);
  EXPECT_THAT(calls, ElementsAre("late move 1,2", "early move 1,2", "low move 1,2"));
  calls.clear();
  late.answer = [](const std::string& event) { return event == "click0"; };
  early.answer = [](const std::string& event) { return event == "click"; };
  world.window->OnLButtonDown({1, 2}, 0);
  EXPECT_THAT(calls, ElementsAre("late click 1,2", "late click0 1,2"));
  calls.clear();
  world.window->removeMouseListener(&late);
  world.window->OnLButtonDown({1, 2}, 0);
  EXPECT_THAT(calls, ElementsAre("early click 1,2"));
  calls.clear();
  world.window->setMouseCaption(&early);
  EXPECT_TRUE(calls.empty()) << "it is on top already";
  world.window->setMouseCaption(&low);
  world.window->OnMouseMove({0, 0}, 0);
  EXPECT_THAT(calls, ElementsAre("early off", "low on", "low move 0,0", "early move 0,0"));
}

TEST(WindowInput, LetsListenersComeAndGoDuringAnEvent) {
  ScreenWorld world;
  std::vector<std::string> calls;
  auto doomed = std::make_unique<Listener>("doomed", &calls);
  Listener removed("removed", &calls);
  Listener added("added", &calls);
  Listener top("top", &calls);
  world.window->registerMouseListener(doomed.get(), 1);
  world.window->registerMouseListener(&removed, 2);
  world.window->registerMouseListener(&top, 3);
  top.answer = [&](const std::string&) {
    doomed.reset();
    world.window->unregisterMouseListener(&removed);
    world.window->registerMouseListener(&added, 0);
    return false;
  };
  world.window->OnMouseMove({0, 0}, 0);
  EXPECT_THAT(calls, ElementsAre("top move 0,0"));
  calls.clear();
  top.answer = nullptr;
  world.window->OnMouseMove({0, 0}, 0);
  EXPECT_THAT(calls, ElementsAre("top move 0,0", "added move 0,0"));
}

class Poller : public CInputPoller {
 public:
  void tick() override { ++ticks; }
  void flushSignals(bool) override {
    ++flushes;
    if (onFlush) onFlush();
  }
  int ticks = 0;
  int flushes = 0;
  std::function<void()> onFlush;
};

TEST(WindowInput, AsksEachPollerOnceATickAndLetsThemEnd) {
  ScreenWorld world;
  world.open();
  Poller first;
  auto second = std::make_unique<Poller>();
  world.window->addIPoller(&first);
  world.window->addIPoller(&first);
  world.window->addIPoller(second.get());
  world.window->Tick();
  EXPECT_EQ(first.ticks, 1);
  EXPECT_EQ(second->flushes, 1);
  first.onFlush = [&] { second.reset(); };
  world.window->Tick();
  EXPECT_EQ(first.flushes, 2);
  world.window->Tick();
  EXPECT_EQ(first.flushes, 3);
}

}  // namespace
}  // namespace footlight
