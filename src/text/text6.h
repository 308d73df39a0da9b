#pragma once

// CText6 is a graphic object that shows one line of text. Its markup counts only with a family of fonts
// (CFontCollection):
//
//   <B> <I> <U> <LS> <US>          change to the style, and back
//   <COLOR r,g,b> <COLOR n>        the colour from here on, as channels or as a pixel; <COLOR> ends it
//   <E,width,name,text>            a box to type in
//   | or a carriage return         a line end, for CMultilineText6
//
// Any other code in brackets is left out, a "<" that no ">" closes stays. Letters do not move towards others
// across a code. A text is laid out when it is set, and drawn each time the screen asks for it.
//
// Words end at blanks and at codes. With `hypertext` the text knows where each of them stands, so that the
// one under a point can be found and coloured.
//
// A text has the colour that it was given; else the one that its font gives to texts; else that in which the
// font is. The font is held weakly: a text whose font has ended draws nothing.

#include <memory>
#include <vector>

#include "gfx/graphics_object.h"
#include "text/edit_box_maker.h"
#include "text/simple_font.h"
#include "text/text_layout.h"

namespace footlight {

class TextPainter;

enum class _justify { left = 0, right = 1, center = 2, top = 3, bottom = 4 };

class CText6 : public CGraphicsObject {
 public:
  // `unit` makes the boxes of the text; null makes none.
  CText6(CWindow* window, bool hypertext, CEditBoxMaker* unit);
  ~CText6() override;

  // Forgets the words until another text comes.
  virtual void flush_ht_info() { layout_.words.clear(); }
  // The text is laid out anew. Null: no font.
  virtual void setFont(CSimpleFont6* font);
  // A text over the limit changes nothing.
  virtual void setText(const CXString& text);
  // Where the text stands in a rectangle of the screen; `h` is left, right or center, `v` top, bottom
  // or center. Another one counts as left, or top.
  virtual void setJustify(CXRect rect, _justify h, _justify v);
  virtual const CXString& getText() const { return rawText_; }
  // The text without colours of its own, in that colour.
  virtual CXString getColoruredText(const CXString& text, int color) const;
  // A pixel in the display's format, for what no code colours. The font takes it too, for texts to come.
  virtual void setColor(int color);
  virtual int getColor() const { return defColor_; }
  // Words are counted from 0; -1 for none, "" and 0 for what there is not. Points are of the screen.
  virtual int getWordAtXY(CXPoint point) const;
  virtual CXString getWordAt(int word) const;
  virtual CXPoint getWordPosition(int word) const;
  virtual int getWordWidth(int word) const;
  // The first word from that one on that is the text.
  virtual int search(const CXString& text, int from) const;
  // ht_Word::kFontsOwn gives it back to the text's colour.
  virtual void setWordColor(int word, int color);

  // In pixels, as a family of fonts draws it; a plain font draws letters two pixels further apart.
  int getLength() const { return layout_.width; }
  static int getLength(const CSimpleFont6* font, std::string_view text);
  _justify getHJustify() const { return hJustify_; }
  _justify getVJustify() const { return vJustify_; }
  CSimpleFont6* getFont() const { return font_.get(); }
  const std::vector<std::unique_ptr<CTextBox>>& getEditBoxes() const { return editBoxes_; }
  // The words of a line, and where it stands below the text's upper edge; none for a line that
  // there is not.
  ht_Line get_ht_lines_info(int line) const;
  int count_words() const { return static_cast<int>(layout_.words.size()); }
  int getNumWords() const { return count_words(); }
  // Each tab becomes eight blanks.
  static CXString convTab(const CXString& text) { return text.replace("\t", "        "); }

  // Redraw where the text was and where it is; its boxes go with it.
  void SetPosition(int px, int py) override;
  using CGraphicsObject::SetPosition;
  void Move(int dx, int dy) override;
  using CGraphicsObject::Move;
  void redraw(CGraphicsObject* destination) override;

 protected:
  virtual TextLayout layOut(const CSimpleFont6& font) const;
  void relayOut();
  // All that is drawn of another text, and where.
  void takeLook(const CText6& other);
  // The line in which a word stands; there must be the word.
  std::size_t lineOfWord(std::size_t word) const;
  // The word at a place of a line, from its left end; -1 for none.
  int wordInLine(std::size_t line, int x) const;
  const ht_Word* wordAt(int word) const;
  int bitsPerPixel() const;

  WeakRef<CSimpleFont6> font_;
  CXString rawText_;
  CXRect rect_;
  _justify vJustify_ = _justify::top;
  _justify hJustify_ = _justify::left;
  bool hypertext_;
  bool hasColor_ = false;                // it was given one
  int firstColor_ = -1;                  // else before any code; -1: the font's own
  int defColor_ = CSimpleFont6::kWhite;  // and behind the code that ends a colour
  TextLayout layout_;

 private:
  int colorOf(const CSimpleFont6& font, int color) const;
  int alignedX(int width) const;
  int alignedY() const;
  void drawLine(TextPainter& painter, CSimpleFont6& font, std::size_t line) const;
  void drawRun(TextPainter& painter, CSimpleFont6& font, const TextLayout::Run& run, CXPoint place,
               std::span<const ht_Word> words) const;
  void makeBoxes();
  CXRect boxRect(const TextLayout::Box& box) const;
  void placeBoxes();

  CEditBoxMaker* unit_;
  WeakRef<CXObject> unitObject_;
  std::vector<std::unique_ptr<CTextBox>> editBoxes_;  // one for each of the layout's, or null
};

}  // namespace footlight
