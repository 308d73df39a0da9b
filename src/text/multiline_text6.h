#pragma once

// CMultilineText6 wraps a text into the width of its rectangle, at blanks. A word that is wider stands in a
// line of its own and goes over. Of the text it knows what CText6 knows. Lines lie two pixels over each
// other; of empty lines in a row only the first has a height.
//
// The rectangle counts when a text is set: another one only moves the lines that there are.

#include "text/text6.h"

namespace footlight {

class CMultilineText6 final : public CText6 {
 public:
  CMultilineText6(CWindow* window, bool hypertext, CEditBoxMaker* unit) : CText6(window, hypertext, unit) {}

  // The same text in the same look; without its boxes, on no screen.
  std::unique_ptr<CXObject> clone() const override;

  // Lets the lines go; the text stays for the next layout.
  virtual void flush();
  // It begins in the colour that the font has now.
  void setText(const CXString& text) override;
  void setFont(CSimpleFont6* font) override;
  int getWordAtXY(CXPoint point) const override;
  CXPoint getWordPosition(int word) const override;

  // Shows a text file, line by line; gives the error code. Without such a file the text stays.
  int Load(const CXString& name) override;
  using CText6::Load;
  int getHeight() const { return layout_.height; }
  int lineCount() const { return static_cast<int>(layout_.lines.size()); }

 protected:
  TextLayout layOut(const CSimpleFont6& font) const override;

 private:
  void takeFontsColor();
};

}  // namespace footlight
