#include "platform/posix/modules.h"

#include <cctype>
#include <dlfcn.h>
#include <system_error>
#include <utility>

namespace footlight::platform {

namespace {

class PosixModule : public Module {
 public:
  explicit PosixModule(void* handle) : handle_(handle) {}
  PosixModule(const PosixModule&) = delete;
  PosixModule& operator=(const PosixModule&) = delete;
  ~PosixModule() override { dlclose(handle_); }

  void* find(const char* name) const override { return dlsym(handle_, name); }

 private:
  void* handle_;
};

bool isPlainName(std::string_view name) {
  if (name.empty() || name == "." || name == ".." || name.size() > 255) return false;
  for (const char c : name) {
    if (c == '/' || c == '\\' || c == ':' || static_cast<unsigned char>(c) < 0x20) return false;
  }
  return true;
}

std::string systemName(std::string_view plainName) {
  constexpr std::string_view kForeign = ".dll";
  std::string name(plainName);
  if (name.size() <= kForeign.size()) return name;
  const std::size_t stem = name.size() - kForeign.size();
  for (std::size_t i = 0; i < kForeign.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(name[stem + i])) != kForeign[i]) return name;
  }
  return name.substr(0, stem) + ".so";
}

}  // namespace

PosixModules::PosixModules(std::string folder, const FileSystem* files)
    : folder_(std::move(folder)), files_(files) {}

std::optional<std::filesystem::path> PosixModules::safeFolder(std::string* why) const {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::canonical(folder_, error);
  if (folder_.empty()) {
    *why = "no folder of modules is named";
  } else if (error || !std::filesystem::is_directory(folder, error)) {
    *why = "there is no such folder";
  } else if (files_ != nullptr && files_->mayWrite(folder.string())) {
    *why = "lies where the game may write";
  } else {
    return folder;
  }
  return std::nullopt;
}

std::string PosixModules::refusal() const {
  std::string why;
  safeFolder(&why);
  return why;
}

std::unique_ptr<Module> PosixModules::load(std::string_view plainName) {
  std::string why;
  const std::optional<std::filesystem::path> folder = safeFolder(&why);
  if (!folder || !isPlainName(plainName)) return nullptr;
  const std::filesystem::path path = *folder / systemName(plainName);
  std::error_code error;
  // A link could lead out of the folder, so only a file that lies there is loaded.
  if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error))) return nullptr;
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  return handle == nullptr ? nullptr : std::make_unique<PosixModule>(handle);
}

std::filesystem::path PosixModules::programFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace footlight::platform
