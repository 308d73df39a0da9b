#pragma once

// The player's language: a number and the name of the folders that hold a language's versions of files. It
// begins with the system's language; a script may choose another by its locale code.

#include <functional>
#include <span>

#include "foundation/xstring.h"

namespace footlight {

class CWindow;

class CLanguageOSVer {
 public:
  // A language with a folder of its own.
  struct Folder {
    const char* code;  // of the locale
    int number;
    const char* name;
  };
  static std::span<const Folder> folders();

  // Asks the machine for its language.
  CLanguageOSVer();

  // 1 to 7, or 9 for every language without a folder of its own.
  int getLang() const { return language_; }
  // "POL" and the like; empty for 9.
  const CXString& getLanguageFolder() const { return folder_; }
  // Whether there is a language of this locale code.
  static bool isKnown(const CXString& code);
  // Takes four hexadecimal digits; an unknown code leaves the language as it is. With a window known its
  // keyboard is told in either case.
  void setLanguageFolder(const CXString& code);
  // The language version of a path when there is one: the language folder is put before the last name. A bare
  // name gets the folder in front without a look at the disk.
  CXString getLocalFileName(const CXString& path) const;

  // The window that hears of changes; may be null. The hook is the window's to set.
  void setWindowIfc(CWindow* window) { window_ = window; }
  std::function<void()> onLanguageChange;

 private:
  void choose(const CXString& code);

  int language_ = 9;
  CXString folder_;
  CWindow* window_ = nullptr;
};

}  // namespace footlight
