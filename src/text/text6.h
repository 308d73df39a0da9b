#pragma once

// CText6 is a graphic object that shows one line of text. Its markup counts only with a family of fonts
// (CFontCollection):
//
//   <B> <I> <U> <LS> <US>          change to the style, and back
//   <COLOR r,g,b> <COLOR n>        the colour from here on, as channels or as a pixel; <COLOR> ends it
//   <E,width,name,text>            a box to type in
//   | or a carriage return         a line end, for CMultilineText6
//
// Any other code in brackets is left out, a "<" that no ">" closes stays. A text is parsed and laid out when
// it is set, and drawn each time the screen asks for it.
//
// With `hypertext` it keeps where each word stands, so that the word under a point can be found and coloured.
// Words end at blanks and at codes.
//
// The font is held weakly: a text whose font has ended draws nothing.

#include <memory>
#include <vector>

#include "gfx/graphics_object.h"
#include "text/edit_box_maker.h"
#include "text/simple_font.h"
#include "text/text_layout.h"

namespace footlight {

class CFontCollection;

enum class _justify { left = 0, right = 1, center = 2, top = 3, bottom = 4 };

class CText6 : public CGraphicsObject {
 public:
  // `unit` makes the boxes of the text; null makes none.
  CText6(CWindow* window, bool hypertext, CEditBoxMaker* unit);
  ~CText6() override;

  virtual void flush_ht_info();
  // The text is laid out anew. Null: no font.
  virtual void setFont(CSimpleFont6* font);
  virtual void setText(const CXString& text);
  // Where the text stands in a rectangle of the screen; `h` is left, right or center, `v` top, bottom
  // or center.
  virtual void setJustify(CXRect rect, _justify h, _justify v);
  virtual const CXString& getText() const { return rawText_; }
  // The text without colours of its own, in that colour.
  virtual CXString getColoruredText(const CXString& text, int colour) const;
  // A pixel in the display's format, for what no code colours.
  virtual void setColor(int colour);
  virtual int getColor() const { return defColor_; }
  // Words are counted from 0; -1 for none, "" and 0 for what there is not. Points are of the screen.
  virtual int getWordAtXY(CXPoint point) const;
  virtual CXString getWordAt(int word) const;
  virtual CXPoint getWordPosition(int word) const;
  virtual int getWordWidth(int word) const;
  // The first word from that one on that is the text.
  virtual int search(const CXString& text, int from) const;
  // kFontsOwn gives it back to the text's colour.
  virtual void setWordColor(int word, int colour);

  // In pixels, as drawn with a family of fonts; one plain font draws two pixels more between letters.
  virtual int getLength() const;
  static int getLength(const CSimpleFont6* font, std::string_view text);
  _justify getHJustify() const { return hJustify_; }
  _justify getVJustify() const { return vJustify_; }
  CSimpleFont6* getFont() const { return font_.get(); }
  const std::vector<std::unique_ptr<CTextBox>>& getEditBoxes() const { return editBoxes_; }
  // The words of a line; none for a line that there is not.
  ht_Line get_ht_lines_info(int line) const;
  int count_words() const;
  int getNumWords() const { return count_words(); }
  // Each tab becomes eight blanks.
  static CXString convTab(const CXString& text);

  // Redraw where the text was and where it is; its boxes go with it.
  void SetPosition(int px, int py) override;
  using CGraphicsObject::SetPosition;
  void Move(int dx, int dy) override;
  using CGraphicsObject::Move;
  void redraw(CGraphicsObject* destination) override;

 protected:
  // Where the words and lines of the text are, for a text that is new; see text_layout.h.
  virtual TextLayout layOut(CFontCollection* fonts) const;
  void relayOut();

  WeakRef<CSimpleFont6> font_;
  CXString rawText_;
  CXRect rect_;
  _justify vJustify_ = _justify::top;
  _justify hJustify_ = _justify::left;
  CEditBoxMaker* unit_;
  WeakRef<CXObject> unitObject_;
  int defColor_ = CSimpleFont6::kWhite;
  bool hasColor_ = false;
  bool hypertext_;
  TextLayout layout_;
  std::vector<std::unique_ptr<CTextBox>> editBoxes_;
};

}  // namespace footlight
