#pragma once

// A machine without window, sound and clock of its own: every run on it is the same to the byte. Time moves
// when `advance` or a sleep tells it, input is what was put in, the display is memory, boxes are kept.

#include <memory>
#include <string>
#include <vector>

#include "platform/headless/headless_display.h"
#include "platform/headless/headless_shell.h"
#include "platform/headless/headless_sound.h"
#include "platform/headless/virtual_clock.h"
#include "platform/input_queue.h"
#include "platform/platform.h"
#include "platform/posix/modules.h"

namespace footlight::platform {

struct HeadlessOptions {
  std::uint32_t clockStart = 10000;      // ticks at the start
  bool pacedReal = false;                // the clock waits for the machine's time
  std::int64_t unixSeconds = 946684800;  // wall clock at the start: 2000-01-01, UTC
  int bpp = 16;                          // of the desktop: 15, 16 or 32
  int windowX = 0, windowY = 0;          // where a window's client area lies on the desktop
  std::string locale = "0409";
  std::string printFolder;   // the machine's folder for printed pages; empty: no printer
  std::string recordFile;    // the machine's name of a WAV file for what was played; empty: none
  std::string moduleFolder;  // the machine's folder of external modules; empty: none are loaded
};

class HeadlessPlatform : public Platform {
 public:
  // Without `files` the machine has no disk: `files()` must not be called then.
  explicit HeadlessPlatform(HeadlessOptions options = {}, std::unique_ptr<FileSystem> files = nullptr);

  VirtualClock& clock() override { return clock_; }
  FileSystem& files() override;
  HeadlessDisplay& display() override { return display_; }
  InputQueue& input() override { return input_; }
  HeadlessShell& shell() override { return shell_; }
  PosixModules& modules() override { return modules_; }
  SoundDevice* sound() override { return &sound_; }
  // Why the file for what was played cannot be written; empty while all is well.
  std::string recordFailure() const { return sound_.recordFailure(); }
  // Ends that file. Empty, or what went wrong.
  std::string finishRecord() { return sound_.finishRecord(); }
  std::string locale() const override { return options_.locale; }
  // Gives the window events that were put in.
  std::vector<WindowEvent> pump() override;

  void put(const WindowEvent& event) { windowEvents_.push_back(event); }

 private:
  HeadlessOptions options_;
  VirtualClock clock_;
  std::unique_ptr<FileSystem> files_;
  HeadlessDisplay display_;
  InputQueue input_;
  HeadlessShell shell_;
  PosixModules modules_;
  HeadlessSound sound_;
  std::vector<WindowEvent> windowEvents_;
};

}  // namespace footlight::platform
