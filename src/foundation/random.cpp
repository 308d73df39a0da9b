#include "foundation/random.h"

#include <algorithm>
#include <unordered_set>

#include "foundation/arithmetic.h"
#include "foundation/diagnose.h"
#include "platform/platform.h"

namespace footlight {

CXRandom::CXRandom() {
  state_ = base_ ^ static_cast<std::uint32_t>(platform::current().clock().unixSeconds());
}

void CXRandom::seed(std::uint32_t value) { base_ = state_ = value; }

std::int32_t CXRandom::next() {
  // A 32-bit counter with a strong mixer: Steele, Lea and Flood, "Fast Splittable Pseudorandom Number
  // Generators", with the 32-bit finaliser of MurmurHash3.
  std::uint32_t z = state_ += kStep;
  z = (z ^ (z >> 16)) * 0x85EBCA6BU;
  z = (z ^ (z >> 13)) * 0xC2B2AE35U;
  return static_cast<std::int32_t>((z ^ (z >> 16)) & 0x7FFFFFFFU);
}

int CXRandom::random(int n) {
  if (n <= 0) return 0;
  const std::uint32_t sum = static_cast<std::uint32_t>(next()) + platform::current().clock().ticks();
  return static_cast<int>(sum % static_cast<std::uint32_t>(n));
}

int CXRandom::random(int low, int n) { return wrap_add(low, random(n)); }

std::vector<int> CXRandom::random_vector(int low, int n, int count, bool unique) {
  if (count == 0) count = wrap_sub(n, low);
  if (count > kMostAtOnce) {
    limitHit("random numbers at once");
    platform::current().shell().debugText("Arguments error: Random::getPlenty( )\n");
    return {};
  }
  if (unique) count = std::min(count, std::max(n, 1));
  std::vector<int> numbers;
  std::unordered_set<int> known;
  while (static_cast<int>(numbers.size()) < count) {
    const int number = random(low, n);
    if (!unique || known.insert(number).second) numbers.push_back(number);
  }
  return numbers;
}

}  // namespace footlight
