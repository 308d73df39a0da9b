#include "platform/headless/headless_platform.h"

#include <cassert>
#include <utility>

namespace footlight::platform {

HeadlessPlatform::HeadlessPlatform(HeadlessOptions options, std::unique_ptr<FileSystem> files)
    : options_(std::move(options)),
      clock_(options_.clockStart, options_.unixSeconds, options_.pacedReal),
      files_(std::move(files)),
      display_(options_.bpp, options_.windowX, options_.windowY),
      input_(/*wantsPollingThread=*/false),
      shell_(options_.printFolder),
      modules_(options_.moduleFolder, files_.get()),
      sound_(options_.recordFile) {
  clock_.follow([this](std::uint32_t milliseconds) { sound_.advance(milliseconds); });
}

FileSystem& HeadlessPlatform::files() {
  assert(files_ != nullptr);
  return *files_;
}

std::vector<WindowEvent> HeadlessPlatform::pump() { return std::exchange(windowEvents_, {}); }

}  // namespace footlight::platform
