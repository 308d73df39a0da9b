#pragma once

#include <string>
#include <utility>

#include "platform/shell.h"

namespace footlight::platform {

// A shell whose printer is a folder: every page becomes the picture "NAME.png" there, the newest one stays.
class FileShell : public Shell {
 public:
  // `folder` is the machine's name of the folder; without one nothing is printed.
  explicit FileShell(std::string folder) : printFolder_(std::move(folder)) {}

  bool print(const PrintPage& page) override;

 private:
  std::string printFolder_;
};

}  // namespace footlight::platform
