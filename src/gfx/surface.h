#pragma once

// The visible screen, in a window or full, and its way from the back surface to the eye. Only this class and
// CDirectDrawSurface talk to the display. One at a time: its end closes the display, so every device surface
// must be gone by then.

#include <cstdint>
#include <span>
#include <utility>

#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "platform/display.h"

namespace footlight {

class CDirectDrawSurface;
class CWindow;

class CSurface : public CXObject {
 public:
  // In a window. A failure is kept as the error code.
  CSurface(CWindow* window, CXSize size);
  // The full screen. `bpp` is the format asked for and becomes the one found; `flip` asks for a flip chain,
  // without which the start goes on all the same.
  CSurface(CWindow* window, CXSize size, int& bpp, bool flip);
  ~CSurface() override;
  CSurface(const CSurface&) = delete;
  CSurface& operator=(const CSurface&) = delete;

  CXSize GetScreenSize() const { return size_; }
  int GetBPP() const { return bpp_; }
  bool IsFlippingEnabled() const { return backBuffer_ != nullptr; }
  platform::Surface* getBackBuffer() const { return backBuffer_; }

  // Copies a part of the source (null: all of it) to the screen at (x, y). A lost side is restored once.
  void Blt(CDirectDrawSurface* source, int x, int y, const CXRect* rect);
  void Blt(CDirectDrawSurface* source, CXPoint point, const CXRect* rect) {
    Blt(source, point.x, point.y, rect);
  }
  // Shows the back buffer. A display that stays busy is given up for this frame.
  void Flip();
  // Whether something was lost or not shown since the last call: then the next frame must be a whole one.
  bool takeLoss() { return std::exchange(hasLoss_, false); }
  // Brings what was copied or flipped before the player's eyes.
  void present();
  void waitForVB();

  // The 32-bit pixel of every 5-6-5 pixel; empty while no display needed it.
  static std::span<const std::uint32_t> getBppConversionTable();
  // Builds it for formats of 24 and 32 bits.
  static void prepareBppConversionTable(int bpp);

 private:
  CXSize size_;
  int bpp_ = 0;
  bool hasLoss_ = false;
  platform::Surface* backBuffer_ = nullptr;
};

}  // namespace footlight
