#pragma once

// CSimpleFont6 is a font: one strip of letters in cells of one width, with an alpha plane for their shapes
// and a table that says how far each letter moves towards the one before it.
//
// A letter is a byte of the code page. "@" draws the "<" and "$" the ">" of the font, since texts keep these
// two for their codes. A blank is as wide as an "l", "~" one pixel; neither draws anything. What the font
// does not have is 0 wide. Two pixels stand between letters; they belong to what `drawLetter` gives, not to
// the widths.
//
// Whoever made a font owns it. Texts hold it weakly: a text whose font has ended draws nothing.

#include <array>
#include <cstdint>
#include <vector>

#include "gfx/graphics_object.h"

namespace footlight {

class CFrame;
struct FntFont;

class CSimpleFont6 : public CGraphicsObject {
 public:
  static constexpr int kLetterGap = 2;
  static constexpr int kWhite = 65535;

  // Without letters.
  explicit CSimpleFont6(CWindow* window);
  // Loads at once; the result is the error code.
  CSimpleFont6(CWindow* window, const CXString& fileName);
  CSimpleFont6(CWindow* window, const CXString& fileName, CXString family, CXString style, int size);

  // Both give the error code, which is 2000 for a file that cannot be opened or is no font; the font
  // is empty then.
  int Load(const CXString& name) override;
  int Load(CFile* file) override;

  // Makes a font file of an animation with a frame for each letter; the names of the positions of its first
  // event say which. Gives the error code; this font stays as it is.
  int create(const CXString& animationFile, const CXString& fontFile);

  // Takes a font that was made in memory.
  void take(FntFont font);
  // Lets letters and strip go.
  virtual void flush();
  // Draws onto the destiny, the letter's first column at x and its upper edge at y, and gives how far the
  // next letter stands. A `previous` of 0 moves nothing.
  virtual int drawLetter(int x, int y, char previous, char letter);
  virtual int getLetterWidth(char previous, char letter) const;
  // Without regard to the letter before.
  virtual int getRealLetterWidth(char letter) const;
  // Draws only what lies in a rectangle in coordinates of this letter; an empty one draws all of every
  // letter.
  virtual void SetClippingRect(char letter, CXRect rect);
  using CGraphicsObject::SetClippingRect;
  // Gives all letters the one colour, a pixel in the display's format.
  virtual void setColor(int colour);
  // Is it a family of fonts (CFontCollection)?
  virtual bool isMultifont() const { return false; }

  void setFamily(CXString family) { family_ = std::move(family); }
  void setStyle(CXString style) { style_ = std::move(style); }
  void setSize(int size) { size_ = size; }
  using CGraphicsObject::setSize;
  const CXString& getFamily() const { return family_; }
  const CXString& getStyle() const { return style_; }
  int getSize() const { return size_; }
  // The colour for texts that have none of their own; white, and none, until somebody sets one.
  virtual void setDefColor(int colour);
  int getDefColor() const { return defColor_; }
  bool hasDefColor() const { return hasDefColor_; }
  // The one of the last `setColor`, 0 at first.
  int getColor() const { return color_; }
  int letterCount() const { return letterCount_; }
  // How far the second letter moves towards the first, by their numbers in the strip; 0 for others.
  int getKerning(int first, int second) const;

  std::span<std::byte> GetDataPtr() override;

 private:
  friend class TextPainter;

  static constexpr int kNoLetter = -1;

  // What drawing a letter takes.
  struct Place {
    int index;  // its cell, or kNoLetter for what draws nothing
    int kerning;
    int advance;
  };

  int indexOf(char letter) const;
  int kerningOf(char previous, int index) const;
  Place placeOf(char previous, char letter) const;
  // The first column of a letter, as its cell says.
  int glyphX(int index) const { return index * cell_ + left_[static_cast<std::size_t>(index)]; }
  // What is drawn of it: the columns that lie in its cell, the rows that are not all clear.
  CXRect glyphColumns(int index) const;
  void findRows(int index);
  void colorCell(int index);
  void convertFor(int bpp);

  struct Rows {
    std::int16_t top;
    std::int16_t bottom;
  };

  std::array<std::int16_t, 256> index_;  // the cell of each letter, or kNoLetter
  // By cell
  std::vector<std::int8_t> left_;
  std::vector<std::int16_t> widths_;
  std::vector<Rows> rows_;
  std::vector<int> cellColors_;  // what they are filled with
  std::vector<std::int8_t> kerning_;
  int letterCount_ = 0;
  int cell_ = 0;
  CXString family_;
  CXString style_;
  int size_ = 0;
  int defColor_ = kWhite;
  bool hasDefColor_ = false;
  int color_ = 0;
  bool isColored_ = false;
};

}  // namespace footlight
