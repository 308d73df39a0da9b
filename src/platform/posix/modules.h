#pragma once

#include <filesystem>

#include "platform/modules.h"

namespace footlight::platform {

// Shared libraries through the dynamic linker. Only plain names are loaded, and only from one folder: a game
// can never name a library elsewhere. A name ending in ".dll" (in any case) stands for the same name ending
// in ".so".
class PosixModules : public Modules {
 public:
  // `folder` is the engine's own folder; the default is that of the running program.
  explicit PosixModules(bool enabled = true, std::filesystem::path folder = programFolder());

  std::unique_ptr<Module> load(std::string_view plainName) override;

  // The folder of the running program; empty when the system does not tell.
  static std::filesystem::path programFolder();

 private:
  bool enabled_;
  std::filesystem::path folder_;
};

}  // namespace footlight::platform
