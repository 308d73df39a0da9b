#pragma once

// Letters from the outline and bitmap fonts of the machine: TrueType, OpenType, Type 1, BDF, PCF and whatever
// else FreeType reads.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "text/fnt_format.h"

namespace footlight::font {

enum class Kerning { measured, none };

struct Outline {
  FntFont font;
  std::string missing;  // letters, in code page 1250, that the font file does not have; they are left out
};

// White letters of that height, from the highest ascent to the deepest descent, in pixels. `face` counts the
// fonts of one file from 0. Nothing, and the reason in `why`, when the file is no font or too little of it
// is there.
std::optional<Outline> drawLetters(std::span<const std::byte> file, int face, int size,
                                   std::string_view letters, Kerning kerning, std::string* why);

}  // namespace footlight::font
