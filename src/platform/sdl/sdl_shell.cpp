#include "platform/sdl/sdl_shell.h"

#include <cstdio>
#include <utility>

#include "foundation/code_page.h"

namespace footlight::platform {

SdlShell::SdlShell(SdlDisplay& display, std::string printFolder)
    : FileShell(std::move(printFolder)), display_(display) {}

void SdlShell::messageBox(std::string_view caption, std::string_view text) {
  const std::string title = code_page::toUtf8(caption);
  const std::string message = code_page::toUtf8(text);
  const char* driver = SDL_GetCurrentVideoDriver();
  const bool hasDesktop = driver != nullptr && std::string_view(driver) != "dummy";
  if (hasDesktop && SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, title.c_str(), message.c_str(),
                                             display_.window()) == 0) {
    return;
  }
  std::fprintf(stderr, "%s: %s\n", title.c_str(), message.c_str());
}

void SdlShell::setCursor(Cursor cursor) {
  constexpr SDL_SystemCursor kShapes[] = {SDL_SYSTEM_CURSOR_ARROW, SDL_SYSTEM_CURSOR_ARROW,
                                          SDL_SYSTEM_CURSOR_HAND, SDL_SYSTEM_CURSOR_WAIT};
  const auto index = static_cast<std::size_t>(cursor);
  if (cursor == Cursor::none || SDL_GetCurrentVideoDriver() == nullptr) return;
  if (!cursors_[index]) cursors_[index].reset(SDL_CreateSystemCursor(kShapes[index]));
  if (cursors_[index]) SDL_SetCursor(cursors_[index].get());
}

void SdlShell::showCursor(bool visible) {
  if (SDL_GetCurrentVideoDriver() != nullptr) SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
}

void SdlShell::clipCursor(int left, int top, int right, int bottom) {
  clip_ = Rect{left, top, right, bottom};
  windowChanged();
}

void SdlShell::releaseCursor() {
  clip_.reset();
  if (display_.window() != nullptr) SDL_SetWindowMouseRect(display_.window(), nullptr);
}

void SdlShell::windowChanged() {
  if (!clip_ || display_.window() == nullptr) return;
  const Rect place = display_.toWindow(*clip_);
  const SDL_Rect rect{place.left, place.top, place.right - place.left, place.bottom - place.top};
  SDL_SetWindowMouseRect(display_.window(), &rect);
}

}  // namespace footlight::platform
