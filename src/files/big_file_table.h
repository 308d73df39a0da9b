#pragma once

// The table of contents of a big file, which packs a tree of folders into one file.
//
// The file, little-endian; a text is an int32 length and its bytes, and offsets count from the file's start:
//
//   text   name
//   text   "\"
//   int32  bytes of all files together
//   int64  0, twice
//   int32  number of files
//   int32  number of folders below the root
//   entry  the root
//   bytes  the contents: for each folder first those of its folders, then its own files', without gaps
//
//   entry   text name (for the root the folder that was packed), int32 files, int32 folders, the folders'
//           entries, the files' records
//   record  text name, int32 offset, int64 0, int32 size
//
// Nothing marks a big file as one. What is read is taken for a table as long as everything in it fits into
// the file and into the limits. The three sums of the header are only told, never used.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace footlight {

class CFile;

// A list's positions in the order of its items' names, made when a long list is first asked.
class NameOrder {
 public:
  // The first item of that name, without regard to case; null when there is none.
  template <class Item>
  const Item* find(const std::vector<Item>& items, std::string_view name) const;

 private:
  mutable std::vector<std::uint32_t> order_;
};

struct BigFileRecord {
  std::string name;
  std::int32_t offset = 0;
  std::int32_t size = 0;
  bool isDamaged = false;  // it told of bytes outside the file; offset and size are 0 then
};

struct BigFileEntry {
  std::string name;
  const BigFileEntry* parent = nullptr;  // null for the root
  std::vector<BigFileEntry> folders;
  std::vector<BigFileRecord> files;

  const BigFileEntry* findFolder(std::string_view wanted) const { return folderOrder.find(folders, wanted); }
  const BigFileRecord* findFile(std::string_view wanted) const { return fileOrder.find(files, wanted); }

  NameOrder folderOrder;
  NameOrder fileOrder;
};

// Entries point at each other: a table stays where it was made.
struct BigFileTable {
  static constexpr int kHeaderBytes = 36;  // and the name, and the one byte of the marker
  static constexpr int kEntryBytes = 12;   // and the name
  static constexpr int kRecordBytes = 20;  // and the name
  static constexpr std::string_view kMarker = "\\";

  BigFileTable() = default;
  BigFileTable(const BigFileTable&) = delete;
  BigFileTable& operator=(const BigFileTable&) = delete;

  std::string name;
  std::int32_t totalSize = 0;
  std::int32_t fileCount = 0;
  std::int32_t folderCount = 0;
  BigFileEntry root;
};

// Reads the table from the file's position on, which is its start. Null for what is no table; `why` says what
// is wrong with it then.
std::unique_ptr<BigFileTable> readBigFileTable(CFile& file, const char** why);

}  // namespace footlight
