#include "support/memory_files.h"

#include <algorithm>
#include <cstring>

#include "foundation/byte_writer.h"
#include "foundation/code_page.h"
#include "platform/engine_path.h"

namespace footlight::test {

using platform::DirectoryEntry;
using platform::EnginePath;
using platform::FileHandle;
using platform::FileStamp;
using platform::OpenMode;

namespace {

constexpr std::size_t kPlace = 2;  // where the parts of a full name begin, behind the drive

std::string_view parentOf(std::string_view name) { return name.substr(0, name.rfind('\\')); }

std::string lastPart(std::string_view name) { return std::string(name.substr(name.rfind('\\') + 1)); }

}  // namespace

std::string waveFile(int samples) {
  ByteWriter out;
  out.text("RIFF").u32(static_cast<std::uint32_t>(36 + 2 * samples)).text("WAVEfmt ").u32(16);
  out.u16(1).u16(1).u32(22050).u32(44100).u16(2).u16(16);
  out.text("data").u32(static_cast<std::uint32_t>(2 * samples));
  for (int i = 0; i < samples; ++i) out.number(i * 991 % 20000, 2);
  return {reinterpret_cast<const char*>(out.written().data()), out.size()};
}

Content contentOf(std::string_view text) {
  const auto* start = reinterpret_cast<const std::byte*>(text.data());
  return std::make_shared<const std::vector<std::byte>>(start, start + text.size());
}

// Works on a copy; what was written reaches the disk at commit.
class MemoryFiles::Handle : public FileHandle {
 public:
  Handle(MemoryFiles& disk, std::string path, std::vector<std::byte> bytes, bool writes)
      : disk_(disk), path_(std::move(path)), bytes_(std::move(bytes)), writes_(writes) {}
  ~Handle() override { Handle::commit(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  std::size_t read(std::span<std::byte> target) override {
    const std::size_t count = std::min(target.size(), bytes_.size() - std::min(position_, bytes_.size()));
    if (count > 0) std::memcpy(target.data(), bytes_.data() + position_, count);
    position_ += count;
    return count;
  }
  std::size_t write(std::span<const std::byte> source) override {
    if (!writes_ || source.empty() || position_ + source.size() > kMostBytes) return 0;
    bytes_.resize(std::max(bytes_.size(), position_ + source.size()));
    std::memcpy(bytes_.data() + position_, source.data(), source.size());
    position_ += source.size();
    return source.size();
  }
  bool seek(std::int64_t position) override {
    if (position < 0) return false;
    position_ = static_cast<std::size_t>(position);
    return true;
  }
  std::int64_t tell() const override { return static_cast<std::int64_t>(position_); }
  std::int64_t length() const override { return static_cast<std::int64_t>(bytes_.size()); }
  bool commit() override {
    if (!writes_) return true;
    writes_ = false;
    return disk_.put(path_, std::make_shared<const std::vector<std::byte>>(bytes_));
  }

 private:
  MemoryFiles& disk_;
  std::string path_;
  std::vector<std::byte> bytes_;
  std::size_t position_ = 0;
  bool writes_;
};

MemoryFiles::MemoryFiles(const Disk& disk) : first_(disk) {
  directories_.insert(code_page::foldCase(kRoot));
  for (const auto& [name, content] : disk) {
    const std::string folded = code_page::foldCase(name);
    files_[folded] = {lastPart(name), content, ++identities_};
    for (std::string_view folder = parentOf(folded); folder.size() > kPlace; folder = parentOf(folder))
      directories_.emplace(folder);
  }
}

std::optional<std::string> MemoryFiles::full(std::string_view path) const {
  static const EnginePath root = *EnginePath::of(kRoot);
  const auto place = EnginePath::of(path, *EnginePath::of(current_));
  return place && place->below(root) ? std::optional(place->text()) : std::nullopt;
}

std::optional<std::string> MemoryFiles::key(std::string_view path) const {
  const auto name = full(path);
  return name ? std::optional(code_page::foldCase(*name)) : std::nullopt;
}

const MemoryFiles::File* MemoryFiles::find(std::string_view path) const {
  const auto folded = key(path);
  const auto found = folded ? files_.find(*folded) : files_.end();
  return found == files_.end() ? nullptr : &found->second;
}

bool MemoryFiles::put(std::string_view path, Content content) {
  const auto name = full(path);
  if (onAccess) onAccess();
  if (!name || content->size() > kMostBytes) return false;
  const std::string folded = code_page::foldCase(*name);
  if (directories_.contains(folded) || !directories_.contains(std::string(parentOf(folded)))) return false;
  const auto found = files_.find(folded);
  if (found == files_.end() && files_.size() >= kMostFiles) return false;
  const std::string kept = found == files_.end() ? lastPart(*name) : found->second.name;
  files_[folded] = {kept, std::move(content), ++identities_};
  return true;
}

std::unique_ptr<FileHandle> MemoryFiles::open(std::string_view path, OpenMode mode) {
  const auto name = full(path);
  if (onAccess) onAccess();
  if (!name) return nullptr;
  const File* file = find(*name);
  if (mode == OpenMode::read && file == nullptr) return nullptr;
  // A new file is there from now on, so that a place that refuses it says so at once.
  if (mode != OpenMode::read && file == nullptr && !put(*name, contentOf({}))) return nullptr;
  std::vector<std::byte> bytes;
  if (mode != OpenMode::write && file != nullptr) bytes = *file->content;
  return std::make_unique<Handle>(*this, *name, std::move(bytes), mode != OpenMode::read);
}

bool MemoryFiles::fileExists(std::string_view path) { return find(path) != nullptr; }

std::optional<FileStamp> MemoryFiles::stamp(std::string_view path) {
  const File* file = find(path);
  if (file == nullptr) return std::nullopt;
  return FileStamp{static_cast<std::int64_t>(file->content->size()), 0, file->identity};
}

bool MemoryFiles::directoryExists(std::string_view path) {
  const auto folded = key(path);
  return folded && directories_.contains(*folded);
}

std::vector<DirectoryEntry> MemoryFiles::list(std::string_view path) {
  std::vector<DirectoryEntry> entries;
  const auto folder = key(path);
  if (!folder) return entries;
  for (const auto& [name, file] : files_) {
    if (parentOf(name) == *folder)
      entries.push_back({file.name, false, static_cast<std::int64_t>(file.content->size())});
  }
  for (const std::string& name : directories_) {
    if (parentOf(name) == *folder) entries.push_back({lastPart(name), true, 0});
  }
  return entries;
}

bool MemoryFiles::writeWhole(std::string_view path, std::span<const std::byte> content, bool /*durable*/) {
  return put(path, std::make_shared<const std::vector<std::byte>>(content.begin(), content.end()));
}

std::optional<std::vector<std::byte>> MemoryFiles::readWhole(std::string_view path, std::int64_t limit) {
  const File* file = find(path);
  if (file == nullptr || static_cast<std::int64_t>(file->content->size()) > limit) return std::nullopt;
  return *file->content;
}

bool MemoryFiles::copy(std::string_view from, std::string_view to) {
  const File* file = find(from);
  return file != nullptr && key(from) != key(to) && put(to, file->content);
}

bool MemoryFiles::remove(std::string_view path) {
  const auto folded = key(path);
  return folded && files_.erase(*folded) > 0;
}

bool MemoryFiles::makeDirectory(std::string_view path) {
  const auto folded = key(path);
  if (!folded || files_.contains(*folded) || directories_.size() >= kMostFiles) return false;
  return directories_.contains(std::string(parentOf(*folded))) && directories_.insert(*folded).second;
}

bool MemoryFiles::changeDirectory(std::string_view path) {
  const auto name = full(path);
  if (!name || !directories_.contains(code_page::foldCase(*name))) return false;
  current_ = *name;
  return true;
}

Disk MemoryFiles::changes() const {
  Disk changed;
  Disk before;
  for (const auto& [name, content] : first_) before[code_page::foldCase(name)] = content;
  for (const auto& [name, file] : files_) {
    const auto old = before.find(name);
    if (old == before.end() || *old->second != *file.content) changed[name] = file.content;
  }
  for (const auto& [name, content] : before) {
    if (!files_.contains(name)) changed[name] = nullptr;
  }
  return changed;
}

}  // namespace footlight::test
