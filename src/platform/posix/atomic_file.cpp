#include "platform/posix/atomic_file.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/posix/temporaries.h"

namespace footlight::platform {

namespace {

constexpr unsigned kPermissions = 0777;

// Before the first file of a folder, what others left there goes.
void clearOnce(int folder) {
  constexpr std::size_t kMostRemembered = 4096;
  static std::mutex mutex;
  static std::set<std::pair<dev_t, ino_t>> cleared;
  struct stat status {};
  const std::scoped_lock lock(mutex);
  if (::fstat(folder, &status) != 0 || cleared.size() >= kMostRemembered) return;
  if (cleared.emplace(status.st_dev, status.st_ino).second) clearTemporaries(folder);
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& target, bool durable)
    : target_(target.substr(target.rfind('/') + 1)), durable_(durable) {
  if (target.find('\0') != std::string::npos || target_.empty() || target_ == "." || target_ == "..") {
    fail("is no name of a file");
  } else if (openFolder(folderOf(target)) && isPlainTarget()) {
    openTemporary();
  }
}

AtomicFile::~AtomicFile() {
  if (stream_ != nullptr) std::fclose(stream_);
  if (!temporary_.empty()) ::unlinkat(folder_, temporary_.c_str(), 0);
  if (folder_ >= 0) ::close(folder_);
}

// A folder that may be written but not listed serves too.
bool AtomicFile::openFolder(const std::string& path) {
  folder_ = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder_ < 0 && errno == EACCES) folder_ = ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  if (folder_ >= 0) return true;
  if (errno == ENOENT || errno == ENOTDIR) return fail("there is no such folder");
  return failByError();
}

bool AtomicFile::isPlainTarget() {
  struct stat status {};
  if (::fstatat(folder_, target_.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT || failByError();
  if (S_ISLNK(status.st_mode)) return fail("is a link, which is not written through");
  if (S_ISDIR(status.st_mode)) return fail("is a folder");
  if (!S_ISREG(status.st_mode)) return fail("is no plain file");
  if (::faccessat(folder_, target_.c_str(), W_OK, AT_EACCESS) != 0) return failByError();
  oldMode_ = status.st_mode & kPermissions;
  return true;
}

void AtomicFile::openTemporary() {
  clearOnce(folder_);
  int file = -1;
  for (int attempt = 0; file < 0 && attempt < 100; ++attempt) {
    temporary_ = newTemporaryName();
    file = ::openat(folder_, temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0 && errno != EEXIST) break;
  }
  if (file < 0) {
    temporary_.clear();
    failByError();
    return;
  }
  ::flock(file, LOCK_EX | LOCK_NB);  // says that somebody is still at it
  // Where the disk knows no permissions the new file keeps its own.
  if (oldMode_ != 0 && ::fchmod(file, oldMode_) != 0) errno = 0;
  stream_ = ::fdopen(file, "w+b");
  if (stream_ == nullptr) {
    failByError();
    ::close(file);
  }
}

bool AtomicFile::write(std::span<const std::byte> bytes) {
  if (stream_ == nullptr) return false;
  return std::fwrite(bytes.data(), 1, bytes.size(), stream_) == bytes.size() || failByError();
}

bool AtomicFile::flush() {
  if (stream_ == nullptr || !failure_.empty()) return false;
  return (std::fflush(stream_) == 0 && std::ferror(stream_) == 0) || failByError();
}

bool AtomicFile::publish() {
  if (!flush()) return false;
  if (durable_ && ::fsync(::fileno(stream_)) != 0) return failByError();
  return takeName();
}

// What stood under the name may have changed since the beginning.
bool AtomicFile::takeName() {
  if (temporary_.empty()) return true;
  if (!isPlainTarget()) return false;
  if (::renameat(folder_, temporary_.c_str(), folder_, target_.c_str()) != 0) return failByError();
  temporary_.clear();
  // Folders of some disks cannot be waited for; the file is in its place all the same.
  if (durable_) ::fsync(folder_);
  return true;
}

bool AtomicFile::commit() {
  if (!flush()) return false;
  if (durable_ && ::fsync(::fileno(stream_)) != 0) return failByError();
  if (std::fclose(std::exchange(stream_, nullptr)) != 0) return failByError();
  return takeName();
}

bool AtomicFile::fail(std::string why) {
  if (failure_.empty()) failure_ = std::move(why);
  return false;
}

bool AtomicFile::failByError() {
  const int error = errno;
  return fail("cannot be written: " + std::generic_category().message(error != 0 ? error : EIO));
}

std::string writeAtomically(const std::string& target, std::span<const std::byte> bytes, bool durable) {
  AtomicFile file(target, durable);
  file.write(bytes);
  return file.commit() ? std::string() : file.failure();
}

}  // namespace footlight::platform
