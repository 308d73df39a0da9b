#include "files/big_file_table.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "files/file.h"
#include "foundation/byte_reader.h"
#include "foundation/code_page.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr std::size_t kShortList = 16;  // is walked

int compareNames(std::string_view a, std::string_view b) {
  const std::size_t shared = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < shared; ++i) {
    const auto left = static_cast<unsigned char>(code_page::foldCase(a[i]));
    const auto right = static_cast<unsigned char>(code_page::foldCase(b[i]));
    if (left != right) return left < right ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

// The numbers and texts of a table in a file. What does not fit fails once and for all; all gets
// yield nothing then.
class TableReader {
 public:
  explicit TableReader(CFile& file) : file_(file), length_(file.Length()), left_(length_) {}

  std::unique_ptr<BigFileTable> read(const char** why) {
    auto table = std::make_unique<BigFileTable>();
    table->name = text();
    static_cast<void>(text());  // the marker
    table->totalSize = number();
    reserved();
    reserved();
    table->fileCount = number();
    table->folderCount = number();
    readEntry(table->root, 0);
    *why = why_;
    return why_ == nullptr ? std::move(table) : nullptr;
  }

 private:
  void fail(const char* why, const char* guard) {
    if (why_ != nullptr) return;
    why_ = why;
    left_ = 0;
    guardHit(guard);
  }

  bool take(void* target, std::int64_t count) {
    if (count > left_ || file_.Read(target, static_cast<int>(count)) != count) {
      fail("the table is cut off", "big_file.cut");
      return false;
    }
    left_ -= count;
    return true;
  }

  std::int32_t number() {
    std::array<std::byte, 4> bytes{};
    return take(bytes.data(), bytes.size()) ? ByteReader(bytes).i32() : 0;
  }

  void reserved() {
    std::array<std::byte, 8> ignored;
    take(ignored.data(), ignored.size());
  }

  std::string text() {
    const std::int32_t length = number();
    if (length < 0 || length > limits::kNameBytes || length > left_) {
      fail("a name does not fit", "big_file.name");
      return {};
    }
    std::string result(static_cast<std::size_t>(length), '\0');
    take(result.data(), length);
    return result;
  }

  // Whether that many entries and records can stand in what is left.
  bool fits(std::int64_t files, std::int64_t folders) {
    if (files < 0 || folders < 0 ||
        files * BigFileTable::kRecordBytes + folders * BigFileTable::kEntryBytes > left_) {
      fail("a count does not fit", "big_file.count");
      return false;
    }
    entries_ += files + folders;
    if (entries_ > limits::kBigFileEntries) fail("there are more than 1000000 entries", "big_file.entries");
    return why_ == nullptr;
  }

  void readEntry(BigFileEntry& entry, int depth) {
    if (depth > limits::kTreeDepth) fail("the folders are nested deeper than 64", "big_file.depth");
    entry.name = text();
    const std::int32_t files = number();
    const std::int32_t folders = number();
    if (why_ != nullptr || !fits(files, folders)) return;
    entry.folders.resize(static_cast<std::size_t>(folders));
    for (BigFileEntry& folder : entry.folders) {
      folder.parent = &entry;
      readEntry(folder, depth + 1);
      if (why_ != nullptr) return;
    }
    // The folders took their part of what was left.
    if (files * std::int64_t{BigFileTable::kRecordBytes} > left_) {
      fail("a count does not fit", "big_file.count");
      return;
    }
    entry.files.resize(static_cast<std::size_t>(files));
    for (BigFileRecord& file : entry.files) readRecord(file);
  }

  void readRecord(BigFileRecord& file) {
    file.name = text();
    file.offset = number();
    reserved();
    file.size = number();
    file.isDamaged = file.offset < 0 || file.size < 0 || std::int64_t{file.offset} + file.size > length_;
    if (!file.isDamaged) return;
    guardHit("big_file.outside");
    file.offset = file.size = 0;
  }

  CFile& file_;
  std::int64_t length_;
  std::int64_t left_;
  std::int64_t entries_ = 0;
  const char* why_ = nullptr;
};

}  // namespace

template <class Item>
const Item* NameOrder::find(const std::vector<Item>& items, std::string_view name) const {
  if (items.size() <= kShortList) {
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const Item& item) { return compareNames(item.name, name) == 0; });
    return found == items.end() ? nullptr : &*found;
  }
  if (order_.empty()) {
    order_.resize(items.size());
    std::iota(order_.begin(), order_.end(), 0U);
    std::stable_sort(order_.begin(), order_.end(), [&](std::uint32_t a, std::uint32_t b) {
      return compareNames(items[a].name, items[b].name) < 0;
    });
  }
  const auto found = std::lower_bound(order_.begin(), order_.end(), name,
                                      [&](std::uint32_t position, std::string_view wanted) {
                                        return compareNames(items[position].name, wanted) < 0;
                                      });
  const bool isThere = found != order_.end() && compareNames(items[*found].name, name) == 0;
  return isThere ? &items[*found] : nullptr;
}

template const BigFileEntry* NameOrder::find(const std::vector<BigFileEntry>&, std::string_view) const;
template const BigFileRecord* NameOrder::find(const std::vector<BigFileRecord>&, std::string_view) const;

std::unique_ptr<BigFileTable> readBigFileTable(CFile& file, const char** why) {
  return TableReader(file).read(why);
}

}  // namespace footlight
