#pragma once

// CFont5 is the older font: an animation with a frame for each letter, as wide as that frame. The names of
// the positions of its first event say which letters they are.

#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CAnimo;
class CFrame;
class CGraphicsObject;
class CWindow;

class CFont5 final : public CXObject {
 public:
  // Without letters.
  explicit CFont5(CWindow* window);
  // Loads at once; the result is the error code.
  CFont5(CWindow* window, const CXString& fileName);
  ~CFont5() override;

  // Gives the error code.
  int load(const CXString& name);
  const CXString& getAlphabet() const { return alphabet_; }
  // Of the tallest letter.
  int getAlphabetHeight() const;
  // 0 for a letter that the font lacks.
  CXSize getLetterSize(char letter) const;
  int getLetterWidth(char letter) const { return getLetterSize(letter).width; }
  int getLetterHeight(char letter) const { return getLetterSize(letter).height; }
  // Onto the destiny.
  void drawLetter(CXPoint place, char letter);
  void drawLetter(int x, int y, char letter) { drawLetter({x, y}, letter); }
  // So many pixels behind each letter, but for blanks, which are as wide as an "A".
  int getLengthInPixels(const CXString& text, int spacing) const;
  void setDestiny(CGraphicsObject* destiny);

 private:
  static void emptyCorners(CFrame& frame);
  CFrame* frameOf(char letter) const;

  CWindow* window_;
  Owned<CAnimo> animo_;
  CXString alphabet_;
  WeakRef<CGraphicsObject> destiny_;
};

}  // namespace footlight
