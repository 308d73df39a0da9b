#pragma once

// Prints a part of the window's picture on one landscape page, fitted to the page by aspect
// ratio and centred.

#include "foundation/geometry.h"

namespace footlight {

class CWindow;

class CPrinter {
 public:
  // An empty rectangle means the whole screen. The whole job is done when the constructor returns.
  CPrinter(CWindow* window, CXRect rect);

 private:
  void print(CXRect rect) const;

  CWindow* window_;
};

}  // namespace footlight
