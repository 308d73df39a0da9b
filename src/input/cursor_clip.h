#pragma once

// The rectangle of the screen in which the pointer is kept. It outlasts a loss of the focus, and ends with
// the scene that set it.

#include "foundation/geometry.h"

namespace footlight {

class CCursorClip {
 public:
  // In pixels of the picture.
  static void set(CXRect rect);
  // Frees the pointer; with `forget` for good.
  static void release(bool forget);
  // Keeps the pointer in the rectangle again, if there is one.
  static void restore();

 private:
  static inline CXRect rect_;
};

}  // namespace footlight
