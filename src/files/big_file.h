#pragma once

// A big file packs a tree of folders into one file; big_file_table.h tells how. An object either reads one,
// whose table it keeps in memory, or makes one.
//
// Reading. Names are looked up without regard to case; of several files or folders of one name the first
// counts. A name with a leading backslash starts at the root, another one in the current folder. A file
// that is no big file leaves the error code 2000 and an empty tree.
//
// All of it belongs to the engine's thread.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/big_file_table.h"
#include "files/file.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CBigFile : public CXObject {
 public:
  // For making one. With `verbose` it tells on standard output what it does. The last text of both
  // constructors has no effect.
  CBigFile(bool verbose, const CXString& remark);
  // Opens one for reading.
  CBigFile(const CXString& name, bool verbose, const CXString& remark);
  CBigFile(const CBigFile&) = delete;
  CBigFile& operator=(const CBigFile&) = delete;

  // Packs the folder into the file `output` and writes `name` into its head. Links are not followed; the
  // output, should it lie in the folder, and names that the code page cannot hold are left out. False when
  // nothing was made: an older file stays then, and getFailure tells why.
  bool Create(const CXString& folder, const CXString& name, const CXString& output);

  // The whole file; it has one position, which Seek moves. Not open when the error code is 2000.
  CFile* GetFile() { return &file_; }
  const CXString& getName() const { return name_; }
  const BigFileTable& getTable() const { return *table_; }
  // Bytes of the whole file.
  std::int64_t getLength() const { return stamp_ ? stamp_->size : 0; }
  // What was wrong, in English, with the file that was to be read or made; empty when all was well.
  const std::string& getFailure() const { return failure_; }
  // What Create had to tell and could do without: files that changed while they were packed.
  const std::vector<std::string>& getRemarks() const { return remarks_; }

  // 0, or -1 when nothing moved.
  int Seek(int offset, int origin) { return file_.Seek(offset, origin); }
  int Tell() { return file_.Tell(); }
  // Moves to the start of the named file and gives the offset; -1 when there is none.
  int Seek(const CXString& name);
  // Bytes; 0 when there is no such file.
  int GetSize(const CXString& name) const;
  // Walks the folders of the name, "." and ".." among them; the first one that is not there ends the walk,
  // and the file is looked for in the folder reached.
  bool FileExists(const CXString& name) const;
  // The first of the current folder's files, then of its folders, whose name fits the pattern (see
  // CXString::FilterFits): its index, folders counting on behind the files, or -1.
  int FindFirst(const CXString& pattern, FileFindData* data) const;
  // There is never a second one: -1.
  int FindNext(int /*handle*/, FileFindData* /*data*/) const { return -1; }
  // From the root on, with a backslash at both ends.
  CXString GetCurrentDirectory() const;

  // Accepted, without effect.
  int ChDir(const CXString& /*path*/) { return 0; }
  int GetOffset(const CXString& /*name*/) const { return 0; }
  bool DirExists(const CXString& /*name*/) const { return true; }
  bool Update() { return true; }
  bool UpdateFile(const CXString& /*name*/) { return true; }
  bool ExtractFile(const CXString& /*name*/) { return true; }

  // The record of a file and the entry of a folder; null when there is none. Records live as long as this.
  const BigFileRecord* find(std::string_view name) const;
  const BigFileEntry* findFolder(std::string_view name) const;
  // Makes a folder the current one; null means the root.
  void enter(const BigFileEntry* folder) { current_ = folder != nullptr ? folder : &table_->root; }
  // Opens one of its files for reading, with a position of its own and nothing of the big file around it.
  // Null when the big file was replaced since it was opened.
  std::unique_ptr<platform::FileHandle> openEntry(const BigFileRecord& record) const;

 private:
  void open(const CXString& name);
  static const BigFileEntry* chdir(const BigFileEntry* from, std::string_view name);
  const BigFileEntry* start(std::string_view* name) const;

  bool verbose_;
  CXString name_;
  CFile file_;
  std::optional<platform::FileStamp> stamp_;
  std::unique_ptr<BigFileTable> table_;
  const BigFileEntry* current_;
  std::string failure_;
  std::vector<std::string> remarks_;
};

}  // namespace footlight
