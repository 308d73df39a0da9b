#include "platform/sdl/sdl_platform.h"

#include <cassert>
#include <chrono>
#include <utility>

#include "platform/posix/system_locale.h"
#include "platform/sdl/display_loss.h"

namespace footlight::platform {

namespace {

std::int64_t machineSeconds() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

}  // namespace

SdlClock::SdlClock(std::optional<std::int64_t> unixSeconds) {
  if (unixSeconds) offset_ = *unixSeconds - machineSeconds();
}

std::int64_t SdlClock::unixSeconds() const { return machineSeconds() + offset_; }

SdlPlatform::Session::Session() {
  SDL_SetMainReady();
  SDL_Init(SDL_INIT_TIMER);
  SDL_InitSubSystem(SDL_INIT_VIDEO);
  SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER);
}

SdlPlatform::Session::~Session() { SDL_Quit(); }

SdlPlatform::SdlPlatform(SdlOptions options, std::unique_ptr<FileSystem> files)
    : options_(std::move(options)),
      clock_(options_.unixSeconds),
      files_(std::move(files)),
      display_(options_.bpp, options_.title),
      input_(display_),
      shell_(display_, options_.printFolder),
      modules_(options_.moduleFolder, files_.get()) {
  if (options_.locale.empty()) options_.locale = systemLocale();
}

SdlPlatform::~SdlPlatform() { display_.close(); }

FileSystem& SdlPlatform::files() {
  assert(files_ != nullptr);
  return *files_;
}

void SdlPlatform::whenLost(std::function<void()> work) { watchDisplay(std::move(work)); }

std::vector<WindowEvent> SdlPlatform::pump() {
  std::vector<WindowEvent> events;
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) {
    switch (event.type) {
      case SDL_QUIT:
        events.push_back({WindowEvent::Kind::close});
        break;
      case SDL_WINDOWEVENT:
        handleWindow(event.window, events);
        break;
      case SDL_RENDER_TARGETS_RESET:
      case SDL_RENDER_DEVICE_RESET:
        display_.deviceReset();
        break;
      case SDL_KEYDOWN:
      case SDL_KEYUP:
        if (!handleShortcut(event.key)) input_.handle(event);
        break;
      default:
        input_.handle(event);
    }
  }
  return events;
}

void SdlPlatform::handleWindow(const SDL_WindowEvent& event, std::vector<WindowEvent>& events) {
  switch (event.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
    case SDL_WINDOWEVENT_FOCUS_LOST: {
      const bool focused = event.event == SDL_WINDOWEVENT_FOCUS_GAINED;
      input_.setFocus(focused);
      events.push_back({WindowEvent::Kind::activate, focused ? 1 : 0});
      break;
    }
    case SDL_WINDOWEVENT_MOVED: {
      const Rect client = display_.clientRect();
      events.push_back({WindowEvent::Kind::move, client.left, client.top});
      break;
    }
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      display_.windowChanged();
      shell_.windowChanged();
      break;
    default:
      break;
  }
}

bool SdlPlatform::handleShortcut(const SDL_KeyboardEvent& event) {
  if (event.keysym.scancode != SDL_SCANCODE_RETURN) return false;
  if (event.type == SDL_KEYUP) return std::exchange(isShortcutDown_, false);
  if (event.repeat != 0) return isShortcutDown_;
  isShortcutDown_ = (event.keysym.mod & KMOD_ALT) != 0;
  if (isShortcutDown_) display_.toggleFullScreen();
  return isShortcutDown_;
}

SdlMachine makeSdlPlatform(SdlOptions options, std::unique_ptr<FileSystem> files) {
  auto made = std::make_unique<SdlPlatform>(std::move(options), std::move(files));
  InputQueue* input = &made->input();
  return {std::move(made), input};
}

}  // namespace footlight::platform
