#pragma once

// Registers of 8, 16 and 32 pixels for the wide inner loops. A lane is a pixel of 16 bits, or half of one
// of 32. Everything here is local to the source that includes it, which may be compiled for another machine
// than the rest: it may neither call nor emit what other sources share.

#include <cstdint>
#include <immintrin.h>

namespace footlight::blit {
namespace {

template <int N>
struct Lanes {
  typedef std::uint8_t Bytes [[gnu::vector_size(N)]];
  typedef std::uint16_t Words [[gnu::vector_size(2 * N)]];
  typedef std::uint32_t Pixels [[gnu::vector_size(2 * N)]];  // N / 2 of them
};

template <class Vector>
[[gnu::always_inline]] inline Vector load(const void* from) {
  Vector value;
  __builtin_memcpy(&value, from, sizeof value);
  return value;
}

template <class Vector>
[[gnu::always_inline]] inline void store(void* to, Vector value) {
  __builtin_memcpy(to, &value, sizeof value);
}

// Where the mask's bits are set x, elsewhere y.
template <class Vector, class Mask>
[[gnu::always_inline]] inline Vector choose(Mask mask, Vector x, Vector y) {
  const Vector bits = reinterpret_cast<Vector>(mask);
  return (x & bits) | (y & ~bits);
}

// Each byte as a word.
[[gnu::always_inline]] inline Lanes<8>::Words widen(Lanes<8>::Bytes bytes) {
  const __m128i low = _mm_cvtsi64_si128(reinterpret_cast<long long>(bytes));
  return reinterpret_cast<Lanes<8>::Words>(_mm_unpacklo_epi8(low, _mm_setzero_si128()));
}
// Sums that stay at the greatest value.
[[gnu::always_inline]] inline Lanes<8>::Words addSaturated(Lanes<8>::Words a, Lanes<8>::Words b) {
  return reinterpret_cast<Lanes<8>::Words>(
      _mm_adds_epu16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
// The lower and the upper half of the words, each word as a pixel of 32 bits.
[[gnu::always_inline]] inline Lanes<8>::Pixels lowerPixels(Lanes<8>::Words words) {
  return reinterpret_cast<Lanes<8>::Pixels>(
      _mm_unpacklo_epi16(reinterpret_cast<__m128i>(words), _mm_setzero_si128()));
}
[[gnu::always_inline]] inline Lanes<8>::Pixels upperPixels(Lanes<8>::Words words) {
  return reinterpret_cast<Lanes<8>::Pixels>(
      _mm_unpackhi_epi16(reinterpret_cast<__m128i>(words), _mm_setzero_si128()));
}

#if defined(__AVX2__)
[[gnu::always_inline]] inline Lanes<16>::Words widen(Lanes<16>::Bytes bytes) {
  return reinterpret_cast<Lanes<16>::Words>(_mm256_cvtepu8_epi16(reinterpret_cast<__m128i>(bytes)));
}
[[gnu::always_inline]] inline Lanes<16>::Words addSaturated(Lanes<16>::Words a, Lanes<16>::Words b) {
  return reinterpret_cast<Lanes<16>::Words>(
      _mm256_adds_epu16(reinterpret_cast<__m256i>(a), reinterpret_cast<__m256i>(b)));
}
[[gnu::always_inline]] inline Lanes<16>::Pixels lowerPixels(Lanes<16>::Words words) {
  const auto all = reinterpret_cast<__m256i>(words);
  return reinterpret_cast<Lanes<16>::Pixels>(_mm256_cvtepu16_epi32(_mm256_castsi256_si128(all)));
}
[[gnu::always_inline]] inline Lanes<16>::Pixels upperPixels(Lanes<16>::Words words) {
  const auto all = reinterpret_cast<__m256i>(words);
  return reinterpret_cast<Lanes<16>::Pixels>(_mm256_cvtepu16_epi32(_mm256_extracti128_si256(all, 1)));
}
#endif

#if defined(__AVX512BW__)
[[gnu::always_inline]] inline Lanes<32>::Words widen(Lanes<32>::Bytes bytes) {
  return reinterpret_cast<Lanes<32>::Words>(_mm512_cvtepu8_epi16(reinterpret_cast<__m256i>(bytes)));
}
[[gnu::always_inline]] inline Lanes<32>::Words addSaturated(Lanes<32>::Words a, Lanes<32>::Words b) {
  return reinterpret_cast<Lanes<32>::Words>(
      _mm512_adds_epu16(reinterpret_cast<__m512i>(a), reinterpret_cast<__m512i>(b)));
}
[[gnu::always_inline]] inline Lanes<32>::Pixels lowerPixels(Lanes<32>::Words words) {
  const auto all = reinterpret_cast<__m512i>(words);
  return reinterpret_cast<Lanes<32>::Pixels>(_mm512_cvtepu16_epi32(_mm512_castsi512_si256(all)));
}
[[gnu::always_inline]] inline Lanes<32>::Pixels upperPixels(Lanes<32>::Words words) {
  const auto all = reinterpret_cast<__m512i>(words);
  return reinterpret_cast<Lanes<32>::Pixels>(_mm512_cvtepu16_epi32(_mm512_extracti64x4_epi64(all, 1)));
}
#endif

}  // namespace
}  // namespace footlight::blit
