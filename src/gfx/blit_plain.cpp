// The inner loops, one pixel at a time: what the wide forms must equal, and what draws pictures that are too
// narrow for them or that lie over themselves.

#include "gfx/blit_formats.h"
#include "gfx/blit_kernels.h"
#include "gfx/pixel_format.h"

namespace footlight::blit {

namespace {

constexpr std::uint32_t kOpaque = 255;

template <class Format>
struct Target16 {
  using Value = std::uint16_t;
  static Value plain(std::uint16_t s) { return s; }
  static Value blend(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
    return Pixel<Format>::blend(s, t, a);
  }
  static Value throughAlpha(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
    return Pixel<Format>::blendPlusOne(s, t, a);
  }
};

struct Target32 {
  using Value = std::uint32_t;
  static Value plain(std::uint16_t s) { return toPixel32(s); }
  static Value blend(std::uint32_t s, std::uint32_t t, std::uint32_t a) { return blend32(s, t, a); }
  static Value throughAlpha(std::uint32_t s, std::uint32_t t, std::uint32_t a) { return blend32(s, t, a); }
};

// Calls the function with each pixel's place in the source and in the target.
template <class Function>
void forEachPixel(const Job& job, Function function) {
  for (int row = 0; row < job.height; ++row) {
    const std::int64_t from = row * job.sourceStride;
    const std::int64_t to = row * job.targetStride;
    for (int column = 0; column < job.width; ++column) function(from + column, to + column);
  }
}

template <class Target>
void copy(const Job& job) {
  auto* t = static_cast<typename Target::Value*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) { t[to] = Target::plain(job.source[from]); });
}

void mask(const Job& job) {
  auto* t = static_cast<std::uint16_t*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) {
    if (job.alpha[from] != 0) t[to] = job.source[from];
  });
}

template <class Target>
void alpha(const Job& job) {
  auto* t = static_cast<typename Target::Value*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) {
    const std::uint16_t s = job.source[from];
    const std::uint32_t a = job.alpha[from];
    if (a == 0) return;
    t[to] = a == kOpaque ? Target::plain(s) : Target::throughAlpha(s, t[to], a);
  });
}

template <class Target>
void blend(const Job& job) {
  auto* t = static_cast<typename Target::Value*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) {
    t[to] = Target::blend(job.source[from], t[to], job.opacity);
  });
}

template <class Target>
void alphaBlend(const Job& job) {
  auto* t = static_cast<typename Target::Value*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) {
    const std::uint32_t a = job.alpha[from] * job.opacity >> 8;
    if (a != 0) t[to] = Target::blend(job.source[from], t[to], a);
  });
}

template <class Target>
void toCanvas(const Job& job) {
  auto* t = static_cast<std::uint16_t*>(job.target);
  forEachPixel(job, [&](std::int64_t from, std::int64_t to) {
    const std::uint16_t s = job.source[from];
    const std::uint32_t a = job.alpha[from];
    const std::uint32_t b = job.targetAlpha[to];
    if (a == 0) return;
    t[to] = a == kOpaque || b == 0 ? s : Target::throughAlpha(s, t[to], a);
    job.targetAlpha[to] = static_cast<std::uint8_t>(std::min(kOpaque, a + b));
  });
}

using To15 = Target16<Rgb555>;
using To16 = Target16<Rgb565>;

}  // namespace

const Kernels kPlainKernels = {
    .copy32 = copy<Target32>,
    .mask = mask,
    .alpha = {alpha<To15>, alpha<To16>, alpha<Target32>},
    .blend = {blend<To15>, blend<To16>, blend<Target32>},
    .alphaBlend = {alphaBlend<To15>, alphaBlend<To16>, alphaBlend<Target32>},
    .toCanvas = {toCanvas<To15>, toCanvas<To16>},
};

}  // namespace footlight::blit
