#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/file_system.h"
#include "platform/modules.h"

namespace footlight::platform {

// Shared libraries through the dynamic linker. A library is code of the machine that nothing holds back, so a
// game must never be able to make one: only plain names are loaded, only plain files, and only from one
// folder that whoever starts the program names and that lies where no game may write, links followed. A name
// ending in ".dll" (in any case) stands for the same name ending in ".so".
class PosixModules : public Modules {
 public:
  // `folder` is the machine's name; with an empty one nothing is loaded. `files`, which tells where games may
  // write, must outlive this; without it there is no disk for them.
  explicit PosixModules(std::string folder = {}, const FileSystem* files = nullptr);

  std::unique_ptr<Module> load(std::string_view plainName) override;
  std::string refusal() const override;

  // The folder of the running program; empty when the system does not tell.
  static std::filesystem::path programFolder();

 private:
  // The folder, links followed; nothing, and the reason in `why`, when none may be used. Asked anew each
  // time: both the folder and the places for writing may have changed.
  std::optional<std::filesystem::path> safeFolder(std::string* why) const;

  std::string folder_;
  const FileSystem* files_;
};

}  // namespace footlight::platform
