#include "input/cursor_clip.h"

#include "platform/platform.h"

namespace footlight {

void CCursorClip::set(CXRect rect) {
  rect_ = rect;
  platform::current().shell().clipCursor(rect.left, rect.top, rect.right, rect.bottom);
}

void CCursorClip::release(bool forget) {
  if (forget) rect_ = {};
  platform::current().shell().releaseCursor();
}

void CCursorClip::restore() {
  if (rect_.Width() != 0 && rect_.Height() != 0) {
    set(rect_);
  } else {
    release(false);
  }
}

}  // namespace footlight
