#include "platform/headless/headless_display.h"

#include <utility>

namespace footlight::platform {

// Stands in the display's list for as long as it lives. Like every surface it goes before the display does.
class HeadlessDisplay::TrackedSurface : public MemorySurface {
 public:
  TrackedSurface(int width, int height, int bytesPerPixel, std::set<MemorySurface*>& surfaces)
      : MemorySurface(width, height, bytesPerPixel), surfaces_(surfaces) {
    surfaces_.insert(this);
  }
  TrackedSurface(const TrackedSurface&) = delete;
  TrackedSurface& operator=(const TrackedSurface&) = delete;
  ~TrackedSurface() override { surfaces_.erase(this); }

 private:
  std::set<MemorySurface*>& surfaces_;
};

HeadlessDisplay::HeadlessDisplay(int windowBpp, int windowX, int windowY)
    : MemoryDisplay(windowBpp), windowX_(windowX), windowY_(windowY) {}

void HeadlessDisplay::loseSurfaces() {
  for (MemorySurface* surface : surfaces_) surface->lose();
}

void HeadlessDisplay::loseBackBuffer() {
  if (flipBuffer() != nullptr) flipBuffer()->lose();
}

void HeadlessDisplay::loseScreen() {
  if (screen() != nullptr) screen()->lose();
}

std::vector<HeadlessDisplay::Shown> HeadlessDisplay::takeShown() { return std::exchange(shown_, {}); }

Status HeadlessDisplay::openWindow(int width, int height) {
  return faults.refuseOpen ? Status::failed : MemoryDisplay::openWindow(width, height);
}

Status HeadlessDisplay::openFullScreen(int width, int height, int bpp) {
  return faults.refuseOpen ? Status::failed : MemoryDisplay::openFullScreen(width, height, bpp);
}

Status HeadlessDisplay::createFlipChain() {
  return faults.refuseFlipChain ? Status::failed : MemoryDisplay::createFlipChain();
}

Status HeadlessDisplay::flip() {
  if (faults.busyFlips > 0) {
    --faults.busyFlips;
    return Status::busy;
  }
  const Status status = MemoryDisplay::flip();
  if (status == Status::ok) ++flips_;
  return status;
}

std::unique_ptr<Surface> HeadlessDisplay::createSurface(int width, int height, bool inVideoMemory) {
  if (faults.refuseSurfaces || (faults.refuseVideoMemory && inVideoMemory)) return nullptr;
  if (!isUsableSurfaceSize(width, height)) return nullptr;
  return std::make_unique<TrackedSurface>(width, height, format().bitCount / 8, surfaces_);
}

Status HeadlessDisplay::show(int x, int y, Surface& source, const Rect& rect) {
  const Status status = MemoryDisplay::show(x, y, source, rect);
  if (recording_ && status == Status::ok) shown_.push_back({x, y, rect});
  return status;
}

}  // namespace footlight::platform
