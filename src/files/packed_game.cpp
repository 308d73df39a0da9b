#include "files/packed_game.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "files/file_places.h"
#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::size_t kDriveBytes = 2;  // "C:"

platform::FileSystem& files() { return platform::current().files(); }

CXString parentOf(const CXString& path) { return path.Left(std::max(0, path.FindLast('\\'))); }

CXString withoutSlash(const CXString& folder) {
  return folder.lastChar() == '\\' ? folder.Left(folder.Length() - 1) : folder;
}

// The path below the root with a backslash in front; nothing for a path that lies elsewhere.
std::optional<std::string> insideOf(const CXString& root, const CXString& path) {
  const CXString folder = withoutSlash(root);
  const std::string_view whole = path.view();
  const auto length = static_cast<std::size_t>(folder.Length());
  const bool isBelow = whole.size() >= length &&
                       code_page::foldCase(whole.substr(0, length)) == code_page::foldCase(folder.view()) &&
                       (whole.size() == length || whole[length] == '\\');
  if (!isBelow || whole.empty()) return std::nullopt;
  return whole.size() == length ? "\\" : std::string(whole.substr(length));
}

}  // namespace

PackedGame::PackedGame(std::unique_ptr<CBigFile> file)
    : file_(std::move(file)), current_(withoutSlash(files().currentDirectory())), start_(current_) {}

CXString PackedGame::fullPath(const CXString& path) const {
  std::string_view rest = path.view();
  if (rest.empty() || rest.size() > limits::kNameBytes) return {};
  const bool hasDrive = rest.size() >= kDriveBytes && rest[1] == ':';
  if (hasDrive && rest[0] != 'C' && rest[0] != 'c') return {};
  if (hasDrive) rest.remove_prefix(kDriveBytes);
  const bool isRooted = !rest.empty() && (rest[0] == '\\' || rest[0] == '/');
  std::string full = isRooted ? "C:" : current_.str();
  while (!rest.empty()) {
    const std::string_view part = rest.substr(0, rest.find_first_of("\\/"));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      full.append("\\").append(part);
    } else if (full.size() > kDriveBytes) {
      full.resize(full.rfind('\\'));
    }
  }
  return full.size() <= limits::kNameBytes ? CXString(full) : CXString();
}

// The names inside the big file that a path may have. Below a data root that the big file holds in its own
// place nothing else is meant.
std::vector<std::string> PackedGame::insideNames(const CXString& path) const {
  std::vector<std::string> names;
  const CXString full = fullPath(path);
  const CFilePlaces* places = CFilePlaces::current();
  const CXString root = places != nullptr ? places->rootPath() : start_;
  const CXString dataRoot = places != nullptr ? places->dataRoot() : start_;
  if (const auto below = insideOf(root, full)) names.emplace_back(*below);
  const auto dataBelow = insideOf(root, withoutSlash(dataRoot));
  const bool hasDataRoot = dataBelow && *dataBelow != "\\" && file_->findFolder(*dataBelow) != nullptr;
  const auto below = insideOf(dataRoot, full);
  if (below && !hasDataRoot && (names.empty() || names.front() != *below)) names.emplace_back(*below);
  return names;
}

const BigFileRecord* PackedGame::find(const CXString& path) const {
  for (const std::string& name : insideNames(path)) {
    if (const BigFileRecord* record = file_->find(name)) return record;
  }
  return nullptr;
}

const BigFileEntry* PackedGame::findFolder(const CXString& path) const {
  for (const std::string& name : insideNames(path)) {
    if (const BigFileEntry* folder = file_->findFolder(name)) return folder;
  }
  return nullptr;
}

void PackedGame::changeDirectory(const CXString& path) {
  const CXString full = fullPath(path);
  if (full.IsEmpty()) return;
  const BigFileEntry* folder = findFolder(full);
  if (!files().changeDirectory(full + "\\") && folder == nullptr) return;
  current_ = full;
  file_->enter(folder);
}

std::unique_ptr<platform::FileHandle> PackedGame::open(const CXString& path) const {
  const BigFileRecord* record = find(path);
  return record != nullptr ? file_->openEntry(*record) : nullptr;
}

std::unique_ptr<FileSearch> PackedGame::findFirst(const CXString& pattern, FileFindData* data) {
  const bool wantsFolder = (data->attributes & FileFindData::kDirectory) != 0;
  const int slash = pattern.FindLast('\\');
  const BigFileEntry* own = findFolder(".");
  const BigFileEntry* folder = slash < 0 ? own : findFolder(pattern.Left(slash + 1));
  if (folder == nullptr) return nullptr;
  file_->enter(folder);
  const int handle = file_->FindFirst(pattern.Right(slash + 1), data);
  file_->enter(own);
  if (handle < 0 || (wantsFolder && (data->attributes & FileFindData::kDirectory) == 0)) return nullptr;
  return std::make_unique<FileSearch>();
}

bool PackedGame::makeFoldersFor(const CXString& path) const {
  const CXString folder = parentOf(fullPath(path));
  if (folder.IsEmpty() || files().directoryExists(folder + "\\") || findFolder(folder) == nullptr)
    return false;
  makeFoldersFor(folder);
  return files().makeDirectory(folder);
}

}  // namespace footlight
