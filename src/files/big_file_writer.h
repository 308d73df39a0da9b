#pragma once

// Makes big files; big_file_table.h tells what is in one. The folder is walked once for the table and the
// contents are copied behind it, each with exactly the size that the table tells: a file that became shorter
// meanwhile is filled up with zeros, a longer one is cut, and a remark tells of it.
//
// Links are not followed. Nothing is made, and an older file of the name stays, when the folder is nested too
// deeply, holds too much for one big file, or the disk refuses.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "files/big_file_table.h"
#include "files/file.h"
#include "foundation/byte_writer.h"
#include "foundation/xstring.h"

namespace footlight {

class BigFileWriter {
 public:
  // With `verbose` it tells on standard output what it does.
  explicit BigFileWriter(bool verbose) : verbose_(verbose) {}

  // `folder` may be a relative name; as it is given it becomes the name of the root.
  bool create(const CXString& folder, const CXString& name, const CXString& output);

  const std::string& getFailure() const { return failure_; }
  const std::vector<std::string>& getRemarks() const { return remarks_; }

 private:
  bool prepareTOC(const CXString& folder);
  void fillTOC(BigFileEntry& entry, const CXString& folder, int depth);
  bool isOutput(const CXString& folder, const std::string& name) const;
  void addFile(BigFileEntry& entry, const platform::DirectoryEntry& found);
  void addFolder(BigFileEntry& entry, const CXString& parent, const std::string& name, int depth);
  bool fail(std::string why);
  void printSummary() const;
  bool save(const CXString& folder, const CXString& output);
  void saveHeader();
  void saveEntry(const BigFileEntry& entry);
  void saveEntryContents(const BigFileEntry& entry, const CXString& folder);
  void saveContent(const BigFileRecord& record, const CXString& source);
  void put(const ByteWriter& fields);
  void write(const void* bytes, std::int64_t count);

  bool verbose_;
  BigFileTable table_;
  std::string outputOnMachine_;  // its canonical name
  std::int64_t tocSize_ = 0;
  std::int64_t totalSize_ = 0;
  std::int64_t fileCount_ = 0;
  std::int64_t folderCount_ = 0;
  std::int64_t runningOffset_ = 0;
  std::int64_t filesSaved_ = 0;
  CFile file_;
  bool isWritten_ = true;  // so far
  std::string failure_;
  std::vector<std::string> remarks_;
};

}  // namespace footlight
