#include "files/packed_game.h"

#include <algorithm>
#include <array>
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
std::optional<std::string_view> insideOf(const CXString& root, const CXString& path) {
  const CXString folder = withoutSlash(root);
  const std::string_view whole = path.view();
  const auto length = static_cast<std::size_t>(folder.Length());
  if (whole.size() < length ||
      code_page::foldCase(whole.substr(0, length)) != code_page::foldCase(folder.view()))
    return std::nullopt;
  const std::string_view rest = whole.substr(length);
  return rest.empty() ? std::string_view("\\") : rest.front() == '\\' ? std::optional(rest) : std::nullopt;
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

// Visits the names inside the big file that a path may have, until one gives something.
template <class Visit>
auto PackedGame::visitInside(const CXString& path, Visit visit) const {
  const CXString full = fullPath(path);
  const CFilePlaces* places = CFilePlaces::current();
  const std::array roots{places != nullptr ? places->dataRoot() : start_,
                         places != nullptr ? places->rootPath() : start_};
  decltype(visit(std::string_view())) found = nullptr;
  for (const CXString& root : roots) {
    const auto inside = full.IsString() ? insideOf(root, full) : std::nullopt;
    if (found == nullptr && inside) found = visit(*inside);
  }
  return found;
}

const BigFileRecord* PackedGame::find(const CXString& path) const {
  return visitInside(path, [this](std::string_view name) { return file_->find(name); });
}

const BigFileEntry* PackedGame::findFolder(const CXString& path) const {
  return visitInside(path, [this](std::string_view name) { return file_->findFolder(name); });
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
