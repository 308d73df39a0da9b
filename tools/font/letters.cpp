#include "font/letters.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "text/font_maker.h"

namespace footlight::font {

namespace {

constexpr std::string_view kLettersWord = "letters ";

std::string utf8Of(std::uint8_t letter) {
  return code_page::toUtf8(std::string_view(reinterpret_cast<const char*>(&letter), 1));
}

std::optional<std::size_t> placeOf(const FntFont& font, std::string_view utf8) {
  const auto letter = code_page::fromUtf8(utf8);
  if (!letter || letter->size() != 1) return std::nullopt;
  const auto found = std::ranges::find(font.letters, static_cast<std::uint8_t>(letter->front()));
  if (found == font.letters.end()) return std::nullopt;
  return static_cast<std::size_t>(found - font.letters.begin());
}

// Pixels of five, six and five bits; the way back fills the lower bits, so that white stays white.
std::uint16_t packed(std::uint32_t colour) {
  return static_cast<std::uint16_t>((colour >> 8 & 0xF800U) | (colour >> 5 & 0x7E0U) | (colour >> 3 & 0x1FU));
}

std::uint32_t unpacked(std::uint32_t pixel, int bpp) {
  const auto wide = [](std::uint32_t channel, int bits) {
    const std::uint32_t upper = channel << (8 - bits);
    return upper | upper >> bits;
  };
  if (bpp == 15)
    return wide(pixel >> 10 & 31U, 5) << 16 | wide(pixel >> 5 & 31U, 5) << 8 | wide(pixel & 31U, 5);
  return wide(pixel >> 11 & 31U, 5) << 16 | wide(pixel >> 5 & 63U, 6) << 8 | wide(pixel & 31U, 5);
}

bool isOpaque(const platform::PngPicture& picture) {
  return std::ranges::all_of(picture.pixels, [](std::uint32_t pixel) { return pixel >> 24 == 0xFF; });
}

std::uint32_t lightness(std::uint32_t pixel) {
  return std::max({pixel >> 16 & 0xFFU, pixel >> 8 & 0xFFU, pixel & 0xFFU});
}

FontLetter cellOf(const platform::PngPicture& strip, int cell, int index, bool isShape) {
  FontLetter letter{0, {cell, strip.height}, {}, {}};
  for (int y = 0; y < strip.height; ++y) {
    for (int x = 0; x < cell; ++x) {
      const std::uint32_t pixel = strip.pixels[static_cast<std::size_t>(y * strip.width + index * cell + x)];
      letter.pixels.push_back(isShape ? std::uint16_t{0xFFFF} : packed(pixel));
      letter.alpha.push_back(static_cast<std::uint8_t>(isShape ? lightness(pixel) : pixel >> 24));
    }
  }
  return letter;
}

std::optional<FntFont> fromCells(const platform::PngPicture& strip, std::string_view letters, bool isShape) {
  const int cell = strip.width / static_cast<int>(letters.size());
  std::vector<FontLetter> cells;
  for (const char letter : letters) {
    cells.push_back(cellOf(strip, cell, static_cast<int>(cells.size()), isShape));
    cells.back().letter = static_cast<std::uint8_t>(letter);
  }
  return makeFont(std::move(cells));
}

std::int8_t* columnOf(FntFont& font, std::string_view word, std::size_t place) {
  if (word == "left") return &font.left[place];
  return word == "right" ? &font.right[place] : nullptr;
}

// One line that says what does not follow from the picture.
bool takeLine(FntFont& font, const std::string& line) {
  std::istringstream in(line);
  std::string word, first, second;
  int value = 0;
  in >> word >> first;
  const auto place = placeOf(font, first);
  if (!place) return false;
  std::int8_t* target = columnOf(font, word, *place);
  if (word == "kerning") {
    in >> second;
    const auto after = placeOf(font, second);
    if (after) target = &font.kerning[*place * font.letters.size() + *after];
  }
  if (target == nullptr || !(in >> value) || value < -128 || value > 127 || !(in >> std::ws).eof())
    return false;
  *target = static_cast<std::int8_t>(value);
  return true;
}

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  std::istringstream in{std::string(text)};
  for (std::string line; std::getline(in, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty()) lines.push_back(std::move(line));
  }
  return lines;
}

bool isKeyword(const std::string& line) {
  return std::ranges::any_of(std::to_array<std::string_view>({kLettersWord, "kerning ", "left ", "right "}),
                             [&](std::string_view word) { return line.starts_with(word); });
}

}  // namespace

std::string drawableLetters() {
  std::string letters;
  for (int code = '!'; code < 256; ++code) {
    // "@" and "$" stand for the letters of the codes' brackets, "|" ends a line, "~" is a pixel of space.
    const bool isKept = std::string_view("@$|~\x7F").find(static_cast<char>(code)) != std::string_view::npos;
    constexpr int kHardBlank = 0xA0;
    const std::string utf8 = utf8Of(static_cast<std::uint8_t>(code));
    const bool isControl =
        utf8.size() == 2 && utf8[0] == '\xC2' && static_cast<unsigned char>(utf8[1]) < 0xA0;
    if (!isKept && !isControl && code != kHardBlank) letters += static_cast<char>(code);
  }
  return letters;
}

std::optional<std::string> lettersFrom(std::string_view utf8, std::string* why) {
  std::string plain(utf8);
  std::erase_if(plain, [](char c) { return c == '\r' || c == '\n'; });
  std::optional<std::string> letters = code_page::fromUtf8(plain);
  *why = "a letter is not of code page 1250, or the text is not UTF-8";
  if (!letters) return std::nullopt;
  *why = "there are no letters in it";
  if (letters->empty()) return std::nullopt;
  std::string sorted = *letters;
  std::ranges::sort(sorted);
  const auto twice = std::ranges::adjacent_find(sorted);
  if (twice == sorted.end()) return letters;
  *why = "the letter " + code_page::toUtf8(std::string_view(&*twice, 1)) + " stands there twice";
  return std::nullopt;
}

std::optional<FntFont> fromStrip(const platform::PngPicture& strip, std::string_view text, std::string* why) {
  const std::vector<std::string> lines = linesOf(text);
  const bool isPlain = std::ranges::none_of(lines, isKeyword);
  std::string utf8;
  for (const std::string& line : lines) {
    if (isPlain || line.starts_with(kLettersWord)) utf8 += isPlain ? line : line.substr(kLettersWord.size());
  }
  const auto letters = lettersFrom(utf8, why);
  if (!letters) return std::nullopt;
  *why = "the picture is " + std::to_string(strip.width) +
         " pixels wide, which is no cell of equal width for each of " + std::to_string(letters->size()) +
         " letters";
  if (strip.width % static_cast<int>(letters->size()) != 0) return std::nullopt;
  std::optional<FntFont> font = fromCells(strip, *letters, isOpaque(strip));
  *why = "the picture is too large for a font, or has too many letters";
  if (!font) return std::nullopt;
  for (const std::string& line : lines) {
    if (isPlain || line.starts_with(kLettersWord) || takeLine(*font, line)) continue;
    *why = "this line says nothing of a letter: " + line;
    return std::nullopt;
  }
  return font;
}

platform::PngPicture toStrip(const FntFont& font) {
  platform::PngPicture strip{font.size.width, font.size.height, {}};
  strip.pixels.reserve(font.alpha.size());
  for (std::size_t i = 0; i < font.alpha.size(); ++i) {
    const auto low = std::to_integer<std::uint32_t>(font.colour[2 * i]);
    const auto high = std::to_integer<std::uint32_t>(font.colour[2 * i + 1]);
    strip.pixels.push_back(std::to_integer<std::uint32_t>(font.alpha[i]) << 24 |
                           unpacked(high << 8 | low, font.bpp));
  }
  return strip;
}

std::string toText(const FntFont& font) {
  const std::string_view letters(reinterpret_cast<const char*>(font.letters.data()), font.letters.size());
  FntFont measured = font;
  if (!letters.empty()) measured = fromCells(toStrip(font), letters, false).value_or(font);
  std::string text(kLettersWord);
  for (const std::uint8_t letter : font.letters) text += utf8Of(letter);
  text += '\n';
  const auto column = [&](const char* word, const auto& own, const auto& plain) {
    for (std::size_t i = 0; i < font.letters.size(); ++i) {
      if (own[i] != plain[i]) text += word + utf8Of(font.letters[i]) + " " + std::to_string(own[i]) + "\n";
    }
  };
  column("left ", font.left, measured.left);
  column("right ", font.right, measured.right);
  for (std::size_t i = 0; i < font.kerning.size(); ++i) {
    if (font.kerning[i] == measured.kerning[i]) continue;
    text += "kerning " + utf8Of(font.letters[i / font.letters.size()]) + " " +
            utf8Of(font.letters[i % font.letters.size()]) + " " + std::to_string(font.kerning[i]) + "\n";
  }
  return text;
}

}  // namespace footlight::font
