#pragma once

// Fonts as a picture and a text. The picture is the strip of letters, a PNG whose alpha is their shape. The
// text names them, in UTF-8:
//
//   letters ABC...      in the order of their cells; further lines go on
//   kerning A V 2       by how many pixels V moves towards an A before it
//   left A 1            empty columns at the left of a cell, and at the right
//   right A 2
//
// Lines of the last three kinds stand only for what does not follow from the picture. A text without a line
// of these kinds is nothing but the letters.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/png_file.h"
#include "text/fnt_format.h"

namespace footlight::font {

// All that a font can draw, in the order of the code page: what texts keep for their codes is left out.
std::string drawableLetters();

// A letter list from UTF-8 text without line ends; nothing, and the reason in `why`, where one is not of the
// game's code page, or twice there.
std::optional<std::string> lettersFrom(std::string_view utf8, std::string* why);

// The font of a strip of equal cells. A picture that is opaque throughout gives its lightness as the shape,
// in white.
std::optional<FntFont> fromStrip(const platform::PngPicture& strip, std::string_view text, std::string* why);

platform::PngPicture toStrip(const FntFont& font);
std::string toText(const FntFont& font);

}  // namespace footlight::font
