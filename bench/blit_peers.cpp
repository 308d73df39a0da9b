#include "blit_peers.h"

#include <algorithm>
#include <vector>

namespace footlight::bench::table {

namespace {

const std::uint16_t* products() {
  static const std::vector<std::uint16_t> entries = [] {
    std::vector<std::uint16_t> table(512 * 256);
    for (int d = -256; d < 256; ++d) {
      for (int a = 0; a < 256; ++a)
        table[static_cast<std::size_t>((d + 256) * 256 + a)] = static_cast<std::uint16_t>(d * a);
    }
    return table;
  }();
  return entries.data();
}

const std::uint32_t* pixels32() {
  static const std::vector<std::uint32_t> entries = [] {
    std::vector<std::uint32_t> table(65536);
    for (std::uint32_t p = 0; p < 65536; ++p)
      table[p] = (p & 0xF800) << 8 | (p & 0x7E0) << 5 | (p & 0x1F) << 3;
    return table;
  }();
  return entries.data();
}

inline int mix(const std::uint16_t* table, int s, int t, int a) {
  return ((table[(s - t + 256) * 256 + a] + (t << 8)) & 0xFFFF) >> 8;
}

template <int kPlus>
inline std::uint16_t mixed(const std::uint16_t* table, int s, int t, int a) {
  const int red = std::min(mix(table, s >> 11, t >> 11, a) + kPlus, 31);
  const int green = std::min(mix(table, s >> 5 & 63, t >> 5 & 63, a) + kPlus, 63);
  const int blue = std::min(mix(table, s & 31, t & 31, a) + kPlus, 31);
  return static_cast<std::uint16_t>(red << 11 | green << 5 | blue);
}

template <class Value, class Function>
inline void forEachPixel(const PlainJob& job, Function function) {
  const std::uint16_t* s = job.source;
  const std::uint8_t* a = job.alpha;
  auto* t = static_cast<Value*>(job.target);
  for (int y = 0; y < job.height; ++y, t += job.targetStride - job.width) {
    for (int x = 0; x < job.width; ++x, ++s, ++a, ++t) function(*s, *a, t);
  }
}

}  // namespace

void copy(const PlainJob& job) {
  forEachPixel<std::uint16_t>(job, [](std::uint16_t s, int, std::uint16_t* t) { *t = s; });
}

void alpha(const PlainJob& job) {
  forEachPixel<std::uint16_t>(job, [table = products()](std::uint16_t s, int a, std::uint16_t* t) {
    if (a == 0) return;
    *t = a > 254 ? s : mixed<1>(table, s, *t, a);
  });
}

void blend(const PlainJob& job) {
  forEachPixel<std::uint16_t>(
      job, [table = products(), opacity = job.opacity](std::uint16_t s, int, std::uint16_t* t) {
        *t = mixed<0>(table, s, *t, opacity);
      });
}

void alphaBlend(const PlainJob& job) {
  forEachPixel<std::uint16_t>(
      job, [table = products(), opacity = job.opacity](std::uint16_t s, int a, std::uint16_t* t) {
        const int weight = a * opacity;
        if (weight > 255) *t = mixed<0>(table, s, *t, weight >> 8);
      });
}

void copy32(const PlainJob& job) {
  forEachPixel<std::uint32_t>(job,
                              [wide = pixels32()](std::uint16_t s, int, std::uint32_t* t) { *t = wide[s]; });
}

void alpha32(const PlainJob& job) {
  forEachPixel<std::uint32_t>(
      job, [table = products(), wide = pixels32()](std::uint16_t s, int a, std::uint32_t* t) {
        if (a == 0) return;
        if (a > 254) {
          *t = wide[s];
          return;
        }
        const int blue = mix(table, s & 31, static_cast<int>((*t & 0xFF) >> 3), a);
        const int green = mix(table, (s & 0x7E0) >> 6, static_cast<int>((*t & 0xFF00) >> 11), a);
        const int red = mix(table, s >> 11, static_cast<int>((*t & 0xFF0000) >> 19), a);
        *t = wide[red << 11 | green << 6 | blue];
      });
}

}  // namespace footlight::bench::table
