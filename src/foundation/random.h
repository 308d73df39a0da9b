#pragma once

// Random numbers. The tick count is added to each draw, so two draws with one seed differ in time.

#include <cstdint>
#include <vector>

namespace footlight {

class CXRandom {
 public:
  static constexpr int kMostAtOnce = 10000;  // numbers of one vector

  // Seeds from the wall clock.
  CXRandom();
  // The seed of the whole run, for runs that must be repeatable.
  static void seed(std::uint32_t value);
  // The next number of the generator, 0 to 2^31 - 1.
  static std::int32_t next();
  // Leaves out that many numbers, as if they had been drawn.
  static void skip(std::uint32_t count) { state_ += count * kStep; }
  // 0 to n - 1; 0 when n is 0 or less.
  static int random(int n);
  // low to low + n - 1; low when n is 0 or less.
  static int random(int low, int n);
  // `count` numbers of random(low, n); a count of 0 means n - low; with `unique` no number comes twice, and
  // the draw stops when there are no more. Over kMostAtOnce nothing comes.
  static std::vector<int> random_vector(int low, int n, int count, bool unique);

 private:
  static constexpr std::uint32_t kStep = 0x9E3779B9U;

  static inline std::uint32_t base_ = 1;
  static inline std::uint32_t state_ = 1;
};

}  // namespace footlight
