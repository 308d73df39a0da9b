#pragma once

// Work on alpha planes, row by row, in the registers that the machine has.

#include <cstddef>
#include <cstdint>

namespace footlight::blit {

// Takes so much off each byte; none goes below 0.
void lessen(std::byte* plane, const std::byte* by, std::size_t count);
// The product of two planes as weights: 255 leaves the other as it is, else the upper byte of the product.
void multiply(const std::byte* a, const std::byte* b, std::byte* out, std::size_t count);

constexpr std::uint8_t product(std::uint32_t a, std::uint32_t b) {
  return static_cast<std::uint8_t>(a == 255 ? b : b == 255 ? a : a * b >> 8);
}

}  // namespace footlight::blit
