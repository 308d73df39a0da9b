#pragma once

// How the program comes to the player's machine; what it is made of stays behind this.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/platform.h"

namespace footlight::platform {

class InputQueue;

struct SdlOptions {
  int bpp = 16;                             // of the engine's screen in a window: 15, 16 or 32
  std::string title = "Footlight";          // UTF-8
  std::string locale;                       // empty: the environment's
  std::optional<std::int64_t> unixSeconds;  // wall clock at the start; by default the machine's
  std::string printFolder;                  // the machine's folder for printed pages; empty: no printer
  std::string moduleFolder;  // the machine's folder of external modules; empty: none are loaded
};

struct SdlMachine {
  std::unique_ptr<Platform> platform;
  InputQueue* input;  // the platform's own
};

// See SdlPlatform. To be used on one thread.
SdlMachine makeSdlPlatform(SdlOptions options, std::unique_ptr<FileSystem> files);

}  // namespace footlight::platform
