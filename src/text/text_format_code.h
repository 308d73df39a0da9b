#pragma once

// CTextFormatCode is one piece of a marked-up text: letters, or what a code between angle brackets
// asks for. `parseText` cuts a text into them.

#include <functional>
#include <string_view>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CFontCollection;
class CSimpleFont6;

enum class _formatCode { font = 1, text = 2, tab = 3, lineEnd = 4, editBox = 5, color = 6 };

class CTextFormatCode final : public CXObject {
 public:
  // Letters.
  explicit CTextFormatCode(CXString text) : type_(_formatCode::text), text_(std::move(text)) {}
  // A change of the font; the text is the code with its brackets.
  CTextFormatCode(CSimpleFont6* font, CXString text)
      : type_(_formatCode::font), text_(std::move(text)), font_(font) {}
  // What the code's text says: of a box "E,width,name,text", of a colour a pixel or "r,g,b", packed for that
  // many bits a pixel.
  CTextFormatCode(_formatCode type, int bitsPerPixel, const CXString& code);

  _formatCode type() const { return type_; }
  const CXString& getText() const { return text_; }
  const CXString& getName() const { return name_; }
  int getWidth() const { return width_; }
  int getColor() const { return color_; }
  CSimpleFont6* getFont() const { return font_; }
  // Of a colour code: it names none, so the text's own comes back.
  bool endsColor() const { return text_.IsEmpty(); }

 private:
  static constexpr int kPixelBits = 0xFFFF;

  _formatCode type_;
  int color_ = 0;
  CXString text_;
  CSimpleFont6* font_ = nullptr;  // of the text's collection; good while that is
  int width_ = 0;
  CXString name_;
};

// Gives the pieces of a text in their order: `take` gets each of them. The fonts of the toggles are those of
// the family; one that it lacks gives no piece, and the font stays.
void parseText(std::string_view text, const CFontCollection& fonts, int bitsPerPixel,
               const std::function<void(const CTextFormatCode&)>& take);

// The codes that change the style of the letters, and back.
struct StyleToggle {
  std::string_view code;
  const char* style;
};
inline constexpr StyleToggle kStyleToggles[] = {
    {"I", "ITALIC"}, {"B", "BOLD"}, {"LS", "LSTRIKE"}, {"US", "USTRIKE"}, {"U", "UNDERLINE"},
};
// Null for a code that is none of them.
constexpr const StyleToggle* findStyleToggle(std::string_view code) {
  for (const StyleToggle& toggle : kStyleToggles) {
    if (toggle.code == code) return &toggle;
  }
  return nullptr;
}
// What the other codes begin with: a box to type in, and a colour.
inline constexpr std::string_view kBoxCode = "E,";
inline constexpr std::string_view kColorCode = "COLOR";

// A pixel of 15 or, for any other number of bits, 16 bits.
constexpr int packColor(int bitsPerPixel, int red, int green, int blue) {
  const auto r = static_cast<unsigned>(red) >> 3 & 31U;
  const auto b = static_cast<unsigned>(blue) >> 3 & 31U;
  const auto g = static_cast<unsigned>(green);
  return static_cast<int>(bitsPerPixel == 15 ? r << 10 | (g >> 3 & 31U) << 5 | b
                                             : r << 11 | (g >> 2 & 63U) << 5 | b);
}

}  // namespace footlight
