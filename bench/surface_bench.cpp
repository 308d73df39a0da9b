// What others are drawn on, or through: a pattern of 100 x 75 cells of which ten change in a frame, beside
// ten pictures alone; a pattern that fills the screen, beside SDL's surfaces; a canvas of 200 pictures with
// ten moving, beside the same pictures on the screen; a scroll of 500 pictures, beside one of those that are
// seen; and the work on alpha planes, beside a plain loop.

#include <SDL.h>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

#include "gfx/blit_planes.h"
#include "gfx/off_screen_canvas.h"
#include "gfx/pattern.h"
#include "gfx/virtual_graphics_object.h"
#include "ratio_reporter.h"
#include "support/screen_world.h"

namespace footlight::bench {

namespace {

constexpr CXSize kScreen(800, 600);
constexpr int kCell = 32;
constexpr int kKinds = 16;
constexpr int kSprites = 200;
constexpr int kMoving = 10;
constexpr int kSide = 64;

struct Stage {
  Stage() : world(kScreen) {
    world.open();
    for (int i = 0; i < kKinds + kMoving; ++i)
      tiles.push_back(
          test::plate(world.window.get(), {0, 0, kCell, kCell}, static_cast<std::uint16_t>(i * 331)));
  }
  CGraphicsObject* tile(int i) { return tiles[static_cast<std::size_t>(i)].get(); }
  void frame() { world.window->Redraw(); }

  test::ScreenWorld world;
  std::vector<Owned<CGraphicsObject>> tiles;  // kKinds of them, then those that change
};

CXPoint changingCell(int i) { return {i * 2 + 1, i + 2}; }

struct Floor : Stage {
  Floor() : pattern(world.window.get(), {100 * kCell, 75 * kCell}, {kCell, kCell}, 1) {
    for (int i = 0; i < 7500; ++i) pattern.add("", i % 100, i / 100, 0, tile(i % kKinds), 0, "");
    for (int i = 0; i < kMoving; ++i)
      pattern.add("", changingCell(i).x, changingCell(i).y, 0, tile(kKinds + i), 0, "");
    world.screen().put(&pattern, 0);
    frame();
    frame();
  }
  CPattern pattern;
};

void patternChanges(benchmark::State& state) {
  Floor floor;
  for (auto round : state) {
    (void)round;
    for (int i = 0; i < kMoving; ++i) floor.tile(kKinds + i)->Invalidate();
    floor.frame();
  }
}

void tenAlone(benchmark::State& state) {
  Stage stage;
  for (int i = 0; i < kMoving; ++i) {
    stage.tile(kKinds + i)->placeAt({changingCell(i).x * kCell, changingCell(i).y * kCell});
    stage.world.screen().put(stage.tile(kKinds + i), 0);
  }
  stage.frame();
  for (auto round : state) {
    (void)round;
    for (int i = 0; i < kMoving; ++i) stage.tile(kKinds + i)->Invalidate();
    stage.frame();
  }
}

constexpr int kSoft = 128;

void patternWhole(benchmark::State& state, bool hasAlpha) {
  Floor floor;
  for (const auto& tile : floor.tiles) {
    if (hasAlpha) tile->AlphaChannel(PixelBlock(std::vector<std::byte>(kCell * kCell, std::byte{kSoft}), 8));
  }
  CGraphicsObject target(floor.world.window.get(), kScreen, 16);
  for (auto round : state) {
    (void)round;
    floor.pattern.redraw(&target);
    floor.pattern.SetClippingRect({});
  }
}

void sdlTiles(benchmark::State& state, bool hasAlpha) {
  SDL_Surface* frame = SDL_CreateRGBSurfaceWithFormat(0, 800, 600, 16, SDL_PIXELFORMAT_RGB565);
  std::vector<SDL_Surface*> tiles;
  for (int i = 0; i < kKinds; ++i) {
    tiles.push_back(SDL_CreateRGBSurfaceWithFormat(
        0, kCell, kCell, hasAlpha ? 32 : 16, hasAlpha ? SDL_PIXELFORMAT_ARGB8888 : SDL_PIXELFORMAT_RGB565));
    SDL_FillRect(tiles.back(), nullptr, static_cast<Uint32>(i * 331) | Uint32{kSoft} << 24);
  }
  for (auto round : state) {
    (void)round;
    for (int i = 0; i < 25 * 19; ++i) {
      SDL_Rect at = {i % 25 * kCell, i / 25 * kCell, kCell, kCell};
      SDL_BlitSurface(tiles[static_cast<std::size_t>((i / 25 * 100 + i % 25) % kKinds)], nullptr, frame, &at);
    }
  }
  for (SDL_Surface* tile : tiles) SDL_FreeSurface(tile);
  SDL_FreeSurface(frame);
}

struct Crowd : Stage {
  explicit Crowd(bool onCanvas) : canvas(world.window.get(), kScreen, 16, true, false) {
    for (int i = 0; i < kSprites; ++i) {
      const CXPoint at(i * 97 % (800 - kSide), i * 61 % (600 - kSide));
      sprites.push_back(test::plate(world.window.get(), {at.x, at.y, at.x + kSide, at.y + kSide},
                                    static_cast<std::uint16_t>(i * 331), i % 256));
      if (onCanvas) {
        canvas.add(sprites.back().get(), i);
      } else {
        world.screen().put(sprites.back().get(), i);
      }
    }
    if (onCanvas) world.screen().put(&canvas, 0);
    frame();
    frame();
  }
  void step(int movers) {
    for (int i = 0; i < movers; ++i) {
      CGraphicsObject& sprite = *sprites[static_cast<std::size_t>(i * 20)];
      sprite.Invalidate();
      sprite.placeAt(sprite.GetPosition() + CXPoint(count % 16 < 8 ? 1 : -1, 0));
      sprite.Invalidate();
    }
    ++count;
    frame();
  }
  std::vector<Owned<CGraphicsObject>> sprites;
  CCanvas canvas;
  int count = 0;
};

void moving(benchmark::State& state, bool onCanvas, int movers) {
  Crowd crowd(onCanvas);
  for (auto round : state) {
    (void)round;
    crowd.step(movers);
  }
}

// A step of a scroll as its script object does it; 20 of the pictures lie in the viewport.
void scrolling(benchmark::State& state, int count) {
  Stage stage;
  std::vector<Owned<CGraphicsObject>> pictures;
  const CXRect viewport(0, 0, 400, 300);
  for (int i = 0; i < count; ++i) {
    const CXPoint at = i < 20 ? CXPoint(i % 5 * 70, i / 5 * 70) : CXPoint(1000 + i, 1000);
    pictures.push_back(test::plate(stage.world.window.get(), {at.x, at.y, at.x + kSide, at.y + kSide}, 77));
    stage.world.screen().put(pictures.back().get(), i);
  }
  int step = 0;
  for (auto round : state) {
    (void)round;
    stage.world.window->Invalidate();
    for (const auto& picture : pictures) {
      picture->SetClippingRect({});
      picture->Move(step % 2 == 0 ? 1 : -1, 0);
      const CXRect part = picture->GetBoundingBox().Common(viewport);
      if (!part.IsEmpty()) picture->SetClippingRect(part - picture->GetPosition());
      if (picture->isVisible() == part.IsEmpty()) picture->Visible(!part.IsEmpty());
    }
    ++step;
    stage.frame();
  }
}

constexpr std::size_t kPlane = 800 * 600;
std::vector<std::byte> weights(int seed) {
  std::vector<std::byte> plane(kPlane);
  for (std::size_t i = 0; i < kPlane; ++i)
    plane[i] = static_cast<std::byte>(i * 7 + static_cast<std::size_t>(seed));
  return plane;
}

void eraseWide(benchmark::State& state) {
  std::vector<std::byte> plane = weights(1);
  const std::vector<std::byte> by = weights(2);
  for (auto round : state) {
    (void)round;
    blit::lessen(plane.data(), by.data(), kPlane);
    benchmark::ClobberMemory();
  }
}

[[gnu::optimize("no-tree-vectorize")]] void erasePlain(benchmark::State& state) {
  std::vector<std::byte> plane = weights(1);
  const std::vector<std::byte> by = weights(2);
  for (auto round : state) {
    (void)round;
    for (std::size_t i = 0; i < kPlane; ++i) {
      const int rest = std::to_integer<int>(plane[i]) - std::to_integer<int>(by[i]);
      plane[i] = static_cast<std::byte>(rest < 0 ? 0 : rest);
    }
    benchmark::ClobberMemory();
  }
}

struct Masked {
  Masked()
      : world(kScreen),
        source(world.window.get(), kScreen, 16),
        mask(world.window.get(), kScreen, 16),
        target(world.window.get(), kScreen, 16),
        glass(world.window.get()) {
    source.AlphaChannel(PixelBlock(weights(1), 8));
    mask.AlphaChannel(PixelBlock(weights(2), 8));
    glass.setSource(&source);
    glass.setMask(&mask);
  }
  test::ScreenWorld world;
  CGraphicsObject source, mask, target;
  CVirtualGraphicsObject glass;
};

void maskWide(benchmark::State& state) {
  Masked masked;
  for (auto round : state) {
    (void)round;
    masked.glass.SetClippingRect({});
    masked.glass.redraw(&masked.target);
  }
}

[[gnu::optimize("no-tree-vectorize")]] void maskPlain(benchmark::State& state) {
  Masked masked;
  const auto* from = reinterpret_cast<const std::uint16_t*>(masked.source.pixels().bytes().data());
  auto* to = reinterpret_cast<std::uint16_t*>(masked.target.pixels().bytes().data());
  const std::vector<std::byte> first = weights(1);
  const std::vector<std::byte> second = weights(2);
  const auto mix = [](std::uint32_t s, std::uint32_t t, std::uint32_t a, std::uint32_t most) {
    const std::uint32_t mixed = ((((s - t) * a + (t << 8)) & 0xFFFF) >> 8) + 1;
    return mixed < most ? mixed : most;
  };
  for (auto round : state) {
    (void)round;
    for (std::size_t i = 0; i < kPlane; ++i) {
      const std::uint32_t a =
          blit::product(std::to_integer<std::uint32_t>(first[i]), std::to_integer<std::uint32_t>(second[i]));
      if (a == 0) continue;
      const std::uint32_t s = from[i];
      const std::uint32_t t = to[i];
      const std::uint32_t mixed = mix(s >> 11, t >> 11, a, 31) << 11 |
                                  mix(s >> 5 & 63, t >> 5 & 63, a, 63) << 5 | mix(s & 31, t & 31, a, 31);
      to[i] = static_cast<std::uint16_t>(a > 254 ? s : mixed);
    }
    benchmark::ClobberMemory();
  }
}

}  // namespace

BENCHMARK(patternChanges)->Name("engine/ten of 7500 cells change")->Unit(benchmark::kMicrosecond);
BENCHMARK(tenAlone)->Name("alone/ten of 7500 cells change")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(patternWhole, opaque, false)
    ->Name("engine/a screen of tiles")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(sdlTiles, opaque, false)->Name("SDL/a screen of tiles")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(patternWhole, alpha, true)
    ->Name("engine/a screen of soft tiles")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(sdlTiles, alpha, true)->Name("SDL/a screen of soft tiles")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(moving, fourOn, true, 4)
    ->Name("engine/four of 200 on a canvas")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(moving, four, false, 4)
    ->Name("screen/four of 200 on a canvas")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(moving, tenOn, true, 10)
    ->Name("engine/ten of 200 on a canvas")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(moving, ten, false, 10)
    ->Name("screen/ten of 200 on a canvas")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(scrolling, all, 500)->Name("engine/scroll of 500")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(scrolling, seen, 20)->Name("seen/scroll of 500")->Unit(benchmark::kMicrosecond);
BENCHMARK(eraseWide)->Name("engine/erase")->Unit(benchmark::kMicrosecond);
BENCHMARK(erasePlain)->Name("plain/erase")->Unit(benchmark::kMicrosecond);
BENCHMARK(maskWide)->Name("engine/masked picture")->Unit(benchmark::kMicrosecond);
BENCHMARK(maskPlain)->Name("plain/masked picture")->Unit(benchmark::kMicrosecond);

}  // namespace footlight::bench

int main(int count, char** words) { return footlight::bench::runAll(count, words); }
