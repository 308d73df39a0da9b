#pragma once

// The display device: a screen of a given size and depth, in a window or full, and memory surfaces that the
// engine composes frames in. Only CSurface and CDirectDrawSurface call this.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/status.h"

namespace footlight::platform {

struct Rect {
  int left, top, right, bottom;  // right and bottom lie outside
};

struct PixelFormat {
  int bitCount;  // 15 displays report 16 here and say 15 by their masks
  std::uint32_t red, green, blue;
};

// Off-screen memory in the display's format.
class Surface {
 public:
  virtual ~Surface() = default;
  virtual int width() const = 0;
  virtual int height() const = 0;
  // The pixels and the bytes from row to row; stable until the surface is lost or goes. Null while
  // it is lost.
  virtual std::byte* pixels() = 0;
  virtual int pitch() const = 0;
  virtual bool isLost() const = 0;
  virtual Status restore() = 0;
};

class Display {
 public:
  virtual ~Display() = default;

  // Opens a window whose client area shows width x height pixels of the screen's format.
  virtual Status openWindow(int width, int height) = 0;
  // Takes the whole screen. `bpp` is 15 or 16 (24 and 32 as the machine has them).
  virtual Status openFullScreen(int width, int height, int bpp) = 0;
  // Closes what was opened; the surfaces must be gone.
  virtual void close() = 0;

  virtual PixelFormat format() const = 0;
  // A pair of buffers to flip between; `failed` when the display has none, and one goes on without flipping.
  virtual Status createFlipChain() = 0;
  virtual Surface* backBuffer() = 0;  // null without a flip chain
  virtual Status flip() = 0;

  // Memory of the size in the display's format; null when the machine refuses.
  virtual std::unique_ptr<Surface> createSurface(int width, int height, bool inVideoMemory) = 0;

  // Copies between surfaces (both not lost); the caller has clipped.
  virtual Status copy(Surface& target, int x, int y, Surface& source, const Rect& rect) = 0;
  virtual Status fill(Surface& target, const Rect& rect, std::uint32_t pixel) = 0;
  // Copies a rectangle of a surface to the visible screen at (x, y), in pixels of the screen.
  virtual Status show(int x, int y, Surface& source, const Rect& rect) = 0;
  // Brings what was shown before the player's eyes; called once a frame.
  virtual void present() = 0;
  // True when the visible screen was lost (`show` then answers `lost` until it is restored).
  virtual Status restoreScreen() = 0;
  virtual void waitForVerticalBlank() = 0;

  // The client area in screen coordinates.
  virtual Rect clientRect() const = 0;
};

}  // namespace footlight::platform
