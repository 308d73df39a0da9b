#include "platform/posix/file_system.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/temporaries.h"

namespace footlight::platform {

namespace {

constexpr std::int64_t kSecond = 1000000000;
// A directory that changed less than this before it was read may have changed again under the same time
// stamp: disks that keep fractions of a second step by the system's timer, others by up to two seconds.
constexpr std::int64_t kFineDoubt = kSecond / 20;
constexpr std::int64_t kCoarseDoubt = 2 * kSecond;
constexpr std::size_t kDirectoriesKept = 4096;

std::int64_t nanoseconds(const timespec& time) { return std::int64_t{time.tv_sec} * kSecond + time.tv_nsec; }

std::int64_t now() {
  timespec time{};
  ::clock_gettime(CLOCK_REALTIME, &time);
  return nanoseconds(time);
}

struct CloseDirectory {
  void operator()(DIR* stream) const { ::closedir(stream); }
};

std::optional<std::string> canonical(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::optional<std::string>(real.get()) : std::nullopt;
}

std::string join(const std::string& directory, const std::string& name) {
  return directory.ends_with('/') ? directory + name : directory + "/" + name;
}

std::string parentOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

bool isLink(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// Opens a plain file; never waits for a pipe and never follows a link: the path is canonical already.
int openPlain(const std::string& path, int flags) {
  const int file = ::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0666);
  if (file < 0) return -1;
  struct stat status {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) return file;
  ::close(file);
  return -1;
}

class FolderLock final : public FileLock {
 public:
  explicit FolderLock(const std::string& folder)
      : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    constexpr timespec kPause = {0, 1000000};
    for (int left = 1000; folder_ >= 0 && !isHeld_ && left > 0; --left) {
      isHeld_ = ::flock(folder_, LOCK_EX | LOCK_NB) == 0;
      if (!isHeld_ && errno != EWOULDBLOCK) return;
      if (!isHeld_) ::nanosleep(&kPause, nullptr);
    }
  }
  ~FolderLock() override {
    if (folder_ >= 0) ::close(folder_);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool isHeld() const { return isHeld_; }

 private:
  int folder_;
  bool isHeld_ = false;
};

}  // namespace

struct PosixFileSystem::Directory {
  std::string path;  // canonical
  dev_t device = 0;
  ino_t node = 0;
  std::int64_t modified = 0;
  std::int64_t readAt = 0;
  bool isRead = false;
  std::unordered_map<std::string, std::vector<std::string>> names;  // folded engine name to names on the disk

  // Looks whether this is still the directory that it was; drops the listing when it may have changed.
  bool refresh() {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
    const std::int64_t stamp = nanoseconds(status.st_mtim);
    if (status.st_dev != device || status.st_ino != node) return false;
    if (stamp != modified) isRead = false;
    modified = stamp;
    return true;
  }

  bool isDoubtful() const {
    return readAt - modified < (modified % kSecond != 0 ? kFineDoubt : kCoarseDoubt);
  }

  void read() {
    names.clear();
    readAt = now();
    isRead = true;
    const std::unique_ptr<DIR, CloseDirectory> stream(::opendir(path.c_str()));
    if (!stream) return;
    while (const dirent* entry = ::readdir(stream.get())) {
      const std::string_view name = entry->d_name;
      if (name == "." || name == ".." || isTemporaryName(name)) continue;
      const std::optional<std::string> engine = code_page::fromUtf8(name);
      if (!engine || std::any_of(engine->begin(), engine->end(), EnginePath::isControl) ||
          engine->find('\\') != std::string::npos) {
        continue;
      }
      names[code_page::foldCase(*engine)].emplace_back(name);
    }
  }

  const std::string* find(const std::string& folded, const std::string& exact) const {
    const auto found = names.find(folded);
    if (found == names.end()) return nullptr;
    const std::vector<std::string>& candidates = found->second;
    const auto same = std::find(candidates.begin(), candidates.end(), exact);
    return &*(same != candidates.end() ? same : std::min_element(candidates.begin(), candidates.end()));
  }
};

// An open file. One that is written anew takes its target's name at commit.
class PosixFileSystem::Handle final : public FileHandle {
 public:
  Handle(int file, const char* mode) : stream_(::fdopen(file, mode)) {
    if (stream_ == nullptr) ::close(file);
  }
  // The file is open.
  Handle(std::unique_ptr<AtomicFile> file, std::string folder, const PosixFileSystem& owner)
      : stream_(file->stream()), written_(std::move(file)), folder_(std::move(folder)), owner_(&owner) {}
  ~Handle() override { commit(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  std::size_t read(std::span<std::byte> target) override {
    if (target.empty() || !turn(Direction::reading)) return 0;
    return std::fread(target.data(), 1, target.size(), stream_);
  }

  std::size_t write(std::span<const std::byte> source) override {
    if (source.empty() || !turn(Direction::writing)) return 0;
    return std::fwrite(source.data(), 1, source.size(), stream_);
  }

  bool seek(std::int64_t position) override {
    return stream_ != nullptr && position >= 0 && ::fseeko(stream_, position, SEEK_SET) == 0;
  }

  std::int64_t tell() const override { return stream_ != nullptr ? ::ftello(stream_) : 0; }

  std::int64_t length() const override {
    struct stat status {};
    if (stream_ == nullptr) return 0;
    if (direction_ == Direction::writing) std::fflush(stream_);
    return ::fstat(::fileno(stream_), &status) == 0 ? status.st_size : 0;
  }

  // Makes the commit leave the old file.
  void abandon() { abandoned_ = true; }

  bool commit() override {
    if (stream_ == nullptr) return committed_;
    std::FILE* stream = std::exchange(stream_, nullptr);
    if (written_ == nullptr) {
      const bool good = std::fflush(stream) == 0 && std::ferror(stream) == 0;
      return committed_ = std::fclose(stream) == 0 && good;
    }
    committed_ = !abandoned_ && written_->commit();
    written_.reset();
    owner_->forget(folder_);
    return committed_;
  }

 private:
  enum class Direction { none, reading, writing };

  // The C library wants a seek between reading and writing.
  bool turn(Direction direction) {
    if (stream_ == nullptr) return false;
    if (direction_ != Direction::none && direction_ != direction) ::fseeko(stream_, 0, SEEK_CUR);
    direction_ = direction;
    return true;
  }

  std::FILE* stream_ = nullptr;
  Direction direction_ = Direction::none;
  std::unique_ptr<AtomicFile> written_;
  std::string folder_;  // of what is written
  const PosixFileSystem* owner_ = nullptr;
  bool abandoned_ = false;
  bool committed_ = false;
};

PosixFileSystem::PosixFileSystem(std::string_view startDirectory)
    : start_(canonical(std::string(startDirectory)).value_or(std::string(startDirectory))) {
  current_ = EnginePath::of(toEnginePath(start_)).value_or(EnginePath());
  roots_.push_back(start_);
}

PosixFileSystem::~PosixFileSystem() = default;

// Names

std::string PosixFileSystem::diskName(const std::string& component) const {
  const auto alias = aliases_.find(code_page::foldCase(component));
  return alias != aliases_.end() ? alias->second : code_page::toUtf8(component);
}

std::string PosixFileSystem::engineName(const std::string& diskName) const {
  const std::optional<std::string> name = code_page::fromUtf8(diskName);
  const bool isPlain = name && std::none_of(name->begin(), name->end(), [](char character) {
                         return EnginePath::isControl(character) || EnginePath::isSeparator(character);
                       });
  if (isPlain) return *name;
  for (const auto& [alias, disk] : aliases_) {
    if (disk == diskName) return alias;
  }
  std::string alias = "~U" + std::to_string(aliases_.size() + 1);
  aliases_.emplace(alias, diskName);
  return alias;
}

std::string PosixFileSystem::toEnginePath(std::string_view machinePath) const {
  std::string path = machinePath.starts_with('/') ? std::string() : start_ + "/";
  path += machinePath;
  std::vector<std::string> parts;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string part = path.substr(start, end - start);
    start = end + 1;
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(engineName(part));
    } else if (!parts.empty()) {
      parts.pop_back();
    }
  }
  std::string result = "C:";
  for (const std::string& part : parts) result += "\\" + part;
  return parts.empty() ? "C:\\" : result;
}

std::string PosixFileSystem::toMachinePath(std::string_view enginePath) const {
  if (const std::optional<std::string> existing = findExisting(enginePath)) return *existing;
  return findTarget(enginePath).value_or("");
}

std::string PosixFileSystem::currentDirectory() const { return current_.folderText(); }

bool PosixFileSystem::changeDirectory(std::string_view path) {
  if (!findDirectory(path)) return false;
  current_ = *EnginePath::of(path, current_);
  return true;
}

void PosixFileSystem::allowRoot(std::string_view path) {
  const std::optional<EnginePath> place = EnginePath::of(path, current_);
  const Directory* directory = place ? enter(*place) : nullptr;
  if (directory != nullptr) roots_.push_back(directory->path);
}

void PosixFileSystem::allowReading(std::string_view path) {
  if (std::optional<std::string> file = findAnywhere(path)) readable_.push_back(std::move(*file));
}

bool PosixFileSystem::mayWrite(std::string_view machineFolder) const {
  const std::optional<std::string> real = canonical(std::string(machineFolder));
  return !real || isAllowed(*real);
}

void PosixFileSystem::clearLeftovers() {
  for (const std::string& root : roots_) clearTemporariesBelow(root);
  directories_.clear();
}

// Looking up

bool PosixFileSystem::isAllowed(std::string_view canonicalPath) const {
  return std::any_of(roots_.begin(), roots_.end(), [&](const std::string& root) {
    if (root == "/" || canonicalPath == root) return true;
    return canonicalPath.starts_with(root) && canonicalPath[root.size()] == '/';
  });
}

// The remembered directory of a canonical path; null when it is gone or was replaced by another.
PosixFileSystem::Directory* PosixFileSystem::enterMachine(const std::string& canonicalPath) const {
  std::unique_ptr<Directory>& directory = directories_[canonicalPath];
  if (directory != nullptr && directory->refresh()) return directory.get();
  struct stat status {};
  if (::stat(canonicalPath.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || directory != nullptr) {
    directories_.erase(canonicalPath);
    return nullptr;
  }
  directory = std::make_unique<Directory>();
  directory->path = canonicalPath;
  directory->device = status.st_dev;
  directory->node = status.st_ino;
  directory->modified = nanoseconds(status.st_mtim);
  return directory.get();
}

// The directory of that name; null when there is none.
PosixFileSystem::Directory* PosixFileSystem::enter(const EnginePath& path) const {
  const std::vector<std::string>& components = path.parts();
  const std::size_t count = components.size();
  if (known_.size() > kDirectoriesKept || directories_.size() > kDirectoriesKept) {
    known_.clear();
    directories_.clear();
  }
  std::vector<std::size_t> ends{0};  // of each component in the key
  std::string key;
  for (std::size_t i = 0; i < count; ++i) {
    key += "\\" + code_page::foldCase(components[i]);
    ends.push_back(key.size());
  }
  std::size_t level = count;
  Directory* directory = nullptr;
  for (; level > 0 && directory == nullptr; --level) {
    const auto known = known_.find(key.substr(0, ends[level]));
    if (known == known_.end()) continue;
    directory = enterMachine(known->second);
    if (directory != nullptr) break;
    known_.erase(known);
  }
  if (directory == nullptr) directory = enterMachine("/");
  bool crossedLink =
      false;  // links may be turned elsewhere unnoticed: what lies behind them is not remembered
  for (; directory != nullptr && level < count; ++level) {
    const std::optional<std::string> name = lookUp(*directory, components[level]);
    const std::string entry = name ? join(directory->path, *name) : std::string();
    const std::optional<std::string> real = name ? canonical(entry) : std::nullopt;
    crossedLink = crossedLink || real != entry;
    directory = real ? enterMachine(*real) : nullptr;
    if (directory == nullptr && real) directory = enterMachine(*real);  // the remembered one was replaced
    if (directory != nullptr && !crossedLink) known_[key.substr(0, ends[level + 1])] = directory->path;
  }
  return directory;
}

// The name on the disk of an entry; nothing when there is none.
std::optional<std::string> PosixFileSystem::lookUp(Directory& directory, const std::string& component) const {
  const std::string exact = diskName(component);
  const std::string folded = code_page::foldCase(component);
  if (directory.isRead) {
    if (const std::string* name = directory.find(folded, exact)) return *name;
    if (!directory.isDoubtful() && !aliases_.contains(folded)) return std::nullopt;
  }
  struct stat status {};
  if (::lstat(join(directory.path, exact).c_str(), &status) == 0) return exact;
  directory.read();
  const std::string* name = directory.find(folded, exact);
  return name != nullptr ? std::optional(*name) : std::nullopt;
}

// Drops what is remembered of a directory that was just written to.
void PosixFileSystem::forget(const std::string& path) const {
  const auto found = directories_.find(path);
  if (found != directories_.end()) found->second->isRead = false;
}

std::optional<PosixFileSystem::Place> PosixFileSystem::find(std::string_view path) const {
  const std::optional<EnginePath> place = EnginePath::of(path, current_);
  if (!place) return std::nullopt;
  if (place->isRoot()) return Place{"/", "", true};
  Directory* directory = enter(place->parent());
  if (directory == nullptr) return std::nullopt;
  const std::string& last = place->parts().back();
  const std::optional<std::string> name = lookUp(*directory, last);
  return Place{directory->path, name.value_or(diskName(last)), name.has_value()};
}

std::optional<std::string> PosixFileSystem::findAnywhere(std::string_view path) const {
  const std::optional<Place> place = find(path);
  return place && place->exists ? canonical(place->path()) : std::nullopt;
}

std::optional<std::string> PosixFileSystem::findExisting(std::string_view path) const {
  std::optional<std::string> real = findAnywhere(path);
  return real && isAllowed(*real) ? real : std::nullopt;
}

std::optional<std::string> PosixFileSystem::findReadable(std::string_view path) const {
  std::optional<std::string> real = findAnywhere(path);
  const bool isReadable =
      real && (isAllowed(*real) || std::find(readable_.begin(), readable_.end(), *real) != readable_.end());
  return isReadable ? real : std::nullopt;
}

std::optional<std::string> PosixFileSystem::findDirectory(std::string_view path) const {
  std::optional<std::string> real = findExisting(path);
  struct stat status {};
  if (!real || ::stat(real->c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return real;
}

std::optional<std::string> PosixFileSystem::findTarget(std::string_view path) const {
  const std::optional<Place> place = find(path);
  if (!place) return std::nullopt;
  if (place->exists) return isLink(place->path()) ? std::nullopt : findExisting(path);
  if (place->name.size() > NAME_MAX || isTemporaryName(place->name)) return std::nullopt;
  return isAllowed(place->path()) ? std::optional(place->path()) : std::nullopt;
}

// Reading and writing

std::unique_ptr<FileHandle> PosixFileSystem::open(std::string_view path, OpenMode mode) {
  const std::optional<std::string> target = mode == OpenMode::read ? findReadable(path) : findTarget(path);
  if (!target) return nullptr;
  if (mode == OpenMode::write) return openForWriting(*target, true);
  const bool reads = mode == OpenMode::read;
  const int file = openPlain(*target, reads ? O_RDONLY : O_RDWR | O_CREAT);
  if (file < 0) return nullptr;
  if (!reads) forget(parentOf(*target));
  return std::make_unique<Handle>(file, reads ? "rb" : "r+b");
}

std::unique_ptr<PosixFileSystem::Handle> PosixFileSystem::openForWriting(const std::string& target,
                                                                         bool durable) const {
  auto file = std::make_unique<AtomicFile>(target, durable);
  if (file->stream() == nullptr) return nullptr;
  return std::make_unique<Handle>(std::move(file), parentOf(target), *this);
}

bool PosixFileSystem::fileExists(std::string_view path) {
  const std::optional<std::string> real = findReadable(path);
  struct stat status {};
  return real && ::stat(real->c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::access(real->c_str(), R_OK) == 0;
}

std::optional<FileStamp> PosixFileSystem::stamp(std::string_view path) {
  const std::optional<std::string> real = findReadable(path);
  struct stat status {};
  if (!real || ::stat(real->c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return FileStamp{status.st_size, nanoseconds(status.st_mtim), status.st_ino};
}

bool PosixFileSystem::directoryExists(std::string_view path) { return findDirectory(path).has_value(); }

std::vector<DirectoryEntry> PosixFileSystem::list(std::string_view path) {
  const std::optional<std::string> real = findDirectory(path);
  Directory* directory = real ? enterMachine(*real) : nullptr;
  if (directory == nullptr && real) directory = enterMachine(*real);
  if (directory == nullptr) return {};
  if (!directory->isRead || directory->isDoubtful()) directory->read();
  std::vector<std::pair<std::string, DirectoryEntry>> sorted;  // by the folded name, then by the name itself
  for (const auto& [folded, names] : directory->names) {
    for (const std::string& name : names) {
      const std::string entry = join(*real, name);
      struct stat status {};
      if (::lstat(entry.c_str(), &status) != 0) continue;
      const bool isLink = S_ISLNK(status.st_mode);
      if (isLink) {
        const std::optional<std::string> target = canonical(entry);
        if (!target || !isAllowed(*target) || ::stat(target->c_str(), &status) != 0) continue;
      }
      if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode)) continue;
      sorted.push_back({folded, {engineName(name), S_ISDIR(status.st_mode), status.st_size, isLink}});
    }
  }
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
    return std::tie(a.first, a.second.name) < std::tie(b.first, b.second.name);
  });
  std::vector<DirectoryEntry> result;
  result.reserve(sorted.size());
  for (auto& [folded, entry] : sorted) {
    if (entry.isDirectory) entry.size = 0;
    result.push_back(std::move(entry));
  }
  return result;
}

bool PosixFileSystem::writeWhole(std::string_view path, std::span<const std::byte> content, bool durable) {
  const std::optional<std::string> target = findTarget(path);
  const std::unique_ptr<Handle> file = target ? openForWriting(*target, durable) : nullptr;
  if (file == nullptr) return false;
  file->write(content);
  return file->commit();
}

std::optional<std::vector<std::byte>> PosixFileSystem::readWhole(std::string_view path, std::int64_t limit) {
  const std::unique_ptr<FileHandle> file = open(path, OpenMode::read);
  if (file == nullptr || file->length() > limit) return std::nullopt;
  std::vector<std::byte> content(static_cast<std::size_t>(file->length()));
  content.resize(file->read(content));
  return content;
}

// A file that is written takes another one's place, so the lock is its folder's.
std::unique_ptr<FileLock> PosixFileSystem::lock(std::string_view path) {
  const std::optional<std::string> target = findTarget(path);
  if (!target) return nullptr;
  auto lock = std::make_unique<FolderLock>(parentOf(*target));
  return lock->isHeld() ? std::move(lock) : nullptr;
}

bool PosixFileSystem::copy(std::string_view from, std::string_view to) {
  const std::optional<std::string> target = findTarget(to);
  const std::unique_ptr<FileHandle> source = open(from, OpenMode::read);
  if (source == nullptr || !target || findExisting(from) == target) return false;
  const std::unique_ptr<Handle> copied = openForWriting(*target, true);
  if (copied == nullptr) return false;
  std::vector<std::byte> chunk(std::size_t{1} << 16);
  while (const std::size_t count = source->read(chunk)) copied->write(std::span(chunk).first(count));
  if (copied->tell() != source->length()) copied->abandon();
  return copied->commit();
}

bool PosixFileSystem::remove(std::string_view path) {
  // A link goes itself, not what it leads to.
  const std::optional<Place> place = find(path);
  struct stat status {};
  if (!place || !place->exists || !isAllowed(place->path()) || ::lstat(place->path().c_str(), &status) != 0 ||
      S_ISDIR(status.st_mode) || ::unlink(place->path().c_str()) != 0) {
    return false;
  }
  forget(place->directory);
  return true;
}

bool PosixFileSystem::makeDirectory(std::string_view path) {
  const std::optional<Place> place = find(path);
  const std::optional<std::string> target = place && !place->exists ? findTarget(path) : std::nullopt;
  if (!target || ::mkdir(target->c_str(), 0777) != 0) return false;
  forget(place->directory);
  return true;
}

}  // namespace footlight::platform
