#include "gfx/surface.h"

#include <vector>

#include "gfx/direct_draw_surface.h"
#include "gfx/pixel_format.h"
#include "gfx/window.h"
#include "platform/platform.h"

namespace footlight {

namespace {

using platform::Status;

constexpr int kBusyFlips = 100;  // asked again so often before the frame is given up

platform::Display& display() { return platform::current().display(); }

std::vector<std::uint32_t>& conversionTable() {
  static std::vector<std::uint32_t> table;
  return table;
}

std::uint32_t joinedMasks(const platform::PixelFormat& format) {
  return format.red | format.green | format.blue;
}

// A display of 5-5-5 counts 16 bits and tells itself apart by its masks.
int windowBpp(const platform::PixelFormat& format) {
  return format.bitCount == 16 && joinedMasks(format) == 0x7FFF ? 15 : format.bitCount;
}

int fullScreenBpp(const platform::PixelFormat& format, int asked) {
  switch (joinedMasks(format)) {
    case 0x7FFF:
      return 15;
    case 0xFFFF:
      return 16;
    case 0xFFFFFF:
    case 0xFFFFFFFF:
      return 24;
    default:
      return asked;
  }
}

}  // namespace

CSurface::CSurface(CWindow* /*window*/, CXSize size) : size_(size) {
  if (display().openWindow(size.width, size.height) != Status::ok) {
    setErrorCode(CWindow::kGraphicsError);
    return;
  }
  bpp_ = windowBpp(display().format());
  prepareBppConversionTable(bpp_);
}

CSurface::CSurface(CWindow* /*window*/, CXSize size, int& bpp, bool flip) : size_(size), bpp_(bpp) {
  if (display().openFullScreen(size.width, size.height, bpp) != Status::ok) {
    setErrorCode(CWindow::kGraphicsError);
    return;
  }
  if (flip && display().createFlipChain() == Status::ok) backBuffer_ = display().backBuffer();
  bpp = bpp_ = fullScreenBpp(display().format(), bpp);
  prepareBppConversionTable(bpp_);
}

CSurface::~CSurface() {
  display().close();
  conversionTable() = {};
}

void CSurface::Blt(CDirectDrawSurface* source, int x, int y, const CXRect* rect) {
  if (source == nullptr) return;
  const platform::Surface* device = source->GetDirectDrawSurfaceInterface();
  if (device != nullptr && device->isLost()) hasLoss_ = true;
  platform::Surface* pixels = source->readyDeviceSurface();
  if (pixels == nullptr) return;
  const CXRect whole(0, 0, source->Width(), source->Height());
  const CXRect part = rect == nullptr ? whole : rect->Common(whole);
  if (part.IsEmpty()) return;
  const platform::Rect area{part.left, part.top, part.right, part.bottom};
  // A rectangle that starts outside the source lands where its visible part belongs.
  const int left = rect == nullptr ? x : wrap_add(x, part.left - rect->left);
  const int top = rect == nullptr ? y : wrap_add(y, part.top - rect->top);
  if (display().show(left, top, *pixels, area) != Status::lost) return;
  hasLoss_ = true;
  display().restoreScreen();
  display().show(left, top, *pixels, area);
}

void CSurface::Flip() {
  Status status = display().flip();
  for (int i = 0; status == Status::busy && i < kBusyFlips; ++i) status = display().flip();
  if (status != Status::ok) hasLoss_ = true;
  if (status == Status::lost) {
    display().restoreScreen();
    if (backBuffer_ != nullptr) backBuffer_->restore();
  }
}

void CSurface::present() { display().present(); }

void CSurface::waitForVB() { display().waitForVerticalBlank(); }

std::span<const std::uint32_t> CSurface::getBppConversionTable() { return conversionTable(); }

void CSurface::prepareBppConversionTable(int bpp) {
  std::vector<std::uint32_t>& table = conversionTable();
  if ((bpp != 24 && bpp != 32) || !table.empty()) return;
  table.resize(0x10000);
  for (std::uint32_t pixel = 0; pixel < table.size(); ++pixel)
    table[pixel] = toPixel32(static_cast<std::uint16_t>(pixel));
}

}  // namespace footlight
