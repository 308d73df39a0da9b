#pragma once

// Measures the letters of a new font: a strip of equal cells with an alpha plane.

#include "text/fnt_format.h"

namespace footlight {

// A pixel of a letter counts as set above this alpha when letters are moved towards each other.
inline constexpr int kSetAlpha = 20;

// Clears the outermost rows and columns of each cell, so that no letter touches the next cell, and fills in
// the empty columns at both sides and the kerning from the alpha plane. Size, letters and planes must be
// there; a cell's width is the strip's by the number of letters.
void measureLetters(FntFont& font);

}  // namespace footlight
