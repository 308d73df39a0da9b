#include "gfx/direct_draw_surface.h"

#include <algorithm>
#include <cstring>

#include "gfx/pixel_format.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

using platform::Status;

platform::Display& display() { return platform::current().display(); }

platform::Rect toDevice(const CXRect& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

}  // namespace

CDirectDrawSurface::CDirectDrawSurface(CWindow* window, platform::Surface* surface, CXSize size, int bpp)
    : CGraphicsObject(window) {
  setSize(size);
  bpp_ = bpp;
  surface_ = surface;
  if (surface_ == nullptr) {
    CDirectDrawSurface::create_surface(true);
    return;
  }
  setSize({std::min(width_, surface_->width()), std::min(height_, surface_->height())});
  CDirectDrawSurface::GetDataPtr();
}

CDirectDrawSurface::CDirectDrawSurface(CWindow* window, CXSize size, int bpp, bool inVideoMemory)
    : CGraphicsObject(window) {
  setSize(size);
  bpp_ = bpp;
  CDirectDrawSurface::create_surface(inVideoMemory);
}

bool CDirectDrawSurface::create_surface(bool inVideoMemory) {
  Release();
  if (!isPictureSize(width_, height_)) return false;
  const bool wanted = inVideoMemory && window_ != nullptr && window_->isVMem();
  own_ = display().createSurface(width_, height_, wanted);
  if (own_ == nullptr && wanted) own_ = display().createSurface(width_, height_, false);
  surface_ = own_.get();
  CDirectDrawSurface::GetDataPtr();
  return surface_ != nullptr;
}

void CDirectDrawSurface::Release() {
  surface_ = nullptr;
  own_.reset();
}

platform::Surface* CDirectDrawSurface::readyDeviceSurface() {
  if (surface_ != nullptr && surface_->isLost()) surface_->restore();
  return surface_ != nullptr && !surface_->isLost() ? surface_ : nullptr;
}

// The pointer is asked for at each use, so that none outlives a lost surface.
std::span<std::byte> CDirectDrawSurface::GetDataPtr() {
  platform::Surface* surface = readyDeviceSurface();
  if (surface == nullptr || surface->pixels() == nullptr) return {};
  pitch_ = surface->pitch() / GetPixelSize();
  const int rows = std::min(height_, surface->height());
  return {surface->pixels(), static_cast<std::size_t>(surface->pitch()) * static_cast<std::size_t>(rows)};
}

PixelBlock CDirectDrawSurface::shareablePixels() const {
  if (surface_ == nullptr || surface_->isLost() || surface_->pixels() == nullptr) return {};
  const auto rowBytes = static_cast<std::size_t>(get_data_size(width_, 1, getBpp()));
  if (surface_->width() < width_ || surface_->height() < height_) return {};
  std::vector<std::byte> rows(rowBytes * static_cast<std::size_t>(height_));
  const auto pitch = static_cast<std::size_t>(surface_->pitch());
  for (std::size_t y = 0; y < static_cast<std::size_t>(height_); ++y) {
    std::memcpy(rows.data() + y * rowBytes, surface_->pixels() + y * pitch, std::min(rowBytes, pitch));
  }
  return PixelBlock(std::move(rows), getBpp());
}

void CDirectDrawSurface::Fill(CColor* colour) { Fill(CXRect(0, 0, width_, height_), colour); }

void CDirectDrawSurface::Fill(CXRect rect, CColor* colour) {
  platform::Surface* surface = readyDeviceSurface();
  const CXRect area = rect.Common({0, 0, width_, height_});
  if (surface == nullptr || colour == nullptr || area.IsEmpty()) return;
  const std::uint32_t pixel = colour->GetSurfacePixel(getBpp());
  if (display().fill(*surface, toDevice(area), pixel) != Status::lost) return;
  surface->restore();
  display().fill(*surface, toDevice(area), pixel);
}

void CDirectDrawSurface::Blt(CDirectDrawSurface* source, int x, int y, const CXRect* rect) {
  if (source == nullptr) return;
  const CXRect whole(0, 0, source->Width(), source->Height());
  CXRect part = rect == nullptr ? whole : *rect;
  if (whole.right < part.Width() || whole.bottom < part.Height()) {
    x = (part.Width() - whole.right) >> 1;
    y = (part.Height() - whole.bottom) >> 1;
    part = whole;
  }
  const CXPoint point(x, y);
  if (copyFrom(source, point, part) != Status::lost) return;
  if (surface_ != nullptr) surface_->restore();
  if (CGraphicsObject* applied = source->getApplied(); applied != nullptr) {
    applied->SetDestiny(source);
    applied->Redraw();
  }
  copyFrom(source, point, part);
}

// Cuts the part to both surfaces and copies what is left.
Status CDirectDrawSurface::copyFrom(CDirectDrawSurface* source, CXPoint point, const CXRect& part) {
  if (surface_ == nullptr || source->surface_ == nullptr) return Status::failed;
  if (surface_->isLost() || source->surface_->isLost()) {
    source->surface_->restore();
    return Status::lost;
  }
  const CXPoint shift = point - part.LeftTop();
  const CXRect area =
      part.Common({0, 0, source->Width(), source->Height()}).Common(CXRect(0, 0, width_, height_) - shift);
  if (area.IsEmpty()) return Status::ok;
  return display().copy(*surface_, wrap_add(area.left, shift.x), wrap_add(area.top, shift.y),
                        *source->surface_, toDevice(area));
}

void CDirectDrawSurface::Redraw() {
  auto* destiny = dynamic_cast<CDirectDrawSurface*>(getDestiny());
  if (destiny == nullptr) return;
  const CXPoint at = position_;
  if (wrap_add(at.x, width_) <= 0 || wrap_add(at.y, height_) <= 0 || at.x >= destiny->Width() ||
      at.y >= destiny->Height()) {
    return;
  }
  const int left = at.x < 0 ? wrap_negate(at.x) : 0;
  const int top = at.y < 0 ? wrap_negate(at.y) : 0;
  // The cut is at the usual screen size, whatever the size of the destiny.
  const int width = wrap_add(at.x, width_) >= destiny->Width() ? wrap_sub(800, at.x) : width_;
  const int height = wrap_add(at.y, height_) >= destiny->Height() ? wrap_sub(600, at.y) : height_;
  const CXRect part =
      CXRect(left, top, wrap_add(left, width), wrap_add(top, height)).Common({0, 0, width_, height_});
  if (!part.IsEmpty()) destiny->Blt(this, wrap_add(at.x, left), wrap_add(at.y, top), &part);
}

}  // namespace footlight
