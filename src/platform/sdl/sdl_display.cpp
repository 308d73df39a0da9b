#include "platform/sdl/sdl_display.h"

#include <algorithm>
#include <utility>

namespace footlight::platform {

namespace {

std::uint32_t textureFormat(const PixelFormat& format) {
  if (format.bitCount == 32) return SDL_PIXELFORMAT_RGB888;
  return format.green == kFormat15.green ? SDL_PIXELFORMAT_RGB555 : SDL_PIXELFORMAT_RGB565;
}

SDL_Renderer* makeRenderer(SDL_Window* window) {
  for (const std::uint32_t flags : {static_cast<std::uint32_t>(SDL_RENDERER_PRESENTVSYNC), 0U,
                                    static_cast<std::uint32_t>(SDL_RENDERER_SOFTWARE)}) {
    SDL_Renderer* renderer = SDL_CreateRenderer(window, -1, flags);
    if (renderer != nullptr) return renderer;
  }
  return nullptr;
}

int scaledBy(int value, double factor) { return static_cast<int>(static_cast<double>(value) * factor); }

}  // namespace

SdlDisplay::SdlDisplay(int windowBpp, std::string title)
    : MemoryDisplay(windowBpp), title_(std::move(title)) {}

SdlDisplay::~SdlDisplay() = default;

Status SdlDisplay::openWindow(int width, int height) {
  return giveWindow(MemoryDisplay::openWindow(width, height), 0);
}

Status SdlDisplay::openFullScreen(int width, int height, int bpp) {
  return giveWindow(MemoryDisplay::openFullScreen(width, height, bpp), SDL_WINDOW_FULLSCREEN_DESKTOP);
}

// Gives the opened screen its window; a window that is there already is kept.
Status SdlDisplay::giveWindow(Status opened, std::uint32_t windowFlags) {
  if (opened != Status::ok) return opened;
  texture_.reset();
  if (window_) {
    setFullScreen(windowFlags);
  } else {
    window_.reset(makeWindow(windowFlags));
    if (window_) renderer_.reset(makeRenderer(window_.get()));
  }
  if (window_ && renderer_ && makeTexture()) return Status::ok;
  close();
  return Status::failed;
}

SDL_Window* SdlDisplay::makeWindow(std::uint32_t flags) {
  SDL_Rect area{SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, screen()->width(), screen()->height()};
  // A desktop without a window manager leaves a window in the size that it was made in.
  if (flags != 0) SDL_GetDisplayBounds(0, &area);
  hasWindowSize_ = flags == 0;
  return SDL_CreateWindow(title_.c_str(), area.x, area.y, area.w, area.h,
                          flags | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
}

void SdlDisplay::setFullScreen(std::uint32_t flags) {
  SDL_SetWindowFullscreen(window_.get(), flags);
  if (flags != 0 || hasWindowSize_) return;
  hasWindowSize_ = true;
  SDL_SetWindowSize(window_.get(), screen()->width(), screen()->height());
  SDL_SetWindowPosition(window_.get(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
}

bool SdlDisplay::makeTexture() {
  texture_.reset(SDL_CreateTexture(renderer_.get(), textureFormat(format()), SDL_TEXTUREACCESS_STREAMING,
                                   screen()->width(), screen()->height()));
  if (!texture_) return false;
  screenChanged({0, 0, screen()->width(), screen()->height()});
  windowChanged();
  return true;
}

void SdlDisplay::close() {
  texture_.reset();
  renderer_.reset();
  window_.reset();
  damage_.clear();
  MemoryDisplay::close();
}

// Many small pieces cost more one by one than what lies between them: they become one.
void SdlDisplay::screenChanged(const Rect& rect) {
  constexpr std::size_t kMostPieces = 64;
  if (damage_.size() < kMostPieces) {
    damage_.push_back(rect);
    return;
  }
  Rect all = rect;
  for (const Rect& piece : damage_) {
    all = {std::min(all.left, piece.left), std::min(all.top, piece.top), std::max(all.right, piece.right),
           std::max(all.bottom, piece.bottom)};
  }
  damage_ = {all};
}

void SdlDisplay::windowChanged() {
  if (!renderer_ || !isOpen()) return;
  int width = 0;
  int height = 0;
  int unitsWide = 0;
  SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
  SDL_GetWindowSize(window_.get(), &unitsWide, nullptr);
  viewport_ = Viewport(screen()->width(), screen()->height(), std::max(width, 1), std::max(height, 1));
  pixelsPerUnit_ = unitsWide > 0 && width > 0 ? static_cast<double>(width) / unitsWide : 1.0;
  if (texture_) {
    SDL_SetTextureScaleMode(texture_.get(), viewport_.isWhole() ? SDL_ScaleModeNearest : SDL_ScaleModeLinear);
  }
  mustDraw_ = true;
}

void SdlDisplay::deviceReset() {
  if (renderer_ && isOpen()) makeTexture();
}

void SdlDisplay::toggleFullScreen() {
  if (!window_) return;
  const bool isFull = (SDL_GetWindowFlags(window_.get()) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
  setFullScreen(isFull ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
  windowChanged();
}

void SdlDisplay::upload() {
  for (const Rect& changed : damage_) {
    const SDL_Rect rect{changed.left, changed.top, changed.right - changed.left,
                        changed.bottom - changed.top};
    SDL_UpdateTexture(texture_.get(), &rect, screen()->at(changed.left, changed.top), screen()->pitch());
  }
  damage_.clear();
  mustDraw_ = true;
}

void SdlDisplay::present() {
  if (!texture_) return;
  if (!damage_.empty()) upload();
  if (!mustDraw_) return;
  mustDraw_ = false;
  const Rect& target = viewport_.target();
  const SDL_Rect rect{target.left, target.top, target.right - target.left, target.bottom - target.top};
  SDL_SetRenderDrawColor(renderer_.get(), 0, 0, 0, 255);
  SDL_RenderClear(renderer_.get());
  SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, &rect);
  SDL_RenderPresent(renderer_.get());
}

CursorPosition SdlDisplay::toScreen(int windowX, int windowY) const {
  return viewport_.toScreen(scaledBy(windowX, pixelsPerUnit_), scaledBy(windowY, pixelsPerUnit_));
}

CursorPosition SdlDisplay::toWindow(CursorPosition screen) const {
  const CursorPosition place = viewport_.toWindow(screen);
  return {scaledBy(place.x, 1 / pixelsPerUnit_), scaledBy(place.y, 1 / pixelsPerUnit_)};
}

Rect SdlDisplay::toWindow(const Rect& screen) const {
  const Rect place = viewport_.toWindow(screen);
  return {scaledBy(place.left, 1 / pixelsPerUnit_), scaledBy(place.top, 1 / pixelsPerUnit_),
          scaledBy(place.right, 1 / pixelsPerUnit_), scaledBy(place.bottom, 1 / pixelsPerUnit_)};
}

}  // namespace footlight::platform
