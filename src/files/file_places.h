#pragma once

// What the file classes ask of the window: the two roots, the language versions of names, and whether
// the command line wants coded copies. The window implements and installs it; without one, names are
// taken as they stand.

#include "foundation/xstring.h"

namespace footlight {

class CFilePlaces {
 public:
  virtual ~CFilePlaces();

  // The directory that the engine was started in and the one that the command line's path leads to, both
  // ending in a backslash.
  virtual CXString rootPath() const = 0;
  virtual CXString dataRoot() const = 0;
  virtual bool hasLanguage() const = 0;
  // The language version of a path when there is one, else the path; see CLanguageOSVer::getLocalFileName.
  virtual CXString localFileName(const CXString& path) const = 0;
  // Whether coded, or decoded, copies of the definitions are to be written.
  virtual bool isToCode() const { return false; }
  virtual bool isToDecode() const { return false; }

  // Installs the places; null takes them away. The caller keeps ownership; an object that ends is taken away.
  static void use(CFilePlaces* places);
  static CFilePlaces* current();
};

}  // namespace footlight
