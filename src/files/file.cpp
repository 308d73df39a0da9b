#include "files/file.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "files/big_file.h"
#include "files/file_places.h"
#include "files/packed_game.h"
#include "files/path.h"
#include "foundation/arithmetic.h"
#include "foundation/code_page.h"
#include "foundation/diagnose.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::size_t kChunk = 16384;

std::unique_ptr<PackedGame> packed;  // while a big file is open

platform::FileSystem& files() { return platform::current().files(); }

int asInt(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, 0, std::numeric_limits<int>::max()));
}

std::span<std::byte> asBytes(void* memory, int count) {
  return {static_cast<std::byte*>(memory), static_cast<std::size_t>(std::max(count, 0))};
}

// The engine's full path of a name as scripts write it.
CXString fullName(CWindow* window, const CXString& name) {
  const CXString resolved = CPath::resolveFileName(window, name);
  return resolved.GetAt(1) == ':' ? resolved : CPath::getFullPath(CFile::getCurrentDirectory(), resolved);
}

CXString moveBelow(const CXString& root, const CXString& path) {
  int start = path.FindSubString("Dane");
  if (start < 0) start = path.FindSubString("COMMON");
  if (start < 0) start = path.Upper().FindSubString("WAVS");
  return start < 0 || root.IsEmpty() ? path : CPath::getFullPath(root, path.Right(start));
}

bool hasLanguage(const CWindow* window) {
  const CFilePlaces* places = CFilePlaces::current();
  return window != nullptr && places != nullptr && places->hasLanguage();
}

// Tries paths in order, each once, until one serves; remembers them for the report.
class Attempts {
 public:
  bool isNew(const CXString& path) {
    if (std::find(tried_.begin(), tried_.end(), path) != tried_.end()) return false;
    tried_.push_back(path);
    return true;
  }

  const std::vector<CXString>& tried() const { return tried_; }

  void report(const CXString& name, const char* what) const {
    if (!diagnose::isOn()) return;
    std::string text = what;
    for (std::size_t i = 0; i < tried_.size(); ++i) text.append(i == 0 ? " " : ", ").append(tried_[i].view());
    diagnose::report(diagnose::Group::file, name, "", text);
  }

 private:
  std::vector<CXString> tried_;
};

// `*` is any run of characters, `?` one.
bool fits(std::string_view name, std::string_view mask) {
  if (mask == "*.*") return true;
  std::size_t nameAt = 0;
  std::size_t maskAt = 0;
  std::size_t star = std::string_view::npos;
  std::size_t resume = 0;
  while (nameAt < name.size()) {
    if (maskAt < mask.size() && mask[maskAt] == '*') {
      star = maskAt++;
      resume = nameAt;
    } else if (maskAt < mask.size() && (mask[maskAt] == '?' || code_page::foldCase(mask[maskAt]) ==
                                                                   code_page::foldCase(name[nameAt]))) {
      ++maskAt;
      ++nameAt;
    } else if (star != std::string_view::npos) {
      maskAt = star + 1;
      nameAt = ++resume;
    } else {
      return false;
    }
  }
  return mask.find_first_not_of('*', maskAt) == std::string_view::npos;
}

}  // namespace

CFile::CFile(CWindow* window, const CXString& name, int mode) { CFile::Open(window, name, mode); }

CFile::~CFile() { CFile::Close(); }

int CFile::Open(CWindow* window, const CXString& name, int mode) {
  Close();
  window_ = window;
  mode_ = mode;
  const CXString full = fullName(window, name);
  const bool fixed = isHdd(full);
  Attempts attempts;
  const auto tryAt = [&](const CXString& path) { return attempts.isNew(path) && openAt(path); };
  const auto tryPlace = [&](const CXString& path) {
    return (hasLanguage(window) && tryAt(CFilePlaces::current()->localFileName(path))) || tryAt(path);
  };
  bool opened = window == nullptr ? tryPlace(getLocalPath(full)) || tryPlace(full)
                                  : tryPlace(fixed ? full : getLocalPath(full)) ||
                                        tryPlace(fixed ? getDataRootPath(full) : full);
  const std::vector<CXString>& tried = attempts.tried();
  opened = opened || std::any_of(tried.begin(), tried.end(),
                                 [this](const CXString& path) { return openInBigFile(path); });
  if (!opened) {
    attempts.report(name, (mode & kRead) != 0 ? "cannot be opened; looked for" : "cannot be written; tried");
  }
  setErrorCode(opened ? 0 : kNotFound);
  return LastError();
}

bool CFile::openAt(const CXString& path) {
  using platform::OpenMode;
  const bool reads = (mode_ & kRead) != 0;
  const bool updates = (mode_ & kUpdate) != 0;
  if (reads && updates && !files().fileExists(path)) return false;
  const OpenMode mode = !reads ? OpenMode::write : updates ? OpenMode::update : OpenMode::read;
  handle_ = files().open(path, mode);
  if (handle_ == nullptr && !reads && packed && packed->makeFoldersFor(path))
    handle_ = files().open(path, mode);
  if (handle_ != nullptr) name_ = path;
  return handle_ != nullptr;
}

bool CFile::openInBigFile(const CXString& path) {
  if (!packed || (mode_ & kRead) == 0 || (mode_ & kUpdate) != 0) return false;
  handle_ = packed->open(path);
  if (handle_ != nullptr) name_ = path;
  return handle_ != nullptr;
}

int CFile::Close() {
  ahead_.clear();
  aheadPosition_ = 0;
  if (handle_ == nullptr) return 0;
  const bool committed = handle_->commit();
  handle_.reset();
  if (!committed && diagnose::isOn())
    diagnose::report(diagnose::Group::file, name_, "", "the disk did not take all of it; the old file stays");
  return committed ? 0 : -1;
}

int CFile::Length() { return handle_ != nullptr ? asInt(handle_->length()) : 0; }

int CFile::Tell() {
  if (handle_ == nullptr) return 0;
  return asInt(handle_->tell() - static_cast<std::int64_t>(ahead_.size() - aheadPosition_));
}

int CFile::Seek(int offset, int origin) {
  if (handle_ == nullptr) return -1;
  dropAhead();
  const std::int64_t base = origin == 0 ? 0 : origin == 1 ? handle_->tell() : handle_->length();
  return handle_->seek(base + offset) ? 0 : -1;
}

// Makes the handle stand where the reader stands.
void CFile::dropAhead() {
  const std::size_t left = ahead_.size() - aheadPosition_;
  ahead_.clear();
  aheadPosition_ = 0;
  if (left > 0) handle_->seek(handle_->tell() - static_cast<std::int64_t>(left));
}

// Sees to it that a byte stands ready; false at the end.
bool CFile::fill() {
  if (aheadPosition_ < ahead_.size()) return true;
  if (handle_ == nullptr) return false;
  ahead_.resize(kChunk);
  ahead_.resize(handle_->read(ahead_));
  aheadPosition_ = 0;
  return !ahead_.empty();
}

bool CFile::isTranslated(bool wholeLines) const {
  return (mode_ & kText) != 0 || (wholeLines && (mode_ & kBinary) == 0);
}

int CFile::Read(void* target, int count) {
  if (handle_ == nullptr || count <= 0) return 0;
  if (isTranslated(false)) return readText(static_cast<char*>(target), count);
  const std::span<std::byte> wanted = asBytes(target, count);
  const std::size_t ready = std::min(ahead_.size() - aheadPosition_, wanted.size());
  if (ready > 0) std::memcpy(wanted.data(), ahead_.data() + aheadPosition_, ready);
  aheadPosition_ += ready;
  return static_cast<int>(ready + (ready < wanted.size() ? handle_->read(wanted.subspan(ready)) : 0));
}

int CFile::readText(char* target, int count) {
  int got = 0;
  while (got < count && fill()) {
    const auto* const start = reinterpret_cast<const char*>(ahead_.data()) + aheadPosition_;
    const std::size_t most = std::min(ahead_.size() - aheadPosition_, static_cast<std::size_t>(count - got));
    const void* const found = std::memchr(start, '\r', most);
    const std::size_t plain =
        found != nullptr ? static_cast<std::size_t>(static_cast<const char*>(found) - start) : most;
    std::memcpy(target + got, start, plain);
    got += static_cast<int>(plain);
    aheadPosition_ += plain;
    if (found == nullptr) continue;
    ++aheadPosition_;
    if (!fill() || ahead_[aheadPosition_] != std::byte{'\n'}) target[got++] = '\r';
  }
  return got;
}

std::string CFile::readLine(int limit) {
  std::string line;
  const bool translated = isTranslated(true);
  while (static_cast<int>(line.size()) < limit && fill()) {
    const auto character = static_cast<char>(ahead_[aheadPosition_++]);
    if (character == '\r' && translated && fill() && ahead_[aheadPosition_] == std::byte{'\n'}) continue;
    line += character;
    if (character == '\n') break;
  }
  return line;
}

std::optional<std::vector<std::byte>> CFile::readRest(std::int64_t limit) {
  const std::int64_t length = std::max<std::int64_t>(0, std::int64_t{Length()} - Tell());
  if (length > limit) return std::nullopt;
  std::vector<std::byte> rest(static_cast<std::size_t>(length));
  const int count = Read(rest.data(), asInt(length));
  rest.resize(static_cast<std::size_t>(std::max(0, count)));
  return rest;
}

int CFile::Write(const void* source, int count) {
  if (handle_ == nullptr || count <= 0) return 0;
  dropAhead();
  return static_cast<int>(
      handle_->write({static_cast<const std::byte*>(source), static_cast<std::size_t>(count)}));
}

bool CFile::GetLine(char* target, int size) {
  if (size <= 0) return false;
  const std::string line = readLine(size - 1);
  std::memcpy(target, line.data(), line.size());
  target[line.size()] = '\0';
  return !line.empty();
}

CXString CFile::getLine() { return readLine(kLineBytes); }

void CFile::putLine(const CXString& text) { Write(text.c_str(), text.Length()); }

bool CFile::eof() { return !fill(); }

int CFile::chDir(const CXString& path) {
  if (!packed) return files().changeDirectory(path) ? 0 : -1;
  packed->changeDirectory(path);
  return packed->file().ChDir(path);
}

CXString CFile::getCurrentDirectory() {
  return packed ? packed->currentDirectory() : CXString(files().currentDirectory());
}

bool CFile::fileExists(const CXString& name) {
  return packed ? packed->contains(name) : files().fileExists(name);
}

bool CFile::dirExists(const CXString& name) {
  return packed ? packed->file().DirExists(name) : files().directoryExists(name);
}

bool CFile::canRead(const CXString& name) {
  if (!packed) return files().fileExists(name);
  return files().fileExists(packed->fullPath(name)) || packed->contains(name);
}

bool CFile::copy(const CXString& from, const CXString& to) {
  if (!packed) return files().copy(from, to);
  const CXString source = packed->fullPath(from);
  const CXString target = packed->fullPath(to);
  if (files().copy(source, target)) return true;
  packed->makeFoldersFor(target);
  if (files().fileExists(source)) return files().copy(source, target);
  const auto content = packed->open(source);
  if (content == nullptr) return false;
  std::vector<std::byte> bytes(static_cast<std::size_t>(content->length()));
  return content->read(bytes) == bytes.size() && files().writeWhole(target, bytes, true);
}

int CFile::fSeek(CFile& file, int offset, int origin) {
  return &file == getBigFileHandle() ? getBigFileIfc()->Seek(offset, origin) : file.Seek(offset, origin);
}

int CFile::fTell(CFile& file) { return &file == getBigFileHandle() ? getBigFileIfc()->Tell() : file.Tell(); }

std::unique_ptr<FileSearch> CFile::findFirst(const CXString& pattern, FileFindData* data) {
  if (packed) return packed->findFirst(pattern, data);
  const int slash = pattern.FindLast('\\');
  const CXString folder = slash < 0 ? CXString(".") : pattern.Left(slash + 1);
  const CXString mask = pattern.Right(slash + 1);
  auto search = std::make_unique<FileSearch>();
  for (const platform::DirectoryEntry& entry : files().list(folder)) {
    if (!fits(entry.name, mask)) continue;
    search->found.push_back(
        {entry.name, entry.isDirectory ? FileFindData::kDirectory : 0, asInt(entry.size)});
  }
  const bool wantsFolder = (data->attributes & FileFindData::kDirectory) != 0;
  while (findNext(*search, data)) {
    if (!wantsFolder || (data->attributes & FileFindData::kDirectory) != 0) return search;
  }
  return nullptr;
}

bool CFile::findNext(FileSearch& search, FileFindData* data) {
  if (search.next >= search.found.size()) return false;
  *data = search.found[search.next++];
  return true;
}

CXString CFile::getPath(CWindow* window, const CXString& name) {
  const CXString full = fullName(window, name);
  const CXString local = getLocalPath(full);
  Attempts attempts;
  const auto isAt = [&](const CXString& path) { return attempts.isNew(path) && canRead(path); };
  if (hasLanguage(window)) {
    for (const CXString& place : {local, full}) {
      // Without a language version the name comes back as it is: its turn is later.
      CXString version = CFilePlaces::current()->localFileName(place);
      if (!(version == place) && isAt(version)) return version;
    }
  }
  for (const CXString& place : {local, full}) {
    if (isAt(place)) return place;
  }
  attempts.report(name, "cannot be found; looked for");
  return {};
}

CXString CFile::getLocalPath(const CXString& path) {
  const CFilePlaces* places = CFilePlaces::current();
  return places != nullptr ? moveBelow(places->rootPath(), path) : path;
}

CXString CFile::getDataRootPath(const CXString& path) {
  const CFilePlaces* places = CFilePlaces::current();
  return places != nullptr ? moveBelow(places->dataRoot(), path) : path;
}

bool CFile::isHdd(const CXString& path) {
  return path.GetAt(1) != ':' || path.GetAt(0) == 'C' || path.GetAt(0) == 'c';
}

void CFile::openBigFile(const CXString& name) {
  closeBigFile();
  auto file = std::make_unique<CBigFile>(name, false, CXString());
  if (file->LastError() == 0) {
    packed = std::make_unique<PackedGame>(std::move(file));
  } else if (diagnose::isOn()) {
    diagnose::report(diagnose::Group::file, name, "", file->getFailure() + "; the game runs from the disk");
  }
}

void CFile::closeBigFile() { packed.reset(); }

CBigFile* CFile::getBigFileIfc() { return packed ? &packed->file() : nullptr; }

CFile* CFile::getBigFileHandle() { return packed ? packed->file().GetFile() : nullptr; }

}  // namespace footlight
