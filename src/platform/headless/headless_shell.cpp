#include "platform/headless/headless_shell.h"

namespace footlight::platform {

void HeadlessShell::messageBox(std::string_view caption, std::string_view text) {
  ++boxCount_;
  if (boxes_.size() < kRememberedBoxes) boxes_.push_back({std::string(caption), std::string(text)});
}

}  // namespace footlight::platform
