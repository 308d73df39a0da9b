#pragma once

// The colour that methods take as red, green and blue. For the runners alone.

#include "gfx/window.h"
#include "script/mc_runner.h"
#include "text/text_format_code.h"

namespace footlight {

// Three integers from this argument on as a pixel of the window's display.
inline int colorArgument(const Call& call, int first, const CWindow* window) {
  const int bitsPerPixel = window != nullptr ? window->GetBpp() : 16;
  return packColor(bitsPerPixel, call.integer(first), call.integer(first + 1), call.integer(first + 2));
}

}  // namespace footlight
