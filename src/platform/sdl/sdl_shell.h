#pragma once

#include <SDL.h>
#include <array>
#include <memory>
#include <optional>

#include "platform/file_shell.h"
#include "platform/sdl/sdl_display.h"

namespace footlight::platform {

// Boxes and cursors of the desktop. Without a desktop a box becomes a line on standard error.
class SdlShell : public FileShell {
 public:
  SdlShell(SdlDisplay& display, std::string printFolder);

  void messageBox(std::string_view caption, std::string_view text) override;
  void setCursor(Cursor cursor) override;
  void showCursor(bool visible) override;
  void clipCursor(int left, int top, int right, int bottom) override;
  void releaseCursor() override;

  // Fits the clip to the window's new size.
  void windowChanged();

 private:
  struct Deleter {
    void operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }
  };

  SdlDisplay& display_;
  std::array<std::unique_ptr<SDL_Cursor, Deleter>, 4> cursors_;  // by Cursor, made on first use
  std::optional<Rect> clip_;
};

}  // namespace footlight::platform
