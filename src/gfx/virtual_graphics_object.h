#pragma once

// A picture that shows the pixels of a source, at its own place, through the alpha plane of a mask. It is as
// large as both allow. A mask without an alpha plane is opaque; where the source has one too, the two weigh
// together. It follows its source and its mask, which are held weakly; without a source it shows nothing.

#include "gfx/composite.h"

namespace footlight {

class CVirtualGraphicsObject : public CGraphicsObject {
 public:
  explicit CVirtualGraphicsObject(CWindow* window) : CGraphicsObject(window) {}
  ~CVirtualGraphicsObject() override;

  // One that would draw this picture itself is refused. Null: none.
  void setSource(CGraphicsObject* source) { replace(&source_, source); }
  void setMask(CGraphicsObject* mask) { replace(&mask_, mask); }
  CGraphicsObject* source() const { return source_.get(); }
  CGraphicsObject* mask() const { return mask_.get(); }

  void redraw(CGraphicsObject* destination) override;
  void unpack() override;
  using CGraphicsObject::GetPixel;
  int GetPixel(_channel channel, CXPoint point) override;
  std::vector<CGraphicsObject*> drawnParts() const override { return {source(), mask()}; }
  void onInvalidate(CGraphicsObject* object, CXRect* rect) override;
  void onDestroy(CGraphicsObject* object) override;

 private:
  void replace(WeakRef<CGraphicsObject>* role, CGraphicsObject* object);
  CXSize sizeOfParts() const;
  void prepare(const CXRect& part);
  void takePixels(CGraphicsObject& source, const CXRect& part);
  void takeAlpha(const CGraphicsObject& source, const CGraphicsObject* mask, const CXRect& part);

  WeakRef<CGraphicsObject> source_;
  WeakRef<CGraphicsObject> mask_;
  PixelBlock ownPixels_;  // where the source's cannot be shared
  PixelBlock ownAlpha_;
  bool isPrepared_ = false;
};

}  // namespace footlight
