// The blitters beside the plain form with a table of products, SDL's software blits, pixman, and the speed at
// which memory can be copied. Sources are 5-6-5 with an alpha plane; SDL and pixman start from a ready
// picture of 32 bits with alpha, which suits them best. "sprite" is a disc with a soft rim on a clear ground,
// "partial" has no clear and no opaque pixel. The engine's narrower forms are named beside the best one.

#include <SDL.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <pixman.h>
#include <random>
#include <string>
#include <vector>

#include "blit_peers.h"
#include "gfx/blit.h"
#include "ratio_reporter.h"

namespace footlight::bench {

namespace {

enum class Alpha { none, sprite, partial };

struct Work {
  const char* name;
  Alpha alpha;
  int opacity;  // 255: none
  int bpp;      // of the target
  void (*table)(const PlainJob&);
  int bytesMoved;  // for each pixel, read and written
};

constexpr Work kWorks[] = {
    {"copy", Alpha::none, 255, 16, table::copy, 4},
    {"alpha copy, sprite", Alpha::sprite, 255, 16, table::alpha, 7},
    {"alpha copy, partial", Alpha::partial, 255, 16, table::alpha, 7},
    {"opacity", Alpha::none, 100, 16, table::blend, 6},
    {"alpha with opacity, sprite", Alpha::sprite, 100, 16, table::alphaBlend, 7},
    {"alpha with opacity, partial", Alpha::partial, 100, 16, table::alphaBlend, 7},
    {"copy to 32 bits", Alpha::none, 255, 32, table::copy32, 6},
    {"alpha copy to 32 bits, sprite", Alpha::sprite, 255, 32, table::alpha32, 11},
    {"alpha copy to 32 bits, partial", Alpha::partial, 255, 32, table::alpha32, 11},
};

std::uint8_t alphaAt(Alpha kind, int x, int y, CXSize size) {
  if (kind == Alpha::none) return 255;
  if (kind == Alpha::partial) return static_cast<std::uint8_t>(1 + (x * 7 + y * 13) % 254);
  const double dx = (x + 0.5) / size.width * 2 - 1;
  const double dy = (y + 0.5) / size.height * 2 - 1;
  const double rim = (0.95 - std::sqrt(dx * dx + dy * dy)) * 12;
  return static_cast<std::uint8_t>(std::clamp(rim, 0.0, 1.0) * 255);
}

// Both sides of a work, in the shapes that everyone takes.
struct Pictures {
  Pictures(const Work& w, CXSize s) : work(w), size(s) {
    std::mt19937 random(5);
    const auto count = static_cast<std::size_t>(size.mul());
    const bool hasAlpha = work.alpha != Alpha::none;
    source.resize(count * 2);
    target.resize(count * (work.bpp == 32 ? 4 : 2));
    argb.resize(count);
    alpha.resize(count);
    for (std::byte& byte : target) byte = static_cast<std::byte>(random());
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        const auto i = static_cast<std::size_t>(y * size.width + x);
        const auto pixel = static_cast<std::uint16_t>(random());
        const std::uint32_t a = alphaAt(work.alpha, x, y, size);
        std::memcpy(source.data() + 2 * i, &pixel, 2);
        alpha[i] = static_cast<std::byte>(a);
        argb[i] = a << 24 | (pixel & 0xF800u) << 8 | (pixel & 0x7E0u) << 5 | (pixel & 0x1Fu) << 3;
      }
    }
    if (!hasAlpha) alpha.clear();
  }
  // pixman takes colours that are multiplied already.
  std::vector<std::uint32_t> multiplied() const {
    std::vector<std::uint32_t> pixels = argb;
    for (std::uint32_t& p : pixels) {
      const std::uint32_t a = p >> 24;
      p = a << 24 | ((p >> 16 & 255) * a / 255) << 16 | ((p >> 8 & 255) * a / 255) << 8 | (p & 255) * a / 255;
    }
    return pixels;
  }

  const Work& work;
  CXSize size;
  std::vector<std::byte> source, alpha, target;
  std::vector<std::uint32_t> argb;
};

void drawEngine(benchmark::State& state, const Work& work, CXSize size, blit::Form form) {
  Pictures p(work, size);
  if (!blit::useForm(form)) {
    state.SkipWithError("this machine lacks the form");
    return;
  }
  const _canvas from{p.source, p.alpha, 16, 0, 0, size.width, size.height, {}};
  const _canvas to{p.target, {}, work.bpp, 0, 0, size.width, size.height, {}};
  for (auto round : state) {
    (void)round;
    if (work.opacity != 255) {
      blit::copy_blend(from, to, static_cast<std::uint8_t>(work.opacity));
    } else if (work.alpha != Alpha::none) {
      blit::copy_alpha(from, to);
    } else {
      blit::copy(from, to);
    }
    benchmark::ClobberMemory();
  }
}

void drawBest(benchmark::State& state, const Work& work, CXSize size) {
  for (const auto form : {blit::Form::avx512, blit::Form::avx2, blit::Form::sse2, blit::Form::plain}) {
    if (blit::useForm(form)) return drawEngine(state, work, size, form);
  }
}

void drawTable(benchmark::State& state, const Work& work, CXSize size) {
  Pictures p(work, size);
  const PlainJob job{reinterpret_cast<const std::uint16_t*>(p.source.data()),
                     reinterpret_cast<const std::uint8_t*>(p.alpha.data()),
                     p.target.data(),
                     size.width,
                     size.height,
                     size.width,
                     work.opacity};
  for (auto round : state) {
    (void)round;
    work.table(job);
    benchmark::ClobberMemory();
  }
}

SDL_Surface* surfaceOn(void* pixels, CXSize size, int bpp, std::uint32_t format) {
  return SDL_CreateRGBSurfaceWithFormatFrom(pixels, size.width, size.height, bpp, size.width * bpp / 8,
                                            format);
}

// Plain pictures go in as 5-6-5 and, where a change of format is wanted, come out at 32 bits.
void drawSdl(benchmark::State& state, const Work& work, CXSize size) {
  Pictures p(work, size);
  const bool deep = work.alpha != Alpha::none;
  SDL_Surface* from = deep ? surfaceOn(p.argb.data(), size, 32, SDL_PIXELFORMAT_ARGB8888)
                           : surfaceOn(p.source.data(), size, 16, SDL_PIXELFORMAT_RGB565);
  SDL_Surface* to = work.bpp == 32 ? surfaceOn(p.target.data(), size, 32, SDL_PIXELFORMAT_RGB888)
                                   : surfaceOn(p.target.data(), size, 16, SDL_PIXELFORMAT_RGB565);
  SDL_SetSurfaceBlendMode(from, deep || work.opacity != 255 ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE);
  SDL_SetSurfaceAlphaMod(from, static_cast<std::uint8_t>(work.opacity));
  for (auto round : state) {
    (void)round;
    SDL_BlitSurface(from, nullptr, to, nullptr);
    benchmark::ClobberMemory();
  }
  SDL_FreeSurface(from);
  SDL_FreeSurface(to);
}

void drawPixman(benchmark::State& state, const Work& work, CXSize size) {
  Pictures p(work, size);
  std::vector<std::uint32_t> ready = p.multiplied();
  const bool plain = work.alpha == Alpha::none && work.opacity == 255;
  const auto words = [](void* data) { return static_cast<std::uint32_t*>(data); };
  pixman_image_t* from = plain ? pixman_image_create_bits(PIXMAN_r5g6b5, size.width, size.height,
                                                          words(p.source.data()), size.width * 2)
                               : pixman_image_create_bits(PIXMAN_a8r8g8b8, size.width, size.height,
                                                          ready.data(), size.width * 4);
  pixman_image_t* to =
      pixman_image_create_bits(work.bpp == 32 ? PIXMAN_x8r8g8b8 : PIXMAN_r5g6b5, size.width, size.height,
                               words(p.target.data()), size.width * (work.bpp == 32 ? 4 : 2));
  const pixman_color_t opacity = {0, 0, 0, static_cast<std::uint16_t>(work.opacity * 257)};
  pixman_image_t* mask = work.opacity == 255 ? nullptr : pixman_image_create_solid_fill(&opacity);
  for (auto round : state) {
    (void)round;
    pixman_image_composite32(plain ? PIXMAN_OP_SRC : PIXMAN_OP_OVER, from, mask, to, 0, 0, 0, 0, 0, 0,
                             size.width, size.height);
    benchmark::ClobberMemory();
  }
  if (mask != nullptr) pixman_image_unref(mask);
  pixman_image_unref(from);
  pixman_image_unref(to);
}

// As many bytes as the work must move, moved by memcpy: half of them read, half of them written.
void moveBytes(benchmark::State& state, const Work& work, CXSize size) {
  const auto bytes = static_cast<std::size_t>(size.mul()) * static_cast<std::size_t>(work.bytesMoved) / 2;
  std::vector<std::byte> from(bytes, std::byte{1});
  std::vector<std::byte> to(bytes);
  for (auto round : state) {
    (void)round;
    std::memcpy(to.data(), from.data(), bytes);
    benchmark::ClobberMemory();
  }
}

void registerAll() {
  for (const CXSize size : {CXSize(800, 600), CXSize(64, 64)}) {
    for (const Work& work : kWorks) {
      const std::string name = "/" + std::string(work.name) + ", " + std::to_string(size.width) + " x " +
                               std::to_string(size.height);
      const auto add = [&](const char* who, auto function) {
        benchmark::RegisterBenchmark((who + name).c_str(), [=, &work](benchmark::State& state) {
          function(state, work, size);
        })->MinTime(0.05);
      };
      add("engine", drawBest);
      const auto addForm = [&](const char* who, blit::Form form) {
        add(who, [form](benchmark::State& state, const Work& w, CXSize s) { drawEngine(state, w, s, form); });
      };
      addForm("engine in AVX2", blit::Form::avx2);
      addForm("engine in SSE2", blit::Form::sse2);
      addForm("engine, plain form", blit::Form::plain);
      add("table", drawTable);
      add("SDL", drawSdl);
      add("pixman", drawPixman);
      add("memory", moveBytes);
    }
  }
}

}  // namespace

}  // namespace footlight::bench

int main(int count, char** words) {
  footlight::bench::registerAll();
  return footlight::bench::runAll(count, words);
}
