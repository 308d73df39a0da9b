#pragma once

#include <SDL.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory_display.h"
#include "platform/sdl/viewport.h"

namespace footlight::platform {

// The engine's screen in a window of the desktop. The screen is memory; `present` brings what changed into a
// streaming texture of the same format and draws that, scaled, into the window. So a resized or covered
// window never loses the picture, and the player may change the window's size and go full screen at any time:
// the engine's own screen coordinates, with their origin in the picture's corner, do not change by it.
class SdlDisplay : public MemoryDisplay {
 public:
  // `title` in UTF-8; SDL's video must be up before a window is opened.
  SdlDisplay(int windowBpp, std::string title);
  ~SdlDisplay() override;

  Status openWindow(int width, int height) override;
  Status openFullScreen(int width, int height, int bpp) override;
  void close() override;
  void present() override;

  // The window has a new size, or its content was damaged: the next `present` draws all of it.
  void windowChanged();
  // The graphics device was reset and its textures are gone.
  void deviceReset();
  void toggleFullScreen();
  SDL_Window* window() const { return window_.get(); }
  const Viewport& viewport() const { return viewport_; }
  // The screen's pixel under a place in the window's own coordinates, and back.
  CursorPosition toScreen(int windowX, int windowY) const;
  CursorPosition toWindow(CursorPosition screen) const;
  Rect toWindow(const Rect& screen) const;

 protected:
  void screenChanged(const Rect& rect) override;

 private:
  struct Deleter {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
  };

  Status giveWindow(Status opened, std::uint32_t windowFlags);
  SDL_Window* makeWindow(std::uint32_t flags);
  void setFullScreen(std::uint32_t flags);
  bool makeTexture();
  void upload();

  std::string title_;
  std::unique_ptr<SDL_Window, Deleter> window_;
  std::unique_ptr<SDL_Renderer, Deleter> renderer_;
  std::unique_ptr<SDL_Texture, Deleter> texture_;
  Viewport viewport_;           // in the renderer's pixels
  double pixelsPerUnit_ = 1.0;  // renderer's pixels to one unit of the window's coordinates
  std::vector<Rect> damage_;    // of the screen, not uploaded yet
  bool mustDraw_ = false;
  bool hasWindowSize_ = false;  // the system knows a size to go back to from the full screen
};

}  // namespace footlight::platform
