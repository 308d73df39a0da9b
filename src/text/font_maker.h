#pragma once

// Makes fonts from pictures of their letters: where each letter begins and ends, and how far letters stand
// from each other.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "text/fnt_format.h"

namespace footlight {

// The picture of a letter, both planes of the full size.
struct FontLetter {
  std::uint8_t letter = 0;
  CXSize size;
  std::vector<std::uint16_t> pixels;
  std::vector<std::uint8_t> alpha;
};

// Empty columns from the left and from the right; all of them where the letter is empty.
int leftOffset(const FontLetter& letter);
int rightOffset(const FontLetter& letter);
// How many columns of `a`, from its right end on, the first column of `b` passes before the two meet in a
// row; one more where they only meet at corners.
int slideUnder(const FontLetter& a, const FontLetter& b);

// The letters in their order, in cells as large as the largest of them. Their outermost rows and columns are
// emptied. Nothing when there are too many, or the strip is over the limits.
std::optional<FntFont> makeFont(std::vector<FontLetter> letters);

}  // namespace footlight
