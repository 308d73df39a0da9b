#pragma once

// One frame of an animation: pixels that several animations may share, and the place that the file gives
// them. Run-length pixels are expanded when the frame is drawn; `bringBackCompressed` makes them small again.

#include "gfx/graphics_object.h"

namespace footlight {

class CFrame : public CGraphicsObject {
 public:
  explicit CFrame(CWindow* window) : CGraphicsObject(window) {}
  // Shares the source's pixels.
  CFrame(CWindow* window, const CFrame& source)
      : CGraphicsObject(window, source), framePosition_(source.framePosition_) {}

  // Packed planes as they stand in a file.
  void setPlanes(CXSize size, int bpp, _compression compression, PixelBlock colour, PixelBlock alpha);
  void SetPosition(int px, int py) override;
  using CGraphicsObject::SetPosition;
  CXPoint GetFramePosition() const { return framePosition_; }
  void SetPosOffset(CXPoint offset) { posOffset_ = offset; }
  CXPoint getPosOffset() const { return posOffset_; }
  // Gives the frame pixels of its own.
  void unshare();
  // To plain pixels, with the run-length form kept at hand.
  void expand();
  void redraw(CGraphicsObject* destination) override;

 private:
  CXPoint framePosition_;
  CXPoint posOffset_;
};

}  // namespace footlight
