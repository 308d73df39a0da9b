// Frames of 200 sprites of 64 x 64 with alpha over a picture at 800 x 600, beside the same on SDL's surfaces
// (of 32 bits for the sprites, of 16 for the frame): all of it painted, and ten of them moving with only the
// dirty parts painted. Then what the dirty region alone costs for many small rectangles a frame.

#include <SDL.h>
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "ratio_reporter.h"
#include "support/screen_world.h"

namespace footlight::bench {

namespace {

constexpr CXSize kScreen(800, 600);
constexpr int kSprites = 200;
constexpr int kMoving = 10;
constexpr int kSide = 64;

std::uint32_t alphaAt(int x, int y) {
  const double dx = (x + 0.5) / kSide * 2 - 1;
  const double dy = (y + 0.5) / kSide * 2 - 1;
  return static_cast<std::uint32_t>(std::clamp((0.95 - std::sqrt(dx * dx + dy * dy)) * 12, 0.0, 1.0) * 255);
}

CXPoint placeOf(int sprite) { return {sprite * 97 % (800 - kSide), sprite * 61 % (600 - kSide)}; }
// Where a moving sprite is in a frame.
CXPoint placeOf(int sprite, int frame) {
  return placeOf(sprite) + CXPoint(frame % 16 < 8 ? frame % 8 : 8 - frame % 8, 0);
}

struct EngineScene {
  EngineScene() : world(kScreen) {
    world.open();
    background = test::plate(world.window.get(), {0, 0, 800, 600}, 0x1234);
    world.screen().SetBackground(background.get());
    std::vector<std::byte> alpha;
    for (int i = 0; i < kSide * kSide; ++i)
      alpha.push_back(static_cast<std::byte>(alphaAt(i % kSide, i / kSide)));
    for (int i = 0; i < kSprites; ++i) {
      const CXPoint at = placeOf(i);
      sprites.push_back(test::plate(world.window.get(), {at.x, at.y, at.x + kSide, at.y + kSide},
                                    static_cast<std::uint16_t>(i * 331)));
      sprites.back()->AlphaChannel(PixelBlock(alpha, 8));
      world.screen().put(sprites.back().get(), i);
    }
    world.window->Redraw();
  }
  test::ScreenWorld world;
  Owned<CGraphicsObject> background;
  std::vector<Owned<CGraphicsObject>> sprites;
};

struct SdlScene {
  SdlScene() {
    frame = SDL_CreateRGBSurfaceWithFormat(0, 800, 600, 16, SDL_PIXELFORMAT_RGB565);
    shown = SDL_CreateRGBSurfaceWithFormat(0, 800, 600, 16, SDL_PIXELFORMAT_RGB565);
    background = SDL_CreateRGBSurfaceWithFormat(0, 800, 600, 16, SDL_PIXELFORMAT_RGB565);
    for (int i = 0; i < kSprites; ++i) {
      SDL_Surface* sprite = SDL_CreateRGBSurfaceWithFormat(0, kSide, kSide, 32, SDL_PIXELFORMAT_ARGB8888);
      auto* pixels = static_cast<std::uint32_t*>(sprite->pixels);
      for (int p = 0; p < kSide * kSide; ++p)
        pixels[p] = alphaAt(p % kSide, p / kSide) << 24 | static_cast<std::uint32_t>(i * 3331);
      SDL_SetSurfaceBlendMode(sprite, SDL_BLENDMODE_BLEND);
      sprites.push_back(sprite);
      places.push_back(placeOf(i));
    }
  }
  ~SdlScene() {
    for (SDL_Surface* sprite : sprites) SDL_FreeSurface(sprite);
    SDL_FreeSurface(background);
    SDL_FreeSurface(shown);
    SDL_FreeSurface(frame);
  }
  SdlScene(const SdlScene&) = delete;
  SdlScene& operator=(const SdlScene&) = delete;

  // One part of the frame: the background, every sprite that touches it, and onto the screen.
  void paint(SDL_Rect part) {
    SDL_SetClipRect(frame, &part);
    SDL_Rect to = part;
    SDL_BlitSurface(background, &part, frame, &to);
    for (std::size_t i = 0; i < sprites.size(); ++i) {
      SDL_Rect at = {places[i].x, places[i].y, kSide, kSide};
      if (SDL_HasIntersection(&at, &part)) SDL_BlitSurface(sprites[i], nullptr, frame, &at);
    }
    to = part;
    SDL_BlitSurface(frame, &part, shown, &to);
  }
  SDL_Surface* frame;
  SDL_Surface* shown;
  SDL_Surface* background;
  std::vector<SDL_Surface*> sprites;
  std::vector<CXPoint> places;
};

void engineWhole(benchmark::State& state) {
  EngineScene scene;
  for (auto round : state) {
    (void)round;
    scene.world.window->Invalidate();
    scene.world.window->Redraw();
  }
}

void sdlWhole(benchmark::State& state) {
  SdlScene scene;
  for (auto round : state) {
    (void)round;
    scene.paint({0, 0, 800, 600});
  }
}

void engineMoving(benchmark::State& state) {
  EngineScene scene;
  int frame = 0;
  for (auto round : state) {
    (void)round;
    ++frame;
    for (int i = 0; i < kMoving; ++i) {
      CGraphicsObject* sprite = scene.sprites[static_cast<std::size_t>(i * 20)].get();
      const CXPoint by = placeOf(i * 20, frame) - sprite->GetPosition();
      sprite->Move(by.x, by.y);
    }
    scene.world.window->Redraw();
  }
}

void sdlMoving(benchmark::State& state) {
  SdlScene scene;
  int frame = 0;
  for (auto round : state) {
    (void)round;
    ++frame;
    std::array<SDL_Rect, kMoving> parts;
    for (int i = 0; i < kMoving; ++i) {
      CXPoint& place = scene.places[static_cast<std::size_t>(i * 20)];
      const CXPoint next = placeOf(i * 20, frame);
      const SDL_Rect before = {place.x, place.y, kSide, kSide};
      const SDL_Rect after = {next.x, next.y, kSide, kSide};
      SDL_UnionRect(&before, &after, &parts[static_cast<std::size_t>(i)]);
      place = next;
    }
    for (const SDL_Rect& part : parts) scene.paint(part);
  }
}

// The region of a frame with so many small rectangles, and one walk over it for each of 200 objects.
void region(benchmark::State& state) {
  std::mt19937 random(1);
  std::vector<CXRect> dirty;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    const int x = static_cast<int>(random() % 790);
    const int y = static_cast<int>(random() % 590);
    dirty.emplace_back(x, y, x + 2 + static_cast<int>(random() % 8), y + 2 + static_cast<int>(random() % 8));
  }
  CRefreshRegion region(false);
  int met = 0;
  for (auto round : state) {
    (void)round;
    for (const CXRect& rect : dirty) region.add(&rect);
    for (int i = 0; i < kSprites; ++i) {
      const CXPoint at = placeOf(i);
      const CXRect box(at.x, at.y, at.x + kSide, at.y + kSide);
      for (int p = region.findFrom(0, box); p >= 0; p = region.findFrom(p + 1, box)) ++met;
    }
    state.counters["rectangles"] = static_cast<double>(region.rects().size());
    region.clear();
  }
  benchmark::DoNotOptimize(met);
}

}  // namespace

BENCHMARK(engineWhole)->Name("engine/whole frame")->Unit(benchmark::kMicrosecond);
BENCHMARK(sdlWhole)->Name("SDL/whole frame")->Unit(benchmark::kMicrosecond);
BENCHMARK(engineMoving)->Name("engine/ten of 200 move")->Unit(benchmark::kMicrosecond);
BENCHMARK(sdlMoving)->Name("SDL/ten of 200 move")->Unit(benchmark::kMicrosecond);
BENCHMARK(region)->Name("region")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace footlight::bench

int main(int count, char** words) { return footlight::bench::runAll(count, words); }
