#pragma once

// Helpers on names: joining, and turning a name as scripts write it into a path.

#include "foundation/xstring.h"

namespace footlight {

class CWindow;

class CPath {
 public:
  // The current directory.
  explicit CPath(CWindow* window);
  // The given name, and the extension behind its last point.
  CPath(CWindow* window, CXString path);

  const CXString& getCurrentPath() const { return path_; }
  void SetExtension(const CXString& extension) { extension_ = extension.Lower(); }
  // In lower case, without the point.
  const CXString& GetExtension() const { return extension_; }

  // Below the base directory.
  CXString GetFullPath(const CXString& name) const { return getFullPath(path_, name); }
  CXString GetFullPath(const CXString& folder, const CXString& name) const {
    return getFullPath(path_, folder, name);
  }
  // Joins with one backslash, which is added only if `dir` does not end in one.
  static CXString getFullPath(const CXString& dir, const CXString& name);
  // Adds a backslash behind `dir` always, and behind `folder` when that is not empty.
  static CXString getFullPath(const CXString& dir, const CXString& folder, const CXString& name);

  // A first character `$` or `&` stands for the data root. `a?b` means `a\b` below the current directory.
  CXString resolveFileName(const CXString& name) const { return resolveFileName(window_, name); }
  static CXString resolveFileName(CWindow* window, const CXString& name);
  // The same with the root path in place of the data root.
  static CXString resolveFileNameEx(CWindow* window, const CXString& name);

 private:
  CWindow* window_;
  CXString path_;
  CXString extension_;
};

}  // namespace footlight
