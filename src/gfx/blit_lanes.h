#pragma once

// Registers of 8 and 16 pixels for the wide inner loops. A lane is a pixel of 16 bits, or half of one
// of 32. Everything here is local to the source that includes it, which may be compiled for another machine
// than the rest: it may neither call nor emit what other sources share.

#include <cstdint>
#include <immintrin.h>
#include <type_traits>

namespace footlight::blit {
namespace {

template <int N>
struct Lanes {
  typedef std::uint8_t Bytes [[gnu::vector_size(N)]];
  using Half = std::conditional_t<N == 8, std::uint32_t, std::uint64_t>;  // of the bytes
  typedef std::uint16_t Words [[gnu::vector_size(2 * N)]];
  typedef std::int16_t SignedWords [[gnu::vector_size(2 * N)]];
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

// Where the comparison holds x, elsewhere y.
template <class Vector, class Mask>
[[gnu::always_inline]] inline Vector choose(Mask mask, Vector x, Vector y) {
  return mask ? x : y;
}

// Words of either sign, shifted down.
template <int kBits, class Words>
[[gnu::always_inline]] inline Words shiftSigned(Words words) {
  using Signed = typename Lanes<sizeof(Words) / 2>::SignedWords;
  return reinterpret_cast<Words>(reinterpret_cast<Signed>(words) >> kBits);
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

// Half as many words, or bytes, from memory, each as a pixel of 32 bits.
template <int N>
[[gnu::always_inline]] inline typename Lanes<N>::Pixels pixelsAt(const std::uint16_t* words);
template <int N>
[[gnu::always_inline]] inline typename Lanes<N>::Pixels pixelsAt(const std::uint8_t* bytes);
template <>
[[gnu::always_inline]] inline Lanes<8>::Pixels pixelsAt<8>(const std::uint16_t* words) {
  const __m128i low = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(words));
  return lowerPixels(reinterpret_cast<Lanes<8>::Words>(low));
}
template <>
[[gnu::always_inline]] inline Lanes<8>::Pixels pixelsAt<8>(const std::uint8_t* bytes) {
  const __m128i low = _mm_cvtsi32_si128(load<std::int32_t>(bytes));
  const __m128i wide = _mm_unpacklo_epi8(low, _mm_setzero_si128());
  return lowerPixels(reinterpret_cast<Lanes<8>::Words>(wide));
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
template <>
[[gnu::always_inline]] inline Lanes<16>::Pixels pixelsAt<16>(const std::uint16_t* words) {
  const __m128i half = _mm_loadu_si128(reinterpret_cast<const __m128i*>(words));
  return reinterpret_cast<Lanes<16>::Pixels>(_mm256_cvtepu16_epi32(half));
}
template <>
[[gnu::always_inline]] inline Lanes<16>::Pixels pixelsAt<16>(const std::uint8_t* bytes) {
  const __m128i half = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
  return reinterpret_cast<Lanes<16>::Pixels>(_mm256_cvtepu8_epi32(half));
}
#endif

}  // namespace
}  // namespace footlight::blit
