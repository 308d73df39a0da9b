#pragma once

// CMultilineText6 wraps a text into the width of its rectangle, at blanks. A word that is wider stands in a
// line of its own and goes over. Of the text it knows what CText6 knows; the lines share its font.
//
// The rectangle counts when a text is set: another one moves the lines that there are.

#include "text/text6.h"

namespace footlight {

class CFontCollection;

class CMultilineText6 final : public CText6 {
 public:
  CMultilineText6(CWindow* window, bool hypertext, CEditBoxMaker* unit) : CText6(window, hypertext, unit) {}

  virtual void flush();
  void setText(const CXString& text) override;
  // Shows a text file; gives the error code.
  int Load(const CXString& name) override;
  using CText6::Load;
  int getHeight() const { return layout_.height; }
  using CText6::getLength;
  int getLength() const override { return layout_.width; }
  int lineCount() const { return static_cast<int>(layout_.lines.size()); }

 protected:
  TextLayout layOut(CFontCollection* fonts) const override;
};

}  // namespace footlight
