#include "text/font_maker.h"

#include <algorithm>
#include <limits>

#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr int kSetAbove = 20;  // from this alpha on a pixel is in the way of others

std::size_t pixelsOf(CXSize size) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

std::size_t indexOf(CXSize size, int x, int y) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) + static_cast<std::size_t>(x);
}

std::uint8_t alphaAt(const FontLetter& letter, int x, int y) {
  const bool isInside = x >= 0 && y >= 0 && x < letter.size.width && y < letter.size.height;
  return isInside ? letter.alpha[indexOf(letter.size, x, y)] : std::uint8_t{0};
}

bool isSet(const FontLetter& letter, int x, int y) { return alphaAt(letter, x, y) > kSetAbove; }

bool isEmptyColumn(const FontLetter& letter, int x) {
  for (int y = 0; y < letter.size.height; ++y) {
    if (alphaAt(letter, x, y) != 0) return false;
  }
  return true;
}

std::int8_t toByte(int number) {
  using Range = std::numeric_limits<std::int8_t>;
  return static_cast<std::int8_t>(std::clamp<int>(number, Range::min(), Range::max()));
}

void emptyRim(FontLetter& letter) {
  const auto empty = [&](int x, int y) {
    const std::size_t at = indexOf(letter.size, x, y);
    letter.pixels[at] = 0;
    letter.alpha[at] = 0;
  };
  for (int x = 0; x < letter.size.width; ++x) {
    empty(x, 0);
    empty(x, letter.size.height - 1);
  }
  for (int y = 0; y < letter.size.height; ++y) {
    empty(0, y);
    empty(letter.size.width - 1, y);
  }
}

// Puts the letter into its cell of the strip.
void putInto(FntFont& font, const FontLetter& letter, int cellLeft) {
  for (int y = 0; y < letter.size.height; ++y) {
    for (int x = 0; x < letter.size.width; ++x) {
      const std::size_t from = indexOf(letter.size, x, y);
      const std::size_t to = indexOf(font.size, cellLeft + x, y);
      font.colour[to * 2] = static_cast<std::byte>(letter.pixels[from] & 0xFF);
      font.colour[to * 2 + 1] = static_cast<std::byte>(letter.pixels[from] >> 8);
      font.alpha[to] = static_cast<std::byte>(letter.alpha[from]);
    }
  }
}

bool isWhole(const FontLetter& letter) {
  if (!limits::isPictureSize(letter.size.width, letter.size.height)) return false;
  const std::size_t pixels = pixelsOf(letter.size);
  return letter.pixels.size() == pixels && letter.alpha.size() == pixels;
}

}  // namespace

int leftOffset(const FontLetter& letter) {
  int x = 0;
  while (x < letter.size.width && isEmptyColumn(letter, x)) ++x;
  return x;
}

int rightOffset(const FontLetter& letter) {
  int x = 0;
  while (x < letter.size.width && isEmptyColumn(letter, letter.size.width - 1 - x)) ++x;
  return x;
}

int slideUnder(const FontLetter& a, const FontLetter& b) {
  const int columnOfB = leftOffset(b);
  const int rows = std::max(a.size.height, b.size.height);
  int steps = 0;
  for (int x = a.size.width - rightOffset(a) - 1; x >= leftOffset(a); --x, ++steps) {
    bool areCornered = false;
    for (int y = 0; y < rows; ++y) {
      const bool hasA = isSet(a, x, y);
      const bool hasB = isSet(b, columnOfB, y);
      if (hasA && hasB) return steps;
      areCornered |= (hasA && isSet(b, columnOfB, y + 1)) || (hasB && isSet(a, x, y + 1));
    }
    if (areCornered) return steps + 1;
  }
  return steps;
}

std::optional<FntFont> makeFont(std::vector<FontLetter> letters) {
  if (letters.empty() || letters.size() > FntFont::kMostLetters) return std::nullopt;
  if (!std::ranges::all_of(letters, isWhole)) return std::nullopt;
  CXSize cell;
  for (FontLetter& letter : letters) {
    cell = {std::max(cell.width, letter.size.width), std::max(cell.height, letter.size.height)};
    emptyRim(letter);
  }
  FntFont font;
  font.size = {cell.width * static_cast<int>(letters.size()), cell.height};
  if (!limits::isPictureSize(font.size.width, font.size.height)) return std::nullopt;
  const std::size_t pixels = pixelsOf(font.size);
  font.colour.resize(pixels * 2);
  font.alpha.resize(pixels);
  for (const FontLetter& letter : letters) {
    putInto(font, letter, cell.width * static_cast<int>(font.letters.size()));
    font.letters.push_back(letter.letter);
    font.left.push_back(toByte(leftOffset(letter)));
    font.right.push_back(toByte(rightOffset(letter) + cell.width - letter.size.width));
    for (const FontLetter& next : letters) font.kerning.push_back(toByte(1 - slideUnder(letter, next)));
  }
  return font;
}

}  // namespace footlight
