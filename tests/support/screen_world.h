#pragma once

// A window on the headless machine: an open screen of the given size and depth, ready to tick, in a folder
// of its own.

#include <memory>
#include <string>
#include <vector>

#include "files/language_os_ver.h"
#include "foundation/command_line6.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/surface.h"
#include "gfx/window.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"
#include "support/test_platform.h"

namespace footlight::test {

class ScreenWorld {
 public:
  static platform::HeadlessOptions depth(int bpp) {
    platform::HeadlessOptions options;
    options.bpp = bpp;
    return options;
  }

  explicit ScreenWorld(CXSize size = {64, 48}, int bpp = 16, const char* commandLine = "-window")
      : ScreenWorld(size, depth(bpp), commandLine) {}

  ScreenWorld(CXSize size, const platform::HeadlessOptions& options, const char* commandLine)
      : machine(options, std::make_unique<platform::PosixFileSystem>(folder.path().string())) {
    platform::use(&machine);
    commands = std::make_unique<CCommandLine6>(commandLine);
    language = std::make_unique<CLanguageOSVer>();
    window = std::make_unique<CWindow>(commands.get(), language.get(), size, "C:\\engine");
  }
  ~ScreenWorld() {
    window.reset();
    platform::use(nullptr);
  }
  ScreenWorld(const ScreenWorld&) = delete;
  ScreenWorld& operator=(const ScreenWorld&) = delete;

  // Opens the screen as the command line says and activates the window.
  ScreenWorld& open(int bpp = 16) {
    if (commands->isWindowMode()) {
      window->CreateSurface();
    } else {
      window->SetDisplayMode(0, 0, bpp);
    }
    window->OnActivateApp(true);
    return *this;
  }

  CRefreshScreen& screen() { return *window->getRefreshScreen(); }
  // The back surface, a number a pixel, row by row.
  std::vector<std::uint32_t> frame() const {
    CDirectDrawSurface* back = window->getBackSurface();
    const auto bytes = back->GetDataPtr();
    const auto unit = static_cast<std::size_t>(back->GetPixelSize());
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < back->Height(); ++y) {
      for (int x = 0; x < back->Width(); ++x) {
        const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(back->getPitch()) +
                                static_cast<std::size_t>(x)) *
                               unit;
        std::uint32_t value = 0;
        for (std::size_t i = unit; i > 0; --i)
          value = value << 8 | std::to_integer<std::uint32_t>(bytes[at + i - 1]);
        pixels.push_back(value);
      }
    }
    return pixels;
  }
  std::uint32_t pixel(int x, int y) const {
    return frame()[static_cast<std::size_t>(y * window->getBackSurface()->Width() + x)];
  }

  TemporaryFolder folder;
  platform::HeadlessPlatform machine;
  std::unique_ptr<CCommandLine6> commands;
  std::unique_ptr<CLanguageOSVer> language;
  std::unique_ptr<CWindow> window;
};

// A picture of one colour, given as a ready pixel.
inline Owned<CGraphicsObject> plate(CWindow* window, CXRect place, std::uint16_t pixel, int alpha = -1,
                                    int bpp = 16) {
  Owned<CGraphicsObject> object(new CGraphicsObject(window, place.Size(), bpp));
  object->placeAt(place.LeftTop());
  CColor colour(pixel, bpp == 15 ? _colormodel::bpp15 : _colormodel::bpp16);
  object->Fill(&colour);
  if (alpha >= 0) {
    const auto size = static_cast<std::size_t>(place.Width() * place.Height());
    object->AlphaChannel(PixelBlock(std::vector<std::byte>(size, static_cast<std::byte>(alpha)), 8));
  }
  return object;
}

}  // namespace footlight::test
