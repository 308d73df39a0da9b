#pragma once

// The big file that a game runs from, seen as the engine sees a disk: by full paths. The root of the big file
// stands for the root path, and for the data root where that is another one that the big file does not hold
// in its own place; so a folder that was packed whole serves every name that it served before.
//
// The engine's current directory may be a folder that only the big file has. It is kept here then, and the
// disk follows as far as it can.

#include <memory>
#include <string>
#include <vector>

#include "files/big_file.h"
#include "platform/engine_path.h"

namespace footlight {

class PackedGame {
 public:
  // `file` has been opened.
  explicit PackedGame(std::unique_ptr<CBigFile> file);

  CBigFile& file() { return *file_; }

  // Ends in a backslash.
  CXString currentDirectory() const { return current_.folderText(); }
  // Changes nothing when neither the disk nor the big file has such a folder.
  void changeDirectory(const CXString& path);
  // A name with the current directory in front where it needs one, without "." and ".."; empty for a name
  // that no file can have.
  CXString fullPath(const CXString& path) const;

  bool contains(const CXString& path) const { return find(path) != nullptr; }
  // For reading; null when there is no such file.
  std::unique_ptr<platform::FileHandle> open(const CXString& path) const;
  // The first that fits in the folder of the pattern; null when there is none.
  std::unique_ptr<FileSearch> findFirst(const CXString& pattern, FileFindData* data);
  // Makes the folders on the way to a file on the disk, if the big file has them. False when nothing changed.
  bool makeFoldersFor(const CXString& path) const;

 private:
  std::vector<std::string> insideNames(const CXString& path) const;
  const BigFileRecord* find(const CXString& path) const;
  const BigFileEntry* findFolder(const CXString& path) const;

  std::unique_ptr<CBigFile> file_;
  platform::EnginePath current_;
  platform::EnginePath start_;  // stands for both roots as long as nobody tells them
};

}  // namespace footlight
