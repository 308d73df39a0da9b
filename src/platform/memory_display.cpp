#include "platform/memory_display.h"

#include <algorithm>
#include <cstring>

#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight::platform {

namespace {

constexpr int kRowAlignment = 16;

bool liesInside(const Rect& rect, const Surface& surface) {
  return rect.left >= 0 && rect.top >= 0 && rect.left <= rect.right && rect.top <= rect.bottom &&
         rect.right <= surface.width() && rect.bottom <= surface.height();
}

int bytesPerPixel(const PixelFormat& format) { return format.bitCount / 8; }

// Copies rows between places that the caller has checked; the two may overlap in one surface.
void copyRows(std::byte* target, int targetPitch, const std::byte* source, int sourcePitch, int rowBytes,
              int rows) {
  const bool upward = target > source;
  for (int i = 0; i < rows; ++i) {
    const std::ptrdiff_t row = upward ? rows - 1 - i : i;
    std::memmove(target + row * targetPitch, source + row * sourcePitch, static_cast<std::size_t>(rowBytes));
  }
}

std::byte* place(Surface& surface, int x, int y, int pixelBytes) {
  return surface.pixels() + std::ptrdiff_t{y} * surface.pitch() + std::ptrdiff_t{x} * pixelBytes;
}

}  // namespace

const PixelFormat* formatOfDepth(int bpp) {
  switch (bpp) {
    case 15:
      return &kFormat15;
    case 16:
      return &kFormat16;
    case 32:
      return &kFormat32;
    default:
      return nullptr;
  }
}

MemorySurface::MemorySurface(int width, int height, int bytesPerPixel)
    : width_(width),
      height_(height),
      bytesPerPixel_(bytesPerPixel),
      pitch_((width * bytesPerPixel + kRowAlignment - 1) / kRowAlignment * kRowAlignment),
      memory_(static_cast<std::size_t>(pitch_) * static_cast<std::size_t>(height)) {}

Status MemorySurface::restore() {
  lost_ = false;
  return Status::ok;
}

void MemorySurface::lose() {
  lost_ = true;
  std::fill(memory_.begin(), memory_.end(), std::byte{0});
}

const std::byte* MemorySurface::at(int x, int y) const {
  return memory_.data() + std::ptrdiff_t{y} * pitch_ + std::ptrdiff_t{x} * bytesPerPixel_;
}

std::byte* MemorySurface::at(int x, int y) {
  return memory_.data() + std::ptrdiff_t{y} * pitch_ + std::ptrdiff_t{x} * bytesPerPixel_;
}

std::uint32_t MemorySurface::pixel(int x, int y) const {
  std::uint32_t value = 0;
  std::memcpy(&value, at(x, y), static_cast<std::size_t>(bytesPerPixel_));
  return value;
}

Status MemoryDisplay::openWindow(int width, int height) {
  return open(width, height, formatOfDepth(windowBpp_), false);
}

Status MemoryDisplay::openFullScreen(int width, int height, int bpp) {
  return open(width, height, formatOfDepth(bpp), true);
}

Status MemoryDisplay::open(int width, int height, const PixelFormat* format, bool fullScreen) {
  if (format == nullptr) return Status::failed;
  if (!limits::isPictureSize(width, height)) {
    guardHit("display-size");
    return Status::failed;
  }
  back_.reset();
  format_ = *format;
  fullScreen_ = fullScreen;
  screen_ = std::make_unique<MemorySurface>(width, height, bytesPerPixel(format_));
  return Status::ok;
}

void MemoryDisplay::close() {
  back_.reset();
  screen_.reset();
}

Status MemoryDisplay::createFlipChain() {
  if (!screen_ || !fullScreen_) return Status::failed;
  back_ = std::make_unique<MemorySurface>(screen_->width(), screen_->height(), bytesPerPixel(format_));
  return Status::ok;
}

Status MemoryDisplay::flip() {
  if (!screen_ || !back_) return Status::failed;
  if (screen_->isLost() || back_->isLost()) return Status::lost;
  const Rect all{0, 0, screen_->width(), screen_->height()};
  copyRows(screen_->at(0, 0), screen_->pitch(), back_->at(0, 0), back_->pitch(), screen_->pitch(),
           all.bottom);
  screenChanged(all);
  return Status::ok;
}

bool MemoryDisplay::isUsableSurfaceSize(int width, int height) const {
  if (!screen_) return false;
  if (limits::isPictureSize(width, height)) return true;
  guardHit("surface-size");
  return false;
}

std::unique_ptr<Surface> MemoryDisplay::createSurface(int width, int height, bool) {
  if (!isUsableSurfaceSize(width, height)) return nullptr;
  return std::make_unique<MemorySurface>(width, height, bytesPerPixel(format_));
}

Status MemoryDisplay::copy(Surface& target, int x, int y, Surface& source, const Rect& rect) {
  if (target.isLost() || source.isLost()) return Status::lost;
  if (!liesInside(rect, source)) return Status::failed;
  const int width = rect.right - rect.left;
  const int height = rect.bottom - rect.top;
  if (x < 0 || y < 0 || x > target.width() - width || y > target.height() - height) return Status::failed;
  const int size = bytesPerPixel(format_);
  copyRows(place(target, x, y, size), target.pitch(), place(source, rect.left, rect.top, size),
           source.pitch(), width * size, height);
  return Status::ok;
}

Status MemoryDisplay::fill(Surface& target, const Rect& rect, std::uint32_t pixel) {
  if (target.isLost()) return Status::lost;
  if (!liesInside(rect, target)) return Status::failed;
  if (rect.left == rect.right || rect.top == rect.bottom) return Status::ok;
  const int size = bytesPerPixel(format_);
  const std::ptrdiff_t width = rect.right - rect.left;
  std::byte* first = place(target, rect.left, rect.top, size);
  for (std::ptrdiff_t x = 0; x < width; ++x)
    std::memcpy(first + x * size, &pixel, static_cast<std::size_t>(size));
  for (int y = 1; y < rect.bottom - rect.top; ++y) {
    std::memcpy(first + std::ptrdiff_t{y} * target.pitch(), first, static_cast<std::size_t>(width * size));
  }
  return Status::ok;
}

Status MemoryDisplay::show(int x, int y, Surface& source, const Rect& rect) {
  if (!screen_) return Status::failed;
  if (screen_->isLost() || source.isLost()) return Status::lost;
  if (!liesInside(rect, source)) return Status::failed;
  const Rect client = clientRect();
  // 64 bits, because a script's coordinates may lie anywhere.
  const std::int64_t left = std::int64_t{x} - client.left;
  const std::int64_t top = std::int64_t{y} - client.top;
  const std::int64_t firstX = std::max<std::int64_t>(left, 0);
  const std::int64_t firstY = std::max<std::int64_t>(top, 0);
  const std::int64_t endX = std::min<std::int64_t>(left + rect.right - rect.left, screen_->width());
  const std::int64_t endY = std::min<std::int64_t>(top + rect.bottom - rect.top, screen_->height());
  if (firstX >= endX || firstY >= endY) return Status::ok;
  const Rect shown{static_cast<int>(firstX), static_cast<int>(firstY), static_cast<int>(endX),
                   static_cast<int>(endY)};
  const int size = bytesPerPixel(format_);
  copyRows(screen_->at(shown.left, shown.top), screen_->pitch(),
           place(source, rect.left + static_cast<int>(firstX - left),
                 rect.top + static_cast<int>(firstY - top), size),
           source.pitch(), (shown.right - shown.left) * size, shown.bottom - shown.top);
  screenChanged(shown);
  return Status::ok;
}

Status MemoryDisplay::restoreScreen() {
  if (!screen_) return Status::failed;
  return screen_->restore();
}

Rect MemoryDisplay::clientRect() const {
  if (!screen_) return {0, 0, 0, 0};
  const Rect origin = fullScreen_ ? Rect{0, 0, 0, 0} : windowOrigin();
  return {origin.left, origin.top, origin.left + screen_->width(), origin.top + screen_->height()};
}

}  // namespace footlight::platform
