#pragma once

// The inner loops in registers of N pixels. One source for all widths: each blit_<machine>.cpp includes it
// and takes `wideKernels<N>()`. See blit_lanes.h for what may stand here.
//
// ((s - t) * a + t * 256) / 256 never leaves 16 bits, so a lane of 16 bits computes it exactly.
//
// A row ends with one register that reaches back over pixels already drawn; these weigh nothing there. Pixels
// of weight 0 keep what they hold. Narrower pictures go down to 8 lanes, then to the plain form.

#include "gfx/blit_kernels.h"
#include "gfx/blit_lanes.h"

namespace footlight::blit {
namespace {

// Pixels that are looked at together: what is all clear, or all opaque, is soon done with. The soft rim of a
// sprite is a few pixels wide, so larger ones would nearly all be mixed.
enum class Block { clear, opaque, mixed };

template <int N>
[[gnu::always_inline]] inline Block kindOf(const std::uint8_t* alpha) {
  using Half = typename Lanes<N>::Half;
  const Half first = load<Half>(alpha);
  const Half second = load<Half>(alpha + N / 2);
  if ((first | second) == 0) return Block::clear;
  return (first & second) == static_cast<Half>(~Half{0}) ? Block::opaque : Block::mixed;
}

// Pixels of 16 bits
template <int GreenBits>
struct Wide16 {
  static constexpr int kRedShift = 5 + GreenBits;
  static constexpr std::uint16_t kGreenMask = ((1 << GreenBits) - 1) << 5;
  static constexpr bool kUsesAllBits = GreenBits == 6;

  // A channel at the top of its lane, and fractions below. The extra one stops at the
  // channel's greatest value.
  template <bool kPlusOne, int kBits, class Words>
  [[gnu::always_inline]] static Words mix(Words difference, Words a, Words topOfT) {
    const Words mixed = difference * (a << (8 - kBits)) + topOfT;
    return kPlusOne ? addSaturated(mixed, Words{} + static_cast<std::uint16_t>(1 << (16 - kBits))) : mixed;
  }

  template <bool kPlusOne, class Words>
  [[gnu::always_inline]] static Words blend(Words s, Words t, Words a) {
    constexpr int kRedUp = 11 - kRedShift;
    const Words greenOfT = t & kGreenMask;
    const Words red = mix<kPlusOne, 5>((s << kRedUp >> 11) - (t << kRedUp >> 11), a, t << kRedUp & 0xF800);
    const Words green = mix<kPlusOne, GreenBits>(shiftSigned<5>((s & kGreenMask) - greenOfT), a,
                                                 greenOfT << (11 - GreenBits));
    const Words blue = mix<kPlusOne, 5>((s & 31) - (t & 31), a, t << 11);
    return (red & 0xF800) >> kRedUp | (green >> (11 - GreenBits) & kGreenMask) | blue >> 11;
  }

  using Value = std::uint16_t;

  template <int N>
  [[gnu::always_inline]] static void copy(const std::uint16_t* source, Value* target) {
    store(target, load<typename Lanes<N>::Words>(source));
  }

  // Keeps pixels of weight 0, stores opaque ones, blends the others.
  template <int N>
  [[gnu::always_inline]] static void throughAlpha(const std::uint16_t* source, Value* target,
                                                  typename Lanes<N>::Bytes alpha) {
    using Words = typename Lanes<N>::Words;
    const Words a = widen(alpha);
    const Words s = load<Words>(source);
    const Words t = load<Words>(target);
    const Words drawn = choose(a == 255, s, blend<true>(s, t, a));
    store(target, choose(a == 0, t, drawn));
  }

  template <int N>
  [[gnu::always_inline]] static void throughPlane(const std::uint16_t* source, Value* target,
                                                  const std::uint8_t* alpha) {
    const Block kind = kindOf<N>(alpha);
    if (kind == Block::opaque) copy<N>(source, target);
    if (kind == Block::mixed) throughAlpha<N>(source, target, load<typename Lanes<N>::Bytes>(alpha));
  }

  template <int N, bool kKeeps>
  [[gnu::always_inline]] static void blendAt(const std::uint16_t* source, Value* target,
                                             typename Lanes<N>::Words a) {
    using Words = typename Lanes<N>::Words;
    const Words t = load<Words>(target);
    const Words drawn = blend<false>(load<Words>(source), t, a);
    // A weight of 0 gives t by itself where its bits are all in channels.
    store(target, kKeeps && !kUsesAllBits ? choose(a == 0, t, drawn) : drawn);
  }
};

// Pixels of 32 bits
// Red and blue share a pixel's two lanes; green has a lane of its own.
struct Wide32 {
  using Value = std::uint32_t;

  template <class Pixels>
  [[gnu::always_inline]] static Pixels plain(Pixels s) {
    return (s & 0xF800) << 8 | (s & 0x7E0) << 5 | (s & 0x1F) << 3;
  }

  // Weights in both lanes of a pixel.
  template <class Words, class Pixels>
  [[gnu::always_inline]] static Pixels blend(Pixels s, Pixels t, Pixels a) {
    const auto lanes = [](Pixels p) __attribute__((always_inline)) { return reinterpret_cast<Words>(p); };
    const auto mixed = [&](Pixels x, Pixels y) __attribute__((always_inline)) {
      return reinterpret_cast<Pixels>((lanes(x) - lanes(y)) * lanes(a) + (lanes(y) << 8));
    };
    const Pixels redBlue = mixed((s & 31) | (s >> 11) << 16, t >> 3 & 0x001F001F);
    const Pixels green = mixed(s >> 6 & 31, t >> 11 & 31);
    return (redBlue & 0x1F001F00) >> 5 | (green & 0x1F00) << 3;
  }

  template <int N>
  [[gnu::always_inline]] static void copy(const std::uint16_t* source, Value* target) {
    const auto s = load<typename Lanes<N>::Words>(source);
    store(target, plain(lowerPixels(s)));
    store(target + N / 2, plain(upperPixels(s)));
  }

  template <int N, bool kOpaqueStores, bool kKeeps>
  [[gnu::always_inline]] static void half(typename Lanes<N>::Pixels s, Value* target,
                                          typename Lanes<N>::Pixels a) {
    using Pixels = typename Lanes<N>::Pixels;
    const Pixels t = load<Pixels>(target);
    Pixels drawn = blend<typename Lanes<N>::Words>(s, t, a | a << 16);
    if (kOpaqueStores) drawn = choose(a == 255, plain(s), drawn);
    if (kKeeps) drawn = choose(a == 0, t, drawn);
    store(target, drawn);
  }

  template <int N>
  [[gnu::always_inline]] static void throughAlpha(const std::uint16_t* source, Value* target,
                                                  typename Lanes<N>::Bytes alpha) {
    const auto s = load<typename Lanes<N>::Words>(source);
    const auto a = widen(alpha);
    half<N, true, true>(lowerPixels(s), target, lowerPixels(a));
    half<N, true, true>(upperPixels(s), target + N / 2, upperPixels(a));
  }

  // Half a register of source pixels fills one of the target's.
  template <int N>
  [[gnu::always_inline]] static void throughPlane(const std::uint16_t* source, Value* target,
                                                  const std::uint8_t* alpha) {
    using Half = typename Lanes<N>::Half;
    for (int i = 0; i < N; i += N / 2) {
      const Half bits = load<Half>(alpha + i);
      if (bits == 0) continue;
      const auto s = pixelsAt<N>(source + i);
      if (bits == static_cast<Half>(~Half{0})) {
        store(target + i, plain(s));
      } else {
        half<N, true, true>(s, target + i, pixelsAt<N>(alpha + i));
      }
    }
  }

  template <int N, bool kKeeps>
  [[gnu::always_inline]] static void blendAt(const std::uint16_t* source, Value* target,
                                             typename Lanes<N>::Words a) {
    const auto s = load<typename Lanes<N>::Words>(source);
    half<N, false, kKeeps>(lowerPixels(s), target, lowerPixels(a));
    half<N, false, kKeeps>(upperPixels(s), target + N / 2, upperPixels(a));
  }
};

// Blocks of N pixels. `live` has bytes of 255 for the lanes to draw, 0 for the others.
struct Row {
  const std::uint16_t* source;
  const std::uint8_t* alpha;
  std::uint8_t* targetAlpha;
  std::uint32_t opacity;
};

template <class Target>
struct Copy {
  using Value = typename Target::Value;
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    Target::template copy<N>(row.source + at, target + at);
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target, typename Lanes<N>::Bytes) {
    block<N>(row, at, target);  // again the same
  }
};

struct Mask {
  using Value = std::uint16_t;
  template <int N>
  [[gnu::always_inline]] static void draw(const Row& row, int at, Value* target, typename Lanes<N>::Bytes a) {
    using Words = typename Lanes<N>::Words;
    const Words kept = load<Words>(target + at);
    store(target + at, choose(widen(a) == 0, kept, load<Words>(row.source + at)));
  }
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at));
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target,
                                          typename Lanes<N>::Bytes live) {
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at) & live);
  }
};

template <class Target>
struct Alpha {
  using Value = typename Target::Value;
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    Target::template throughPlane<N>(row.source + at, target + at, row.alpha + at);
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target,
                                          typename Lanes<N>::Bytes live) {
    const auto a = load<typename Lanes<N>::Bytes>(row.alpha + at) & live;
    Target::template throughAlpha<N>(row.source + at, target + at, a);
  }
};

template <class Target>
struct Blend {
  using Value = typename Target::Value;
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    const auto opacity = typename Lanes<N>::Words{} + static_cast<std::uint16_t>(row.opacity);
    Target::template blendAt<N, false>(row.source + at, target + at, opacity);
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target,
                                          typename Lanes<N>::Bytes live) {
    const auto opacity = live & static_cast<std::uint8_t>(row.opacity);
    Target::template blendAt<N, true>(row.source + at, target + at, widen(opacity));
  }
};

template <class Target>
struct AlphaBlend {
  using Value = typename Target::Value;
  template <int N>
  [[gnu::always_inline]] static void draw(const Row& row, int at, Value* target, typename Lanes<N>::Bytes a) {
    const auto weight = widen(a) * static_cast<std::uint16_t>(row.opacity) >> 8;
    Target::template blendAt<N, true>(row.source + at, target + at, weight);
  }
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    if (kindOf<N>(row.alpha + at) == Block::clear) return;
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at));
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target,
                                          typename Lanes<N>::Bytes live) {
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at) & live);
  }
};

// The target's alpha ends at the sum of both, 255 at most; where it was 0 the source is stored.
template <class Target>
struct ToCanvas {
  using Value = std::uint16_t;
  template <int N>
  [[gnu::always_inline]] static void draw(const Row& row, int at, Value* target, typename Lanes<N>::Bytes a) {
    using Bytes = typename Lanes<N>::Bytes;
    const Bytes b = load<Bytes>(row.targetAlpha + at);
    const Bytes wasClear = reinterpret_cast<Bytes>(b == 0) & reinterpret_cast<Bytes>(a != 0);
    Target::template throughAlpha<N>(row.source + at, target + at, a | wasClear);
    const Bytes sum = a + b;
    store(row.targetAlpha + at, sum | reinterpret_cast<Bytes>(sum < a));
  }
  template <int N>
  [[gnu::always_inline]] static void block(const Row& row, int at, Value* target) {
    if (kindOf<N>(row.alpha + at) == Block::clear) return;
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at));
  }
  template <int N>
  [[gnu::always_inline]] static void last(const Row& row, int at, Value* target,
                                          typename Lanes<N>::Bytes live) {
    draw<N>(row, at, target, load<typename Lanes<N>::Bytes>(row.alpha + at) & live);
  }
};

// Rows and rectangles
constexpr int kMostLanes = 16;
alignas(32) constexpr std::uint8_t kLive[2 * kMostLanes] = {
    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
    255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};

template <class Op, int N>
void drawRows(const Job& job) {
  const int rest = job.width % N;
  const int whole = job.width - rest;
  const auto live = load<typename Lanes<N>::Bytes>(kLive + kMostLanes - N + rest);
  auto* target = static_cast<typename Op::Value*>(job.target);
  Row row = {job.source, job.alpha, job.targetAlpha, job.opacity};
  for (int i = 0; i < job.height; ++i) {
    int at = 0;
    for (; at < whole; at += N) Op::template block<N>(row, at, target);
    if (rest != 0) Op::template last<N>(row, job.width - N, target, live);
    row.source += job.sourceStride;
    if (row.alpha != nullptr) row.alpha += job.sourceStride;
    if (row.targetAlpha != nullptr) row.targetAlpha += job.targetStride;
    target += job.targetStride;
  }
}

// False for a picture that is narrower than the narrowest register.
template <class Op, int N>
bool drawWide(const Job& job) {
  if (job.width >= N) {
    drawRows<Op, N>(job);
    return true;
  }
  if constexpr (N > 8) return drawWide<Op, 8>(job);
  return false;
}

template <class Op, int N, Kernel Kernels::*kPlain>
void draw(const Job& job) {
  if (!drawWide<Op, N>(job)) (kPlainKernels.*kPlain)(job);
}

// The same where the plain form is one of a row of them.
template <class Op, int N, auto kPlain, int kFormat>
void drawTo(const Job& job) {
  if (!drawWide<Op, N>(job)) (kPlainKernels.*kPlain)[kFormat](job);
}

using To15 = Wide16<5>;
using To16 = Wide16<6>;
using To32 = Wide32;

template <int N>
constexpr Kernels wideKernels() {
  using K = Kernels;
  return {
      draw<Copy<To32>, N, &K::copy32>,
      draw<Mask, N, &K::mask>,
      {drawTo<Alpha<To15>, N, &K::alpha, kTo15>, drawTo<Alpha<To16>, N, &K::alpha, kTo16>,
       drawTo<Alpha<To32>, N, &K::alpha, kTo32>},
      {drawTo<Blend<To15>, N, &K::blend, kTo15>, drawTo<Blend<To16>, N, &K::blend, kTo16>,
       drawTo<Blend<To32>, N, &K::blend, kTo32>},
      {drawTo<AlphaBlend<To15>, N, &K::alphaBlend, kTo15>, drawTo<AlphaBlend<To16>, N, &K::alphaBlend, kTo16>,
       drawTo<AlphaBlend<To32>, N, &K::alphaBlend, kTo32>},
      {drawTo<ToCanvas<To15>, N, &K::toCanvas, kTo15>, drawTo<ToCanvas<To16>, N, &K::toCanvas, kTo16>},
  };
}

}  // namespace
}  // namespace footlight::blit
