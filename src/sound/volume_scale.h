#pragma once

// The scripts' scales of loudness and sides, in hundredths of a decibel. Loudness goes from 0, silence, to
// 800, the full one; the sides from 0, left, over 400, the middle, to 800, right. What lies 31 decibels or
// more away is the end of the scale.

#include <algorithm>
#include <cstdint>
#include <limits>

namespace footlight::volume_scale {

inline constexpr int kEnd = 10000;
inline constexpr int kEdge = 3100;

// `factor` times the distance from the middle of the scale; as far as an int goes.
constexpr int scaled(int value, int middle, int factor) {
  using Limits = std::numeric_limits<int>;
  const std::int64_t exact = (std::int64_t{value} - middle) * factor;
  return static_cast<int>(std::clamp<std::int64_t>(exact, Limits::min(), Limits::max()));
}

constexpr int volume(int value) {
  const int result = scaled(value, 800, 4);
  return result <= -kEdge ? -kEnd : result;
}

constexpr int pan(int value) {
  const int result = scaled(value, 400, 2);
  if (result <= -kEdge) return -kEnd;
  return result >= kEdge ? kEnd : result;
}

}  // namespace footlight::volume_scale
