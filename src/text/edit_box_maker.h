#pragma once

// What a text must know of the boxes to type in that stand in its lines, and of the scene's unit that makes
// them.

#include <memory>

#include "foundation/geometry.h"
#include "foundation/xstring.h"

namespace footlight {

class CSimpleFont6;
class CXObject;

// A box in a text. It ends with this.
class CTextBox {
 public:
  virtual ~CTextBox() = default;
  // In pixels of the screen.
  virtual void setPosition(CXPoint leftTop) = 0;
};

class CEditBoxMaker {
 public:
  virtual ~CEditBoxMaker() = default;
  // Null when none can be made. The rectangle is in pixels of the screen.
  virtual std::unique_ptr<CTextBox> makeTextBox(CSimpleFont6* font, CXRect rect, int priority,
                                                const CXString& text) = 0;
  // The engine object whose end is the maker's.
  virtual CXObject* asObject() = 0;
};

}  // namespace footlight
