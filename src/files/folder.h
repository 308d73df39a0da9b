#pragma once

// A walk through folders. It moves the engine's current directory with it; who walks notes it before
// and goes back.

#include <memory>
#include <vector>

#include "files/file.h"
#include "foundation/xstring.h"

namespace footlight {

class CFolder {
 public:
  static constexpr const char* DATA_FOLDER = "Dane";
  static constexpr const char* WAVS_FOLDER = "WAVS";
  static constexpr const char* SFX_FOLDER = "Wavs\\Sfx";
  static constexpr const char* COMMON_FOLDER = "COMMON";

  // Starts in the current directory.
  explicit CFolder(CWindow* window);
  // Enters the path.
  CFolder(CWindow* window, const CXString& path);

  // False, with nothing changed, when there is no such folder.
  bool GoTo(const CXString& path);
  bool GoUp() { return GoTo(".."); }
  bool GoStart() { return GoTo(start_); }
  // Where the last step came from.
  bool back() { return GoTo(CXString(previous_)); }
  const CXString& getCurrentPath() const { return current_; }

  // All names here that fit the pattern, files and folders alike, in the order of the search.
  std::vector<CXString> list(const CXString& pattern) const;
  bool IsDirectory(const CXString& name) const { return CFile::dirExists(name); }
  // Bytes; 0 when there is no such file.
  int GetSize(const CXString& name) const;
  // Begins a search: the first name that fits, or the first folder; empty when there is none.
  CXString GetFileName(const CXString& pattern);
  CXString GetFolderName(const CXString& pattern);
  // The next one of the search; empty at its end.
  CXString GetNextFileName();

 private:
  CXString search(const CXString& pattern, int attributes);

  CWindow* window_;
  CXString start_;
  CXString current_;
  CXString previous_;
  std::unique_ptr<FileSearch> search_;
};

}  // namespace footlight
