#include "files/packed_game.h"

#include <optional>
#include <utility>

#include "files/file_places.h"
#include "platform/platform.h"

namespace footlight {

namespace {

using platform::EnginePath;

platform::FileSystem& files() { return platform::current().files(); }

EnginePath pathOf(const CXString& name) { return EnginePath::of(name.view()).value_or(EnginePath()); }

}  // namespace

PackedGame::PackedGame(std::unique_ptr<CBigFile> file)
    : file_(std::move(file)), current_(pathOf(files().currentDirectory())), start_(current_) {}

CXString PackedGame::fullPath(const CXString& path) const {
  const std::optional<EnginePath> full = EnginePath::of(path.view(), current_);
  return full ? CXString(full->text()) : CXString();
}

// The names inside the big file that a path may have. Below a data root that the big file holds in its own
// place nothing else is meant.
std::vector<std::string> PackedGame::insideNames(const CXString& path) const {
  std::vector<std::string> names;
  const std::optional<EnginePath> full = EnginePath::of(path.view(), current_);
  if (!full) return names;
  const CFilePlaces* places = CFilePlaces::current();
  const EnginePath root = places != nullptr ? pathOf(places->rootPath()) : start_;
  const EnginePath dataRoot = places != nullptr ? pathOf(places->dataRoot()) : start_;
  if (const auto below = full->below(root)) names.push_back("\\" + *below);
  const auto dataBelow = dataRoot.below(root);
  const bool hasDataRoot =
      dataBelow && !dataBelow->empty() && file_->findFolder("\\" + *dataBelow) != nullptr;
  const auto below = full->below(dataRoot);
  if (below && !hasDataRoot && (names.empty() || names.front() != "\\" + *below))
    names.push_back("\\" + *below);
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
  const std::optional<EnginePath> full = EnginePath::of(path.view(), current_);
  if (!full) return;
  const BigFileEntry* folder = findFolder(full->text());
  if (!files().changeDirectory(full->folderText()) && folder == nullptr) return;
  current_ = *full;
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
  const std::optional<EnginePath> full = EnginePath::of(path.view(), current_);
  if (!full || full->isRoot()) return false;
  const EnginePath folder = full->parent();
  if (files().directoryExists(folder.folderText()) || findFolder(folder.text()) == nullptr) return false;
  makeFoldersFor(folder.text());
  return files().makeDirectory(folder.text());
}

}  // namespace footlight
