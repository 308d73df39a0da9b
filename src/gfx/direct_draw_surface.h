#pragma once

// A graphic object whose pixels lie in a surface of the display: the back surface that frames are composed
// in, and backgrounds. Its pixels are reached by pointer and pitch only while the surface is not lost.

#include <memory>

#include "gfx/graphics_object.h"
#include "platform/display.h"

namespace footlight {

class CDirectDrawSurface : public CGraphicsObject {
 public:
  explicit CDirectDrawSurface(CWindow* window) : CGraphicsObject(window) {}
  // Stands for a surface of the display; null makes an off-screen surface of its own.
  CDirectDrawSurface(CWindow* window, platform::Surface* surface, CXSize size, int bpp);
  // An off-screen surface, in video memory only if the window wants that too.
  CDirectDrawSurface(CWindow* window, CXSize size, int bpp, bool inVideoMemory);

  std::span<std::byte> GetDataPtr() override;
  void Fill(CColor* colour) override;
  void Fill(CXRect rect, CColor* colour) override;
  // Copies the surface onto its destiny, which must be a device surface too.
  void Redraw() override;
  // Makes the surface; false when the display refuses.
  virtual bool create_surface(bool inVideoMemory);

  bool hasSurface() const { return surface_ != nullptr; }
  platform::Surface* GetDirectDrawSurfaceInterface() const { return surface_; }
  // The device surface, restored if it was lost; null when there is none or it stays lost.
  platform::Surface* readyDeviceSurface();
  void Release();

  // Copies a part of the source to (x, y). A part that is larger than the source is centred.
  void Blt(CDirectDrawSurface* source, int x, int y, const CXRect* rect);
  void Blt(CDirectDrawSurface* source, CXPoint point, const CXRect* rect) {
    Blt(source, point.x, point.y, rect);
  }

  // The object to draw again after the surface was lost; held weakly.
  void applyToRestore(CGraphicsObject* object) { applied_ = object; }
  CGraphicsObject* getApplied() const { return applied_.get(); }

 protected:
  PixelBlock shareablePixels() const override;

 private:
  platform::Status copyFrom(CDirectDrawSurface* source, CXPoint point, const CXRect& part);

  std::unique_ptr<platform::Surface> own_;
  platform::Surface* surface_ = nullptr;
  WeakRef<CGraphicsObject> applied_;
};

}  // namespace footlight
