#include "files/big_file.h"

#include <algorithm>
#include <utility>

#include "files/big_file_writer.h"
#include "platform/platform.h"

namespace footlight {

namespace {

// One file in a big file, over a handle of its own.
class EntryHandle final : public platform::FileHandle {
 public:
  EntryHandle(std::unique_ptr<platform::FileHandle> file, const BigFileRecord& record)
      : file_(std::move(file)), offset_(record.offset), length_(record.size) {
    file_->seek(offset_);
  }

  std::size_t read(std::span<std::byte> target) override {
    const std::int64_t left = std::max<std::int64_t>(0, length_ - position_);
    const std::size_t count =
        file_->read(target.first(static_cast<std::size_t>(std::min<std::int64_t>(left, std::ssize(target)))));
    position_ += static_cast<std::int64_t>(count);
    return count;
  }
  std::size_t write(std::span<const std::byte> /*source*/) override { return 0; }
  bool seek(std::int64_t position) override {
    if (position < 0 || !file_->seek(offset_ + std::min(position, length_))) return false;
    position_ = position;
    return true;
  }
  std::int64_t tell() const override { return position_; }
  std::int64_t length() const override { return length_; }
  bool commit() override { return true; }

 private:
  std::unique_ptr<platform::FileHandle> file_;
  std::int64_t offset_;
  std::int64_t length_;
  std::int64_t position_ = 0;  // may lie behind the end, where nothing is to be read
};

// Cuts the part before the first backslash off.
std::string_view nextPart(std::string_view* name) {
  const std::string_view part = name->substr(0, name->find('\\'));
  name->remove_prefix(std::min(part.size() + 1, name->size()));
  return part;
}

}  // namespace

CBigFile::CBigFile(bool verbose, const CXString& /*remark*/)
    : verbose_(verbose), table_(std::make_unique<BigFileTable>()), current_(&table_->root) {}

CBigFile::CBigFile(const CXString& name, bool verbose, const CXString& remark) : CBigFile(verbose, remark) {
  open(name);
}

void CBigFile::open(const CXString& name) {
  name_ = name;
  setErrorCode(file_.Open(nullptr, name, CFile::kReadBinary));
  if (LastError() != 0) {
    failure_ = "there is no such file";
    return;
  }
  const char* why = nullptr;
  std::unique_ptr<BigFileTable> table = readBigFileTable(file_, &why);
  if (!table) {
    failure_ = std::string("this is no big file: ") + why;
    file_.Close();
    setErrorCode(CFile::kNotFound);
    return;
  }
  table_ = std::move(table);
  current_ = &table_->root;
  stamp_ = platform::current().files().stamp(file_.getFileName());
  file_.Seek(0, 0);
}

bool CBigFile::Create(const CXString& folder, const CXString& name, const CXString& output) {
  BigFileWriter writer(verbose_);
  const bool made = writer.create(folder, name, output);
  failure_ = writer.getFailure();
  remarks_ = writer.getRemarks();
  return made;
}

// Where the walk along a name begins; a leading backslash is taken off.
const BigFileEntry* CBigFile::start(std::string_view* name) const {
  if (!name->starts_with('\\')) return current_;
  name->remove_prefix(1);
  return &table_->root;
}

const BigFileRecord* CBigFile::find(std::string_view name) const {
  const BigFileEntry* entry = start(&name);
  while (entry != nullptr && name.find('\\') != std::string_view::npos)
    entry = entry->findFolder(nextPart(&name));
  return entry != nullptr ? entry->findFile(name) : nullptr;
}

const BigFileEntry* CBigFile::findFolder(std::string_view name) const {
  const BigFileEntry* entry = start(&name);
  while (entry != nullptr && !name.empty()) entry = entry->findFolder(nextPart(&name));
  return entry;
}

int CBigFile::Seek(const CXString& name) {
  const BigFileRecord* record = find(name.view());
  return record != nullptr && file_.Seek(record->offset, 0) == 0 ? record->offset : -1;
}

int CBigFile::GetSize(const CXString& name) const {
  const BigFileRecord* record = find(name.view());
  return record != nullptr ? record->size : 0;
}

// Null when there is no such folder.
const BigFileEntry* CBigFile::chdir(const BigFileEntry* from, std::string_view name) {
  if (name == ".") return from;
  if (name == "..") return from->parent != nullptr ? from->parent : from;
  return from->findFolder(name);
}

bool CBigFile::FileExists(const CXString& name) const {
  std::string_view rest = name.view();
  const BigFileEntry* reached = start(&rest);
  const std::size_t slash = rest.rfind('\\');
  const std::string_view last = slash == std::string_view::npos ? rest : rest.substr(slash + 1);
  while (rest.find('\\') != std::string_view::npos) {
    const BigFileEntry* next = chdir(reached, nextPart(&rest));
    if (next == nullptr) break;
    reached = next;
  }
  return reached->findFile(last) != nullptr;
}

int CBigFile::FindFirst(const CXString& pattern, FileFindData* data) const {
  const CXString lower = pattern.Lower();
  const bool isEverything = lower == "*" || lower == "*.*";
  const auto fits = [&](const std::string& name) {
    return isEverything || lower.FilterFits(CXString(name).Lower().view());
  };
  int index = 0;
  for (const BigFileRecord& file : current_->files) {
    if (fits(file.name)) {
      *data = {file.name, 0, file.size};
      return index;
    }
    ++index;
  }
  for (const BigFileEntry& folder : current_->folders) {
    if (fits(folder.name)) {
      *data = {folder.name, FileFindData::kDirectory, 0};
      return index;
    }
    ++index;
  }
  return -1;
}

CXString CBigFile::GetCurrentDirectory() const {
  std::string path = "\\";
  for (const BigFileEntry* entry = current_; entry->parent != nullptr; entry = entry->parent)
    path.insert(0, "\\" + entry->name);
  return path;
}

std::unique_ptr<platform::FileHandle> CBigFile::openEntry(const BigFileRecord& record) const {
  platform::FileSystem& files = platform::current().files();
  const CXString& name = file_.getFileName();
  if (!stamp_ || files.stamp(name) != stamp_) return nullptr;
  auto whole = files.open(name, platform::OpenMode::read);
  return whole != nullptr ? std::make_unique<EntryHandle>(std::move(whole), record) : nullptr;
}

}  // namespace footlight
