#include "font/outline.h"

#include <algorithm>
#include <ft2build.h>
#include <memory>
#include FT_FREETYPE_H

#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "text/font_maker.h"

namespace footlight::font {

namespace {

struct LibraryEnd {
  void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
struct FaceEnd {
  void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using Library = std::unique_ptr<std::remove_pointer_t<FT_Library>, LibraryEnd>;
using Face = std::unique_ptr<std::remove_pointer_t<FT_Face>, FaceEnd>;

struct Glyph {
  std::uint8_t letter;
  int width, height;
  int top;  // of its first row, above the baseline
  std::vector<std::uint8_t> alpha;
};

std::uint32_t codePointOf(char letter) {
  const std::string utf8 = code_page::toUtf8(std::string_view(&letter, 1));
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  if (utf8.size() == 1) return byte(0);
  if (utf8.size() == 2) return (byte(0) & 0x1FU) << 6 | (byte(1) & 0x3FU);
  return (byte(0) & 0x0FU) << 12 | (byte(1) & 0x3FU) << 6 | (byte(2) & 0x3FU);
}

// Bitmap fonts have the sizes that they have: the nearest one.
bool setSize(FT_Face face, int size) {
  if (FT_IS_SCALABLE(face)) return FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size)) == 0;
  int best = 0;
  for (int i = 1; i < face->num_fixed_sizes; ++i) {
    if (std::abs(face->available_sizes[i].height - size) <
        std::abs(face->available_sizes[best].height - size))
      best = i;
  }
  return face->num_fixed_sizes > 0 && FT_Select_Size(face, best) == 0;
}

std::uint8_t alphaAt(const FT_Bitmap& bitmap, int x, int y) {
  const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
  if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO) return (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 255 : 0;
  return bitmap.pixel_mode == FT_PIXEL_MODE_GRAY ? row[x] : 0;
}

std::optional<Glyph> draw(FT_Face face, char letter) {
  const FT_UInt index = FT_Get_Char_Index(face, codePointOf(letter));
  if (index == 0 || FT_Load_Glyph(face, index, FT_LOAD_RENDER) != 0) return std::nullopt;
  const FT_Bitmap& bitmap = face->glyph->bitmap;
  Glyph glyph{static_cast<std::uint8_t>(letter),
              static_cast<int>(bitmap.width),
              static_cast<int>(bitmap.rows),
              face->glyph->bitmap_top,
              {}};
  for (int y = 0; y < glyph.height; ++y) {
    for (int x = 0; x < glyph.width; ++x) glyph.alpha.push_back(alphaAt(bitmap, x, y));
  }
  return glyph;
}

struct Box {
  int width = 1;
  int ascent;
  int descent;
};

Box boxOf(const std::vector<Glyph>& glyphs, int ascent, int descent) {
  Box box{.ascent = ascent, .descent = descent};
  for (const Glyph& glyph : glyphs) {
    box.width = std::max(box.width, glyph.width);
    box.ascent = std::max(box.ascent, glyph.top);
    box.descent = std::max(box.descent, glyph.height - glyph.top);
  }
  return box;
}

// One pixel stays empty around each letter.
FontLetter letterOf(const Glyph& glyph, const Box& box) {
  FontLetter letter{glyph.letter, {box.width + 2, box.ascent + box.descent + 2}, {}, {}};
  const auto pixels = static_cast<std::size_t>(letter.size.width * letter.size.height);
  letter.pixels.assign(pixels, 0xFFFF);
  letter.alpha.assign(pixels, 0);
  for (int y = 0; y < glyph.height; ++y) {
    const auto* row = glyph.alpha.data() + static_cast<std::ptrdiff_t>(y) * glyph.width;
    const int to = (1 + box.ascent - glyph.top + y) * letter.size.width + 1;
    std::copy_n(row, glyph.width, letter.alpha.begin() + to);
  }
  return letter;
}

Outline drawAll(FT_Face face, std::string_view letters, std::vector<Glyph>* glyphs) {
  Outline outline;
  for (const char letter : letters) {
    if (auto glyph = draw(face, letter)) {
      glyphs->push_back(std::move(*glyph));
    } else {
      outline.missing += letter;
    }
  }
  return outline;
}

}  // namespace

std::optional<Outline> drawLetters(std::span<const std::byte> file, int face, int size,
                                   std::string_view letters, Kerning kerning, std::string* why) {
  FT_Library rawLibrary = nullptr;
  FT_Face rawFace = nullptr;
  *why = "FreeType cannot be started";
  if (FT_Init_FreeType(&rawLibrary) != 0) return std::nullopt;
  const Library library(rawLibrary);
  *why = "is no font that FreeType can read";
  if (FT_New_Memory_Face(rawLibrary, reinterpret_cast<const FT_Byte*>(file.data()), std::ssize(file), face,
                         &rawFace) != 0)
    return std::nullopt;
  const Face owner(rawFace);
  *why = "has no letters of that size";
  if (!setSize(rawFace, size)) return std::nullopt;

  std::vector<Glyph> glyphs;
  Outline outline = drawAll(rawFace, letters, &glyphs);
  *why = "has none of the letters";
  if (glyphs.empty()) return std::nullopt;
  constexpr int kUnits = 64;  // FreeType's, of a pixel
  const auto& metrics = rawFace->size->metrics;
  const Box box = boxOf(glyphs, static_cast<int>(metrics.ascender / kUnits),
                        static_cast<int>(-metrics.descender / kUnits));
  std::vector<FontLetter> cells;
  for (const Glyph& glyph : glyphs) cells.push_back(letterOf(glyph, box));
  auto font = makeFont(std::move(cells));
  *why = "the letters of that size do not fit into one strip of " + std::to_string(limits::kPictureSide) +
         " pixels: take fewer of them, or a smaller size";
  if (!font) return std::nullopt;
  outline.font = std::move(*font);
  if (kerning == Kerning::none) std::ranges::fill(outline.font.kerning, std::int8_t{0});
  return outline;
}

}  // namespace footlight::font
