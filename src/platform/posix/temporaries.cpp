#include "platform/posix/temporaries.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace footlight::platform {

namespace {

constexpr std::string_view kPrefix = ".footlight-";
constexpr std::string_view kSuffix = ".tmp";
constexpr int kMostNames = 20000;  // looked at in one clearing

struct CloseDirectory {
  void operator()(DIR* stream) const { ::closedir(stream); }
};
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

// Takes the descriptor; null, with it closed, when it is no folder's.
DirectoryStream streamOf(int folder) {
  DirectoryStream stream(folder < 0 ? nullptr : ::fdopendir(folder));
  if (stream == nullptr && folder >= 0) ::close(folder);
  return stream;
}

bool takeNumber(std::string_view& text, std::int64_t* number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return error == std::errc() && *number > 0;
}

// The process in a name that is wholly of our form.
std::optional<pid_t> makerOf(std::string_view name) {
  if (!isTemporaryName(name)) return std::nullopt;
  name = name.substr(kPrefix.size(), name.size() - kPrefix.size() - kSuffix.size());
  std::int64_t process = 0;
  std::int64_t count = 0;
  if (!takeNumber(name, &process) || !name.starts_with('-')) return std::nullopt;
  name.remove_prefix(1);
  if (!takeNumber(name, &count) || !name.empty() || process > INT32_MAX) return std::nullopt;
  return static_cast<pid_t>(process);
}

// Numbers of processes are used again, and one of another container means nothing here: the
// lock decides then.
bool isAlive(pid_t process) { return process != ::getpid() && (::kill(process, 0) == 0 || errno == EPERM); }

bool isLocked(int folder, const char* name) {
  const int file = ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return true;
  const bool locked = ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(file);
  return locked;
}

void clearOne(int folder, const char* name) {
  const std::optional<pid_t> maker = makerOf(name);
  struct stat status {};
  if (!maker || isAlive(*maker) || ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return;
  if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid() || isLocked(folder, name)) return;
  ::unlinkat(folder, name, 0);
}

bool isFolder(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status {};
  return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::string newTemporaryName() {
  static std::atomic<std::uint64_t> number = 0;
  return std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::to_string(++number) +
         std::string(kSuffix);
}

bool isTemporaryName(std::string_view name) {
  return name.size() > kPrefix.size() + kSuffix.size() && name.starts_with(kPrefix) &&
         name.ends_with(kSuffix);
}

void clearTemporaries(int folder) {
  const DirectoryStream stream = streamOf(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int left = kMostNames; stream && left > 0; --left) {
    const dirent* entry = ::readdir(stream.get());
    if (entry == nullptr) return;
    clearOne(folder, entry->d_name);
  }
}

void clearTemporariesBelow(const std::string& folder) {
  std::deque<std::string> waiting{folder};
  for (int left = kMostNames; !waiting.empty() && left > 0; waiting.pop_front()) {
    const std::string path = waiting.front();
    const DirectoryStream stream =
        streamOf(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    while (stream && left-- > 0) {
      const dirent* entry = ::readdir(stream.get());
      if (entry == nullptr) break;
      const std::string_view name = entry->d_name;
      clearOne(::dirfd(stream.get()), entry->d_name);
      if (name != "." && name != ".." && isFolder(::dirfd(stream.get()), *entry))
        waiting.push_back(path + "/" + std::string(name));
    }
  }
}

}  // namespace footlight::platform
