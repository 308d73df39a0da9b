#include "gfx/blit_planes.h"

namespace footlight::blit {

namespace {

using Byte = std::uint8_t;

[[gnu::always_inline]] inline void lessenBytes(Byte* __restrict plane, const Byte* __restrict by,
                                               std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const Byte larger = plane[i] > by[i] ? plane[i] : by[i];
    plane[i] = static_cast<Byte>(larger - by[i]);
  }
}

[[gnu::always_inline]] inline void multiplyBytes(const Byte* __restrict a, const Byte* __restrict b,
                                                 Byte* __restrict out, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const auto x = static_cast<std::uint16_t>(a[i] == 255 ? b[i] : (b[i] == 255 ? a[i] : a[i] * b[i] >> 8));
    out[i] = static_cast<Byte>(x);
  }
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void lessenWide(Byte* plane, const Byte* by, std::size_t count) {
  lessenBytes(plane, by, count);
}
[[gnu::target("avx2")]] void multiplyWide(const Byte* a, const Byte* b, Byte* out, std::size_t count) {
  multiplyBytes(a, b, out, count);
}
#endif

bool hasWide() {
#if defined(__x86_64__)
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
#else
  return false;
#endif
}

const Byte* bytesOf(const std::byte* plane) { return reinterpret_cast<const Byte*>(plane); }
Byte* bytesOf(std::byte* plane) { return reinterpret_cast<Byte*>(plane); }

}  // namespace

void lessen(std::byte* plane, const std::byte* by, std::size_t count) {
#if defined(__x86_64__)
  if (hasWide()) {
    lessenWide(bytesOf(plane), bytesOf(by), count);
    return;
  }
#endif
  lessenBytes(bytesOf(plane), bytesOf(by), count);
}

void multiply(const std::byte* a, const std::byte* b, std::byte* out, std::size_t count) {
#if defined(__x86_64__)
  if (hasWide()) {
    multiplyWide(bytesOf(a), bytesOf(b), bytesOf(out), count);
    return;
  }
#endif
  multiplyBytes(bytesOf(a), bytesOf(b), bytesOf(out), count);
}

}  // namespace footlight::blit
