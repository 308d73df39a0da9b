#pragma once

// Arithmetic on numbers that come from scripts, files and peers: every result is defined.

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace footlight {

constexpr std::int32_t wrap_add(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t wrap_sub(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr std::int32_t wrap_mul(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
constexpr std::int32_t wrap_negate(std::int32_t a) { return wrap_sub(0, a); }

// Truncated quotient; 0 for a divisor of 0; the smallest integer over -1 wraps to itself.
constexpr std::int32_t divide(std::int32_t a, std::int32_t b) {
  if (b == 0) return 0;
  if (b == -1) return wrap_negate(a);
  return a / b;
}
// Remainder with the sign of a; 0 for a divisor of 0 or -1.
constexpr std::int32_t remainder(std::int32_t a, std::int32_t b) { return b == 0 || b == -1 ? 0 : a % b; }

// Truncates toward zero; saturates at the ends of the range; not-a-number gives 0.
inline std::int32_t to_int(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

// Sizes from outside: nothing when the exact result does not fit 64 bits.
constexpr std::optional<std::uint64_t> checked_mul(std::uint64_t a, std::uint64_t b) {
  if (a != 0 && b > std::numeric_limits<std::uint64_t>::max() / a) return std::nullopt;
  return a * b;
}
constexpr std::optional<std::uint64_t> checked_add(std::uint64_t a, std::uint64_t b) {
  if (b > std::numeric_limits<std::uint64_t>::max() - a) return std::nullopt;
  return a + b;
}

}  // namespace footlight
