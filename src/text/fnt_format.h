#pragma once

// The FNT font file. Little-endian:
//
//   0 "FNT" and a 0 byte, which nothing tests   4 width of the strip   8 height   12 bits per pixel
//   16 number of letters n   20 the letters in the order of their cells   then n * n signed bytes of kerning,
//   a row for each letter before, a column for each letter; n signed bytes each of empty columns at the left
//   and at the right of the cells; the strip's pixels of 16 bits; its alpha plane
//
// A cell is width / n pixels wide.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "foundation/geometry.h"

namespace footlight {

struct FntFont {
  static constexpr int kMostLetters = 256;

  CXSize size;
  int bpp = 16;  // or 15
  std::vector<std::uint8_t> letters;
  std::vector<std::int8_t> kerning;
  std::vector<std::int8_t> left;
  std::vector<std::int8_t> right;
  std::vector<std::byte> colour;
  std::vector<std::byte> alpha;
};

// Nothing when the bytes are cut short or their numbers are out of bounds; `why` then says so for a report.
std::optional<FntFont> readFnt(std::span<const std::byte> file, const char** why);
std::vector<std::byte> writeFnt(const FntFont& font);

}  // namespace footlight
