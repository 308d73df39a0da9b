// Letters drawn by the painter beside the same letters drawn one by one, pixel by pixel.

#include "text/text_painter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "support/plain_blit.h"
#include "text/fnt_format.h"

namespace footlight {
namespace {

using test::Case;
using test::Kind;
using test::Picture;

constexpr CXSize kTarget(90, 40);

class Chance {
 public:
  explicit Chance(std::uint32_t seed) : random_(seed) {}
  int from(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
  bool oneIn(int n) { return from(1, n) == 1; }

 private:
  std::mt19937 random_;
};

// Letters with pixels outside of the columns that count, and tables that move them over each other.
FntFont randomFont(Chance& chance, int bpp) {
  FntFont font;
  const std::string letters = "abcdefl<|";
  font.letters.assign(letters.begin(), letters.end());
  const auto n = static_cast<int>(letters.size());
  font.bpp = bpp;
  font.size = {n * chance.from(1, 14) + chance.from(0, n - 1), chance.oneIn(5) ? 140 : chance.from(1, 20)};
  for (int i = 0; i < n * n; ++i) font.kerning.push_back(static_cast<std::int8_t>(chance.from(-3, 9)));
  for (int i = 0; i < n; ++i) {
    font.left.push_back(static_cast<std::int8_t>(chance.from(0, 4)));
    font.right.push_back(static_cast<std::int8_t>(chance.from(0, 4)));
  }
  for (int i = 0; i < font.size.width * font.size.height; ++i) {
    const int color = chance.from(0, bpp == 15 ? 0x7FFF : 0xFFFF);
    font.colour.push_back(static_cast<std::byte>(color & 0xFF));
    font.colour.push_back(static_cast<std::byte>(color >> 8));
    font.alpha.push_back(static_cast<std::byte>(chance.oneIn(2)   ? 0
                                                : chance.oneIn(3) ? 255
                                                                  : chance.from(1, 254)));
  }
  return font;
}

// The font's cells as pictures, and its rules.
struct PlainFont {
  explicit PlainFont(const FntFont& font) : source(font) {}

  int find(char letter) const {
    const char glyph = letter == '@' ? '<' : letter;
    const auto found = std::ranges::find(source.letters, static_cast<std::uint8_t>(glyph));
    return found != source.letters.end() ? static_cast<int>(found - source.letters.begin()) : -1;
  }
  int cell() const { return source.size.width / static_cast<int>(source.letters.size()); }
  int width(int index) const {
    const auto i = static_cast<std::size_t>(index);
    return std::max(0, cell() - source.left[i] - source.right[i]);
  }
  int kerning(char previous, int index) const {
    const int before = previous == ' ' || previous == 0 ? -1 : find(previous);
    return before < 0 ? 0
                      : source.kerning[static_cast<std::size_t>(before) * source.letters.size() +
                                       static_cast<std::size_t>(index)];
  }
  Picture glyph(int index, int color) const {
    const int left = source.left[static_cast<std::size_t>(index)];
    Picture picture(std::max(1, width(index)), source.size.height, source.bpp, true);
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < width(index); ++x) {
        const auto at = static_cast<std::size_t>(y * source.size.width + index * cell() + left + x);
        const int own = std::to_integer<int>(source.colour[at * 2]) |
                        std::to_integer<int>(source.colour[at * 2 + 1]) << 8;
        picture.setPixel(x, y, static_cast<std::uint32_t>(color < 0 ? own : color));
        picture.alphaAt(x, y) = source.alpha[at];
      }
    }
    return picture;
  }

  const FntFont& source;
};

// Gives the advance.
int drawLetter(const PlainFont& font, Picture* target, const Case& kind, CXPoint at, char previous,
               char letter, int color, const CXRect& clip, int opacity) {
  if (letter == ' ') return font.width(font.find('l')) + 2;
  if (letter == '~') return 3;
  const int index = font.find(letter);
  if (index < 0) return 2;
  const int kerning = font.kerning(previous, index);
  Picture glyph = font.glyph(index, color);
  const CXPoint corner = at - CXPoint(kerning, 0);
  const CXRect seen = CXRect(0, 0, font.width(index), glyph.height).Common(clip - corner);
  if (!seen.IsEmpty()) test::drawPlain(kind, glyph, target, corner, seen, opacity);
  return font.width(index) - kerning + 2;
}

struct Format {
  int bpp;
  bool hasAlpha;
};

class TextPainterTest : public testing::TestWithParam<Format> {};

TEST_P(TextPainterTest, DrawsWhatEachLetterByItselfDraws) {
  const auto [bpp, hasAlpha] = GetParam();
  for (std::uint32_t seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    Chance chance(seed);
    const FntFont source = randomFont(chance, bpp == 15 ? 15 : 16);
    CSimpleFont6 font(nullptr);
    font.take(source);
    const PlainFont plain(source);

    Picture expected(kTarget.width, kTarget.height, bpp, hasAlpha);
    for (std::byte& byte : expected.data) byte = static_cast<std::byte>(chance.from(0, 255));
    for (std::byte& byte : expected.alpha)
      byte = static_cast<std::byte>(chance.oneIn(2) ? 0 : chance.from(1, 255));
    CGraphicsObject target(nullptr, kTarget, PixelBlock(expected.data, bpp));
    if (hasAlpha) target.AlphaChannel(PixelBlock(expected.alpha, 8));

    const CXRect all(0, 0, kTarget.width, kTarget.height);
    const int left = chance.from(0, 50);
    const CXRect clip =
        chance.oneIn(2) ? all
                        : CXRect(left, chance.from(0, 15), left + chance.from(1, 40), chance.from(16, 40));
    const int opacity = chance.oneIn(2) ? 255 : chance.from(0, 254);
    const Case kind = {opacity != 255 ? Kind::blend
                       : hasAlpha     ? Kind::toCanvas
                                      : Kind::alpha,
                       source.bpp, bpp, true, true};
    {
      TextPainter painter(target, clip, static_cast<std::uint8_t>(opacity));
      int color = 0;
      char previous = 0;
      CXPoint pen(chance.from(-10, 20), chance.from(-5, 25));
      CXPoint plainPen = pen;
      for (int i = 0; i < 24; ++i) {
        if (chance.oneIn(5)) color = chance.oneIn(4) ? TextPainter::kFontsColors : chance.from(0, 0x7FFF);
        const char letter = std::string_view("abcdefl@~ ?|")[static_cast<std::size_t>(chance.from(0, 11))];
        pen.x += painter.draw(font, color, pen.x, pen.y, previous, letter);
        plainPen.x += drawLetter(plain, &expected, kind, plainPen, previous, letter, color, clip, opacity);
        ASSERT_EQ(pen, plainPen);
        previous = letter;
      }
    }
    ASSERT_TRUE(std::ranges::equal(target.GetDataPtr(), expected.data));
    ASSERT_TRUE(std::ranges::equal(target.AlphaChannel().bytes(), expected.alpha));
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, TextPainterTest,
                         testing::Values(Format{15, false}, Format{16, false}, Format{16, true},
                                         Format{32, false}),
                         [](const auto& format) {
                           return std::to_string(format.param.bpp) +
                                  (format.param.hasAlpha ? "WithAlpha" : "");
                         });

}  // namespace
}  // namespace footlight
