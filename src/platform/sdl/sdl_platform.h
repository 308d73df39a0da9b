#pragma once

// The player's machine through SDL 2: a window or the full screen, mouse, keyboard, the machine's own
// time. Make and use it on one thread. Alt with Enter changes between window and full screen without
// the engine's notice.

#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/posix/modules.h"
#include "platform/sdl/make_sdl_platform.h"
#include "platform/sdl/sdl_display.h"
#include "platform/sdl/sdl_input.h"
#include "platform/sdl/sdl_shell.h"
#include "platform/sdl/sdl_sound.h"

namespace footlight::platform {

class SdlClock : public Clock {
 public:
  explicit SdlClock(std::optional<std::int64_t> unixSeconds);

  std::uint32_t ticks() const override { return static_cast<std::uint32_t>(SDL_GetTicks64()); }
  std::uint64_t counter() const override { return SDL_GetPerformanceCounter(); }
  std::uint64_t counterFrequency() const override { return SDL_GetPerformanceFrequency(); }
  std::int64_t unixSeconds() const override;
  void sleep(std::uint32_t milliseconds) override { SDL_Delay(milliseconds); }

 private:
  std::int64_t offset_ = 0;  // of the told wall clock to the machine's
};

class SdlPlatform : public Platform {
 public:
  // Without `files` the machine has no disk: `files()` must not be called then. A machine without a desktop
  // is no error here: its display refuses to open.
  explicit SdlPlatform(SdlOptions options = {}, std::unique_ptr<FileSystem> files = nullptr);
  ~SdlPlatform() override;
  SdlPlatform(const SdlPlatform&) = delete;
  SdlPlatform& operator=(const SdlPlatform&) = delete;

  SdlClock& clock() override { return clock_; }
  FileSystem& files() override;
  SdlDisplay& display() override { return display_; }
  SdlInput& input() override { return input_; }
  SdlShell& shell() override { return shell_; }
  PosixModules& modules() override { return modules_; }
  SdlSound* sound() override { return sound_.isOpen() ? &sound_ : nullptr; }
  std::string locale() const override { return options_.locale; }
  std::vector<WindowEvent> pump() override;
  void whenLost(std::function<void()> work) override;

 private:
  // SDL's subsystems, up as long as this lives.
  struct Session {
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
  };

  void handleWindow(const SDL_WindowEvent& event, std::vector<WindowEvent>& events);
  // Alt and Enter are the window's; whoever took the press takes the release too.
  bool handleShortcut(const SDL_KeyboardEvent& event);

  SdlOptions options_;
  Session session_;
  SdlClock clock_;
  std::unique_ptr<FileSystem> files_;
  SdlDisplay display_;
  SdlInput input_;
  SdlShell shell_;
  PosixModules modules_;
  SdlSound sound_;
  bool isShortcutDown_ = false;
};

}  // namespace footlight::platform
