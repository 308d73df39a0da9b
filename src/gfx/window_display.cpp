// The window's screen: bringing it up, showing a frame, asking for a new one.

#include <algorithm>

#include "foundation/command_line6.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/surface.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

int CWindow::CreateSurface() {
  refreshScreen_.reset();
  backSurface_.reset();
  surface_.reset();
  surface_ = std::make_unique<CSurface>(this, screenSize_);
  if (openScreen(nullptr)) {
    const platform::Rect client = platform::current().display().clientRect();
    refreshScreen_->SetPosition(client.left, client.top);
  }
  return LastError();
}

int CWindow::SetDisplayMode(int width, int height, int bpp) {
  const CXSize size(width != 0 ? width : screenSize_.width, height != 0 ? height : screenSize_.height);
  refreshScreen_.reset();
  backSurface_.reset();
  surface_.reset();
  const bool flip = commandLine_->isPageFlippingEnabled();
  surface_ = std::make_unique<CSurface>(this, size, bpp, flip);
  if (!openScreen(surface_->getBackBuffer())) surface_.reset();
  return LastError();
}

// Makes the back surface and the refresh screen; false, with the error code set, when the display failed.
bool CWindow::openScreen(platform::Surface* backBuffer) {
  setErrorCode(surface_->LastError());
  if (LastError() != 0) return false;
  backSurface_.reset(new CDirectDrawSurface(this, backBuffer, screenSize_, surface_->GetBPP()));
  if (!backSurface_->hasSurface()) {
    backSurface_.reset();
    setErrorCode(kGraphicsError);
    return false;
  }
  refreshScreen_.reset(new CRefreshScreen(this, false));
  refreshScreen_->setFlipping(surface_->IsFlippingEnabled());
  return true;
}

// Scripts run in the middle of a frame; a frame that they ask for there comes with the next tick.
int CWindow::Redraw() {
  if (!active_ || isRedrawing_ || refreshScreen_ == nullptr) return 0;
  isRedrawing_ = true;
  redrawFrame();
  isRedrawing_ = false;
  return 0;
}

void CWindow::redrawFrame() {
  bool fullRepaint = false;
  if (refreshScreen_->Redraw(backSurface_.get(), surface_.get(), &fullRepaint)) showFrame();
  surface_->present();
  if (surface_->takeLoss() || fullRepaint) Invalidate();
}

// With a pair of buffers each of the two must get all that changed.
void CWindow::showFrame() {
  if (surface_->IsFlippingEnabled()) {
    surface_->Flip();
    refreshScreen_->validateFlipped();
    return;
  }
  const platform::Rect client = platform::current().display().clientRect();
  CRefreshRegion* region = refreshScreen_->getRefreshList();
  const CXRect whole(0, 0, backSurface_->Width(), backSurface_->Height());
  const auto show = [&](CXRect rect) {
    rect.right = std::min(rect.right, whole.right);
    rect.bottom = std::min(rect.bottom, whole.bottom);
    if (rect.left >= rect.right || rect.top >= rect.bottom) return;
    surface_->Blt(backSurface_.get(), wrap_add(rect.left, client.left), wrap_add(rect.top, client.top),
                  &rect);
  };
  if (region->isFull()) show(refreshScreen_->screenRect());
  for (const CXRect& rect : region->rects()) show(rect);
  region->clear();
}

void CWindow::Invalidate() { Invalidate(static_cast<CXRect*>(nullptr)); }

void CWindow::Invalidate(CXRect* rect) {
  if (refreshScreen_ != nullptr) refreshScreen_->Invalidate(rect);
}

void CWindow::Invalidate(CGraphicsObject* object) {
  if (refreshScreen_ != nullptr) refreshScreen_->Invalidate(object);
}

void CWindow::SetBackground(CGraphicsObject* object) {
  if (refreshScreen_ != nullptr) refreshScreen_->SetBackground(object);
}

void CWindow::SetBackground(CColor* colour) {
  if (refreshScreen_ != nullptr) refreshScreen_->SetBackground(colour);
}

void CWindow::SetBackground(const CXString& fileName) {
  if (refreshScreen_ != nullptr) refreshScreen_->SetBackground(fileName);
}

int CWindow::GetBpp() const { return surface_ != nullptr ? surface_->GetBPP() : 0; }

std::byte* CWindow::GetScreenPtr() const {
  return backSurface_ != nullptr ? backSurface_->GetDataPtr().data() : nullptr;
}

}  // namespace footlight
