#include "gfx/refresh_screen.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "gfx/screen_unit.h"
#include "support/screen_world.h"

namespace footlight {
namespace {

using test::plate;
using test::ScreenWorld;
using testing::ElementsAre;

constexpr std::uint16_t kRed = 0xF800;
constexpr std::uint16_t kGreen = 0x07E0;
constexpr std::uint16_t kBlue = 0x001F;
constexpr CXRect kSquare(4, 4, 12, 12);

// A graphic object that notes when it is drawn.
class Probe : public CGraphicsObject {
 public:
  Probe(CWindow* window, CXRect place, std::vector<Probe*>* drawn)
      : CGraphicsObject(window, place.Size(), 16), log(drawn) {
    placeAt(place.LeftTop());
  }
  void Redraw() override {
    log->push_back(this);
    clips.push_back(GetClippingRect());
    CGraphicsObject::Redraw();
  }
  std::vector<Probe*>* log;
  std::vector<CXRect> clips;
};

TEST(RefreshScreen, DrawsByPriorityAndThenByAge) {
  ScreenWorld world;
  world.open();
  std::vector<Probe*> drawn;
  Probe a(world.window.get(), kSquare, &drawn);
  Probe b(world.window.get(), kSquare, &drawn);
  Probe c(world.window.get(), kSquare, &drawn);
  world.screen().put(&a, 5);
  world.screen().put(&b, 1);
  world.screen().put(&c, 5);
  world.screen().put(&a, 0);  // already listed
  world.window->Redraw();
  EXPECT_THAT(drawn, ElementsAre(&b, &a, &c));

  drawn.clear();
  world.screen().SetPriority(&a, 5);
  world.window->Redraw();
  EXPECT_TRUE(drawn.empty()) << "a new priority redraws nothing";
  world.window->Invalidate();
  world.window->Redraw();
  EXPECT_THAT(drawn, ElementsAre(&b, &c, &a));
  EXPECT_EQ(world.screen().GetPriority(&a), 5);
  world.screen() >> &a >> nullptr;
  EXPECT_EQ(world.screen().GetPriority(&a), -1);
  EXPECT_EQ(world.screen().getIndex(&b), 0);
}

TEST(RefreshScreen, DrawsInvalidatedObjectsWholeAndOthersInsideTheDirtyPart) {
  ScreenWorld world;
  world.open();
  std::vector<Probe*> drawn;
  Probe moved(world.window.get(), {2, 2, 6, 6}, &drawn);
  Probe touched(world.window.get(), {4, 4, 20, 20}, &drawn);
  Probe apart(world.window.get(), {30, 30, 40, 40}, &drawn);
  Probe covered(world.window.get(), {3, 3, 5, 5}, &drawn);
  for (Probe* probe : {&moved, &touched, &apart, &covered}) world.screen().put(probe, 0);
  world.window->Redraw();
  drawn.clear();
  for (Probe* probe : {&moved, &touched, &apart, &covered}) probe->clips.clear();

  moved.Invalidate();
  CXRect corner(18, 18, 22, 22);
  world.window->Invalidate(&corner);
  world.window->Redraw();
  EXPECT_THAT(drawn, ElementsAre(&moved, &touched, &touched, &covered));
  EXPECT_THAT(moved.clips, ElementsAre(CXRect(0, 0, 4, 4)));
  EXPECT_THAT(touched.clips, ElementsAre(CXRect(0, 0, 2, 2), CXRect(14, 14, 16, 16)));
  EXPECT_TRUE(touched.GetClippingRect().IsEmpty()) << "the clip is given back";

  // Nothing dirty: nothing is drawn but what carries the flag, and nothing is shown.
  drawn.clear();
  world.machine.display().recordShown();
  world.machine.display().takeShown();
  apart.setInvalidated(true);
  world.window->Redraw();
  EXPECT_THAT(drawn, ElementsAre(&apart));
  EXPECT_TRUE(world.machine.display().takeShown().empty());
}

TEST(RefreshScreen, RedrawsAnObjectWithItsOwnClipInAllOfItForEachRectangle) {
  ScreenWorld world;
  world.open();
  std::vector<Probe*> drawn;
  Probe clipped(world.window.get(), {0, 0, 20, 20}, &drawn);
  clipped.SetClippingRect({2, 2, 18, 18});
  world.screen().put(&clipped, 0);
  world.window->Redraw();
  clipped.clips.clear();
  CXRect first(3, 3, 5, 5);
  CXRect second(10, 10, 12, 12);
  CXRect outside(18, 0, 20, 20);
  for (CXRect* rect : {&first, &second, &outside}) world.window->Invalidate(rect);
  world.window->Redraw();
  EXPECT_THAT(clipped.clips, ElementsAre(CXRect(2, 2, 18, 18), CXRect(2, 2, 18, 18)));
  EXPECT_EQ(clipped.GetClippingRect(), CXRect(2, 2, 18, 18));
}

// Whatever objects do, drawing the dirty part leaves the same picture as drawing everything.
TEST(RefreshScreen, DirtyPartsGiveTheWholePicture) {
  struct Row {
    int bpp;
    int objects;
    int frames;
  };
  constexpr Row kRows[] = {{15, 200, 300}, {16, 12, 500}, {16, 300, 1500}, {32, 200, 300}};
  for (const Row& row : kRows) {
    const int bpp = row.bpp;
    ScreenWorld world({96, 72}, bpp);
    world.open();
    std::mt19937 random(11);
    const auto upTo = [&](int n) { return std::uniform_int_distribution<int>(0, n)(random); };
    world.window->SetBackground(static_cast<CColor*>(nullptr));
    std::vector<Owned<CGraphicsObject>> objects;
    for (int i = 0; i < row.objects; ++i) {
      const int x = upTo(90) - 10;
      const int y = upTo(60) - 10;
      objects.push_back(plate(world.window.get(), {x, y, x + 2 + upTo(24), y + 2 + upTo(24)},
                              static_cast<std::uint16_t>(upTo(0x7FFF)), i % 3 == 0 ? -1 : upTo(255),
                              bpp == 15 ? 15 : 16));
      if (i % 4 == 0) objects.back()->SetOpacity(static_cast<std::uint8_t>(upTo(255)));
      world.screen().put(objects.back().get(), upTo(3));
    }
    for (int step = 0; step < row.frames; ++step) {
      for (int i = upTo(step % 8 == 0 ? 40 : 4); i > 0; --i) {
        CGraphicsObject& object = *objects[static_cast<std::size_t>(upTo(row.objects - 1))];
        switch (upTo(4)) {
          case 0:
            object.Move(upTo(20) - 10, upTo(20) - 10);
            break;
          case 1:
            object.Visible(!object.isVisible());
            break;
          case 2:
            object.SetOpacity(static_cast<std::uint8_t>(upTo(255)));
            break;
          case 3:
            object.Invalidate();
            object.SetPosition(upTo(80) - 20, upTo(60) - 20);
            object.Invalidate();
            break;
          default:
            world.screen().SetPriority(&object, upTo(3));
            object.Invalidate();
        }
      }
      world.window->Redraw();
      const auto dirty = world.frame();
      world.window->Invalidate();
      world.window->Redraw();
      ASSERT_EQ(dirty, world.frame()) << bpp << " bits, step " << step;
    }
  }
}

TEST(RefreshScreen, FindsTheTopmostObjectAtAPoint) {
  ScreenWorld world;
  world.open();
  auto low = plate(world.window.get(), kSquare, kRed);
  auto high = plate(world.window.get(), kSquare, kGreen, 0);
  auto equal = plate(world.window.get(), kSquare, kBlue);
  world.screen().put(low.get(), 1);
  world.screen().put(high.get(), 7);
  world.screen().put(equal.get(), 1);
  CRefreshScreen& screen = world.screen();
  EXPECT_EQ(screen.getGraphicsAt(5, 5, true, -1, -1, false), equal.get()) << "transparent pixels are no hit";
  EXPECT_EQ(screen.getGraphicsAt(5, 5, true, -1, -1, true), high.get());
  EXPECT_EQ(screen.getGraphicsAt(5, 5, true, -1, 6, true), equal.get());
  EXPECT_EQ(screen.getGraphicsAt(5, 5, true, 2, -1, false), nullptr);
  EXPECT_EQ(screen.getGraphicsAt(12, 5, true, -1, -1, true), nullptr);
  equal->Hide();
  EXPECT_EQ(screen.getGraphicsAt(5, 5, true, -1, -1, false), low.get());
  EXPECT_EQ(screen.getGraphicsAt(5, 5, false, -1, -1, false), equal.get());
}

// Notifiers and the scene

class Notifier : public CXObject, public CCanvasObserver {
 public:
  explicit Notifier(std::string* calls) : log(calls) {}
  void onInitialUpdate() override { note('i'); }
  void onInitialUpdated() override { note('I'); }
  void onUpdate() override { note('u'); }
  void onUpdated() override { note('U'); }
  void onFocusOn() override { note('f'); }
  void onFocusOff() override { note('F'); }
  std::function<void(char)> act;

 private:
  void note(char call) {
    *log += call;
    if (act) act(call);
  }
  std::string* log;
};

class Unit : public CScreenUnit {
 public:
  explicit Unit(std::string* calls) : log(calls) {}
  bool wasInitiallyUpdated() const override { return updated; }
  void onInitialUpdate() override {
    *log += '*';
    updated = true;
  }
  bool updated = false;
  std::string* log;
};

TEST(RefreshScreen, TellsOfASceneAndItsFramesInOrder) {
  ScreenWorld world;
  world.open();
  std::string calls;
  Notifier notifier(&calls);
  auto object = plate(world.window.get(), kSquare, kRed);
  world.screen().put(object.get(), 0);
  world.screen().addNotifier(&notifier);
  {
    Unit unit(&calls);
    world.window->setScreenUnit(&unit);
    world.window->Redraw();
    EXPECT_EQ(calls, "*") << "nobody is told while the flag is off";
    world.screen().enableNotifyFlag(true);
    calls.clear();
    unit.updated = false;
    world.window->Redraw();
    EXPECT_EQ(calls, "i*uUI");
    EXPECT_FALSE(world.screen().getRefreshList()->isEmpty()) << "the frame after the first is whole";
    world.window->Redraw();
    EXPECT_EQ(calls, "i*uUIuU");
  }
  EXPECT_EQ(world.window->getScreenUnit(), nullptr);
  calls.clear();
  world.window->OnActivateApp(false);
  world.window->OnActivateApp(false);
  world.window->OnActivateApp(true);
  EXPECT_EQ(calls, "Ff");
}

TEST(RefreshScreen, SurvivesObjectsAndNotifiersThatEndDuringAFrame) {
  ScreenWorld world;
  world.open();
  std::string calls;
  auto first = std::make_unique<Notifier>(&calls);
  Notifier second(&calls);
  std::vector<Owned<CGraphicsObject>> objects;
  for (int i = 0; i < 5; ++i) {
    objects.push_back(plate(world.window.get(), kSquare, kRed));
    world.screen().put(objects.back().get(), i);
  }
  world.screen().addNotifier(first.get());
  world.screen().addNotifier(&second);
  world.screen().enableNotifyFlag(true);
  second.act = [&](char call) {
    if (call != 'u') return;
    objects.clear();
    first.reset();
    world.window->SetBackground(static_cast<CGraphicsObject*>(nullptr));
  };
  world.window->Redraw();
  EXPECT_EQ(calls, "uuU");
  EXPECT_TRUE(world.screen().queue().isEmpty());
}

// Background

TEST(Background, WrapsByItsScrollMode) {
  struct Row {
    CXSize size;
    CXPoint position;
    CBackgroundManager::ScrollMode mode;
  };
  using Mode = CBackgroundManager::ScrollMode;
  const Row rows[] = {
      {{64, 48}, {0, 0}, Mode::horizontal},   {{64, 48}, {10, 0}, Mode::horizontal},
      {{100, 48}, {90, 0}, Mode::horizontal}, {{20, 48}, {7, 0}, Mode::horizontal},
      {{64, 70}, {0, 60}, Mode::vertical},    {{64, 60}, {0, -5}, Mode::vertical},
      {{90, 70}, {80, 60}, Mode::both},       {{90, 70}, {-3, -1}, Mode::both},
      {{90, 40}, {5, 0}, Mode::horizontal},
  };
  for (const Row& row : rows) {
    ScreenWorld world;
    world.open();
    // Every pixel tells its own place.
    CGraphicsObject picture(world.window.get(), row.size, 16);
    for (int y = 0; y < row.size.height; ++y) {
      for (int x = 0; x < row.size.width; ++x) {
        picture.SetPixel(x, y, CColor(static_cast<std::uint16_t>(y << 8 | x), _colormodel::bpp16));
      }
    }
    world.window->SetBackground(&picture);
    world.screen().getBackgroundIfc()->placeAt(row.position);
    world.window->Redraw();
    CXRect part(5, 6, 60, 40);
    world.window->Invalidate(&part);
    world.window->Redraw();
    const int dx = (row.position.x % row.size.width + row.size.width) % row.size.width;
    const int dy = (row.position.y % row.size.height + row.size.height) % row.size.height;
    for (int y = 0; y < 48; ++y) {
      for (int x = 0; x < 64; ++x) {
        const int fromX = row.mode == Mode::vertical ? x : (x + dx) % row.size.width;
        const int fromY = row.mode == Mode::horizontal ? y : (y + dy) % row.size.height;
        const std::uint32_t wanted =
            fromY < row.size.height ? static_cast<std::uint32_t>(fromY << 8 | fromX) : 0;
        ASSERT_EQ(world.pixel(x, y), wanted)
            << row.size.width << " x " << row.size.height << " at " << x << ", " << y;
      }
      if (y == 12) y = 36;  // the middle rows are like the others
    }
  }
}

TEST(Background, ShowsAColourAndOnlyWhatIsDirty) {
  for (const auto& [bpp, usual, red] :
       {std::tuple{16, 0x20u, 0xF800u}, {15, 0u, 0x7C00u}, {32, 0x070707u, 0xFF0000u}}) {
    ScreenWorld world({64, 48}, bpp);
    world.open();
    CColor colour(255, 0, 0);
    world.window->SetBackground(&colour);
    world.window->Redraw();
    EXPECT_EQ(world.pixel(63, 47), red);
    world.window->SetBackground(static_cast<CColor*>(nullptr));
    CXRect part(0, 0, 4, 4);
    world.window->Invalidate(&part);
    world.window->Redraw();
    EXPECT_EQ(world.pixel(3, 3), usual) << bpp;
    EXPECT_EQ(world.pixel(4, 3), red) << bpp;
  }
}

TEST(Background, ComesBackAfterItsSurfaceWasLost) {
  ScreenWorld world;
  world.open();
  auto picture = plate(world.window.get(), {0, 0, 64, 48}, kGreen);
  world.window->SetBackground(picture.get());
  world.machine.display().loseSurfaces();
  world.window->Redraw();
  EXPECT_EQ(world.pixel(30, 30), kGreen);
}

TEST(RefreshScreen, EndsItsFramesInGrayWithTheFlag) {
  ScreenWorld world;
  world.open();
  auto object = plate(world.window.get(), {0, 0, 64, 48}, kRed);
  world.screen().put(object.get(), 0);
  EXPECT_TRUE(world.screen().SetFlags(nullptr, CRefreshScreen::kGrayFlag));
  world.window->Redraw();
  EXPECT_EQ(world.pixel(0, 0), kRed) << "the first pixel keeps its colour";
  EXPECT_EQ(world.pixel(5, 5), 10u | 10u << 6 | 10u << 11);
}

}  // namespace
}  // namespace footlight
