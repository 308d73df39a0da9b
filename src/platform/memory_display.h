#pragma once

// A display that is plain memory. Both back ends build on it: the headless one adds faults and a record of
// what happened, the one with a real window brings the memory before the player's eyes.
//
// A flip copies the back buffer to the screen and leaves the back buffer as it is, so its pointer stays
// stable and it always holds the frame composed last. Copies and fills whose rectangles leave a surface fail
// and do nothing; `show` cuts what lies outside the screen away, as a window does.

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/display.h"

namespace footlight::platform {

inline constexpr PixelFormat kFormat15{16, 0x7C00, 0x3E0, 0x1F};
inline constexpr PixelFormat kFormat16{16, 0xF800, 0x7E0, 0x1F};
inline constexpr PixelFormat kFormat32{32, 0xFF0000, 0xFF00, 0xFF};
// The format of a depth (15, 16 or 32); null for any other depth.
const PixelFormat* formatOfDepth(int bpp);

class MemorySurface : public Surface {
 public:
  // Black pixels; rows are padded to 16 bytes.
  MemorySurface(int width, int height, int bytesPerPixel);

  int width() const override { return width_; }
  int height() const override { return height_; }
  std::byte* pixels() override { return lost_ ? nullptr : memory_.data(); }
  int pitch() const override { return pitch_; }
  bool isLost() const override { return lost_; }
  Status restore() override;

  // Takes the memory away until `restore`; what was in it is gone.
  void lose();
  // The place of a pixel, lost or not; (x, y) must lie inside.
  const std::byte* at(int x, int y) const;
  std::byte* at(int x, int y);
  int bytesPerPixel() const { return bytesPerPixel_; }
  // One pixel's value, for tests and pictures.
  std::uint32_t pixel(int x, int y) const;

 private:
  int width_;
  int height_;
  int bytesPerPixel_;
  int pitch_;
  bool lost_ = false;
  std::vector<std::byte> memory_;
};

class MemoryDisplay : public Display {
 public:
  // `windowBpp` is the depth that the desktop has and so every window gets; 15, 16 or 32.
  explicit MemoryDisplay(int windowBpp) : windowBpp_(windowBpp) {}

  Status openWindow(int width, int height) override;
  Status openFullScreen(int width, int height, int bpp) override;
  void close() override;

  PixelFormat format() const override { return format_; }
  Status createFlipChain() override;
  Surface* backBuffer() override { return back_.get(); }
  Status flip() override;

  std::unique_ptr<Surface> createSurface(int width, int height, bool inVideoMemory) override;
  Status copy(Surface& target, int x, int y, Surface& source, const Rect& rect) override;
  Status fill(Surface& target, const Rect& rect, std::uint32_t pixel) override;
  Status show(int x, int y, Surface& source, const Rect& rect) override;
  void present() override {}
  Status restoreScreen() override;
  void waitForVerticalBlank() override {}
  Rect clientRect() const override;

  bool isOpen() const { return screen_ != nullptr; }
  bool isFullScreen() const { return fullScreen_; }
  // The visible screen (in a window: its client area); null while the display is closed.
  MemorySurface* screen() { return screen_.get(); }
  const MemorySurface* screen() const { return screen_.get(); }
  MemorySurface* flipBuffer() { return back_.get(); }

 protected:
  // False, with a guard's count, when there is no display yet or the size is beyond the limits of pictures.
  bool isUsableSurfaceSize(int width, int height) const;
  // Where the client area lies on the desktop; a full screen is always at (0, 0).
  virtual Rect windowOrigin() const { return {0, 0, 0, 0}; }
  // Called after the rectangle of the screen changed.
  virtual void screenChanged(const Rect&) {}

 private:
  Status open(int width, int height, const PixelFormat* format, bool fullScreen);

  int windowBpp_;
  PixelFormat format_ = kFormat16;
  bool fullScreen_ = false;
  std::unique_ptr<MemorySurface> screen_;
  std::unique_ptr<MemorySurface> back_;
};

}  // namespace footlight::platform
