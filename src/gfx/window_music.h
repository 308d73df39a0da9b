#pragma once

// The window's one piece of music. For the window's own sources.

#include "gfx/window.h"

namespace footlight {

struct CWindow::Music {
  CXString fileName;  // the full name
  bool looped = false;
  int volume = 0;  // hundredths of a decibel, 0 the loudest
  int pan = 0;     // hundredths of a decibel, below 0 to the left
  int frequency = 0;
};

}  // namespace footlight
