#include "gfx/frame.h"

namespace footlight {

void CFrame::setPlanes(CXSize size, int bpp, _compression compression, PixelBlock colour, PixelBlock alpha) {
  Flush();
  setSize(size);
  bpp_ = bpp;
  compression_ = compression;
  data_ = std::move(colour);
  alpha_ = std::move(alpha);
}

void CFrame::SetPosition(int px, int py) {
  posOffset_ = {};
  framePosition_ = {px, py};
  CGraphicsObject::SetPosition(px, py);
}

void CFrame::unshare() {
  bringBackCompressed();
  data_ = data_.copy();
  alpha_ = alpha_.copy();
}

void CFrame::expand() {
  DeCompress();
  DeCompressRLE2();
}

void CFrame::redraw(CGraphicsObject* destination) {
  expand();
  CGraphicsObject::redraw(destination);
}

}  // namespace footlight
