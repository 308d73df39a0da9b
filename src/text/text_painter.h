#pragma once

// TextPainter draws letters onto a picture, for one drawing of a text. Letters of one colour that stand
// beside each other are gathered in a strip and go to the picture at once, through the blitters' wide loops;
// what comes out is what each letter by itself would draw. The last of them are drawn when the painter ends.

#include <cstdint>
#include <vector>

#include "gfx/canvas.h"
#include "text/simple_font.h"

namespace footlight {

class TextPainter {
 public:
  static constexpr int kFontsColors = -1;  // the colours that the letters have in the font

  // Draws only within a rectangle of the picture.
  TextPainter(CGraphicsObject& picture, const CXRect& clip, std::uint8_t opacity);
  ~TextPainter() { flush(); }
  TextPainter(const TextPainter&) = delete;
  TextPainter& operator=(const TextPainter&) = delete;

  const CXRect& clip() const { return clip_; }
  // Places are pixels of the picture. Gives how far the next letter stands.
  int draw(CSimpleFont6& font, int color, std::int64_t x, std::int64_t y, char previous, char letter);

 private:
  static constexpr int kColumns = 512;
  static constexpr int kMostRows = 128;  // taller letters make a strip each

  // A letter that is to be seen: columns of its font's strip, and where the first of them goes.
  struct Glyph {
    CSimpleFont6* font;
    int index;
    CXRect columns;
    int x;
    int y;
  };

  bool isSeen(const Glyph& glyph, std::int64_t x, std::int64_t y) const;
  void drawAlone(const Glyph& glyph);
  bool fitsGathered(const Glyph& glyph, int color) const;
  void begin(const Glyph& glyph, int color);
  void gather(const Glyph& glyph);
  void fillColor();
  void flush();

  _canvas to_;
  CXRect clip_;
  std::uint8_t opacity_;
  // The strip: a row has stride_ pixels. Its alpha is 0 wherever no letter was put.
  std::vector<std::uint16_t> pixels_;
  std::vector<std::uint8_t> alpha_;
  int filledWith_ = kFontsColors;  // the colour that lies in the first columns
  int filledColumns_ = 0;
  int color_ = kFontsColors;
  int rows_ = 0;
  int stride_ = 0;
  int x_ = 0;  // of the strip on the picture
  int y_ = 0;
  int columns_ = 0;  // in use; 0 while nothing is gathered
  int top_ = 0;      // the rows in use
  int bottom_ = 0;
};

}  // namespace footlight
