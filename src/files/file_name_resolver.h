#pragma once

// Splits one path into its parts. It looks at no disk.

#include <vector>

#include "foundation/xstring.h"

namespace footlight {

class CFileNameResolver {
 public:
  explicit CFileNameResolver(CXString path) : path_(std::move(path)) { resolve(); }

  // 0 without one.
  char getDrive() const { return drive_; }
  // From the root on, without the drive and the file.
  const std::vector<CXString>& getDirectories() const { return directories_; }
  // The last part of the path.
  const CXString& getFileName() const { return fileName_; }
  // The file name up to its first point, and what stands between that and the next one.
  const CXString& getPureFileName() const { return pureName_; }
  const CXString& getExtension() const { return extension_; }
  // The path as it was given.
  const CXString& getPath() const { return path_; }

 private:
  void resolve();

  CXString path_;
  char drive_ = '\0';
  std::vector<CXString> directories_;
  CXString fileName_;
  CXString pureName_;
  CXString extension_;
};

}  // namespace footlight
