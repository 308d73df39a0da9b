#include "files/big_file_writer.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <limits>
#include <span>

#include "files/path.h"
#include "foundation/code_page.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 18;
constexpr std::size_t kMostRemarks = 1000;

platform::FileSystem& files() { return platform::current().files(); }

void putText(ByteWriter& fields, std::string_view text) { fields.number(std::ssize(text), 4).text(text); }

CXString below(const CXString& folder, const std::string& name) { return CPath::getFullPath(folder, name); }

}  // namespace

bool BigFileWriter::create(const CXString& folder, const CXString& name, const CXString& output) {
  outputOnMachine_ = files().toMachinePath(output);
  table_.name = name.str();
  if (name.Length() > limits::kNameBytes) return fail("the name is too long");
  if (!prepareTOC(folder)) return false;
  tocSize_ += name.Length() + 1;
  if (tocSize_ + totalSize_ > std::numeric_limits<std::int32_t>::max())
    return fail("the files are too large for one big file: it may have 2147483647 bytes");
  printSummary();
  return save(folder, output);
}

bool BigFileWriter::prepareTOC(const CXString& folder) {
  if (!files().directoryExists(folder)) return fail("there is no such folder: " + folder.str());
  table_.root.name = folder.str();
  tocSize_ = BigFileTable::kHeaderBytes + folder.Length() + BigFileTable::kEntryBytes;
  fillTOC(table_.root, folder, 0);
  return failure_.empty();
}

void BigFileWriter::fillTOC(BigFileEntry& entry, const CXString& folder, int depth) {
  for (const platform::DirectoryEntry& found : files().list(folder)) {
    if (!failure_.empty()) return;
    if (found.isLink) continue;
    if (fileCount_ + folderCount_ >= limits::kBigFileEntries) {
      guardHit("big_file.entries");
      fail("there are more than " + std::to_string(limits::kBigFileEntries) + " files and folders");
    } else if (found.isDirectory) {
      addFolder(entry, folder, found.name, depth + 1);
    } else if (!isOutput(folder, found.name)) {
      addFile(entry, found);
    }
  }
}

bool BigFileWriter::isOutput(const CXString& folder, const std::string& name) const {
  const std::string onMachine = code_page::toUtf8(name);
  return outputOnMachine_.ends_with("/" + onMachine) &&
         files().toMachinePath(below(folder, name)) == outputOnMachine_;
}

void BigFileWriter::addFile(BigFileEntry& entry, const platform::DirectoryEntry& found) {
  // A file that no big file can hold makes the sum too large as well.
  totalSize_ += found.size;
  const auto size = std::min<std::int64_t>(found.size, std::numeric_limits<std::int32_t>::max());
  entry.files.push_back({found.name, 0, static_cast<std::int32_t>(size), false});
  tocSize_ += std::ssize(found.name) + BigFileTable::kRecordBytes;
  ++fileCount_;
}

void BigFileWriter::addFolder(BigFileEntry& entry, const CXString& parent, const std::string& name,
                              int depth) {
  const CXString folder = below(parent, name);
  if (depth > limits::kTreeDepth) {
    guardHit("big_file.depth");
    fail("the folders are nested deeper than " + std::to_string(limits::kTreeDepth) + ": " + folder.str());
    return;
  }
  if (!files().directoryExists(folder)) {
    fail("cannot be read: " + folder.str());
    return;
  }
  BigFileEntry& added = entry.folders.emplace_back();
  added.name = name;
  tocSize_ += std::ssize(name) + BigFileTable::kEntryBytes;
  ++folderCount_;
  fillTOC(added, folder, depth);
}

bool BigFileWriter::fail(std::string why) {
  failure_ = std::move(why);
  return false;
}

void BigFileWriter::printSummary() const {
  if (!verbose_) return;
  std::printf("Big file name: %s.\n", table_.name.c_str());
  std::printf("Number of folders: %" PRId64 ".\n", folderCount_);
  std::printf("Number of files: %" PRId64 ".\n", fileCount_);
  std::printf("Total size: %" PRId64 " bytes.\n", totalSize_);
  std::printf("TOC size: %" PRId64 " bytes.\n", tocSize_);
}

bool BigFileWriter::save(const CXString& folder, const CXString& output) {
  if (file_.Open(nullptr, output, CFile::kWriteBinary) != 0) return fail("it cannot be written");
  saveHeader();
  saveEntry(table_.root);
  if (verbose_) std::puts("TOC saved.");
  saveEntryContents(table_.root, folder);
  if (verbose_ && fileCount_ > 0) std::puts("");
  if (file_.Close() == 0 && isWritten_) return true;
  return fail("the disk did not take all of it");
}

void BigFileWriter::saveHeader() {
  ByteWriter fields;
  putText(fields, table_.name);
  putText(fields, BigFileTable::kMarker);
  put(fields.number(totalSize_, 4).zeros(16).number(fileCount_, 4).number(folderCount_, 4));
}

void BigFileWriter::saveEntry(const BigFileEntry& entry) {
  ByteWriter fields;
  putText(fields, entry.name);
  put(fields.number(std::ssize(entry.files), 4).number(std::ssize(entry.folders), 4));
  for (const BigFileEntry& folder : entry.folders) saveEntry(folder);
  for (const BigFileRecord& record : entry.files) {
    fields.clear();
    putText(fields, record.name);
    put(fields.number(tocSize_ + runningOffset_, 4).zeros(8).i32(record.size));
    runningOffset_ += record.size;
  }
}

// The same walk as for the table: the offsets there count on it.
void BigFileWriter::saveEntryContents(const BigFileEntry& entry, const CXString& folder) {
  for (const BigFileEntry& inner : entry.folders) saveEntryContents(inner, below(folder, inner.name));
  for (const BigFileRecord& record : entry.files) {
    if (!isWritten_) return;
    saveContent(record, below(folder, record.name));
    ++filesSaved_;
    if (verbose_) std::printf("\rFile %" PRId64 " of %" PRId64 " saved.", filesSaved_, fileCount_);
  }
}

void BigFileWriter::saveContent(const BigFileRecord& record, const CXString& source) {
  const auto content = files().open(source, platform::OpenMode::read);
  std::vector<std::byte> chunk(std::min(kChunk, static_cast<std::size_t>(record.size)));
  std::int64_t left = record.size;
  while (left > 0 && isWritten_) {
    const auto wanted = std::span(chunk).first(static_cast<std::size_t>(std::min(left, std::ssize(chunk))));
    const std::size_t got = content != nullptr ? content->read(wanted) : 0;
    std::fill(wanted.begin() + static_cast<std::ptrdiff_t>(got), wanted.end(), std::byte{});
    write(wanted.data(), std::ssize(wanted));
    left -= std::ssize(wanted);
  }
  const bool isWhole = content != nullptr && content->length() == record.size;
  if (isWhole || remarks_.size() >= kMostRemarks) return;
  remarks_.push_back(source.str() + (content == nullptr ? ": cannot be read; zeros stand for it"
                                     : content->length() > record.size
                                         ? ": has grown meanwhile and was cut"
                                         : ": has shrunk meanwhile; zeros fill it up"));
}

void BigFileWriter::put(const ByteWriter& fields) {
  write(fields.written().data(), std::ssize(fields.written()));
}

void BigFileWriter::write(const void* bytes, std::int64_t count) {
  if (count > 0 && file_.Write(bytes, static_cast<int>(count)) != count) isWritten_ = false;
}

}  // namespace footlight
