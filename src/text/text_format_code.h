#pragma once

// CTextFormatCode is one piece of a marked-up text: letters, or what a code between angle brackets
// asks for. The pieces of a text come from `parseText`.

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

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
  // A colour code without a colour: what was opened ends.
  bool endsColor() const { return type_ == _formatCode::color && text_.IsEmpty(); }

 private:
  _formatCode type_;
  int color_ = 0;
  CXString text_;
  CSimpleFont6* font_ = nullptr;  // of the text's collection; good while that is
  int width_ = 0;
  CXString name_;
};

// A pixel of 15 or, for any other number of bits, 16 bits.
constexpr int packColor(int bitsPerPixel, int red, int green, int blue) {
  const auto r = static_cast<unsigned>(red) >> 3 & 31U;
  const auto b = static_cast<unsigned>(blue) >> 3 & 31U;
  const auto g = static_cast<unsigned>(green);
  return static_cast<int>(bitsPerPixel == 15 ? r << 10 | (g >> 3 & 31U) << 5 | b
                                             : r << 11 | (g >> 2 & 63U) << 5 | b);
}

}  // namespace footlight
