#pragma once

// A whole text file in memory, read line by line. Files over limits::kTextFileBytes are refused
// like missing ones.

#include <string>
#include <string_view>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CWindow;

class CTextFileReader : public CXObject {
 public:
  // Reads the file; the error code tells how it went.
  CTextFileReader(CWindow* window, const CXString& name);
  // Reads memory that stays the caller's and must outlive the reader.
  CTextFileReader(CWindow* window, const char* data, int length);
  CTextFileReader(const CTextFileReader&) = delete;
  CTextFileReader& operator=(const CTextFileReader&) = delete;

  // The text up to the next line feed or the end, without the line feed; a carriage return stays. The text
  // lies in the reader's own memory.
  std::string_view getLine();
  bool eof() const { return position_ == text_.size(); }
  void reset() { position_ = 0; }
  // The full path that was read; empty for memory.
  const CXString& getFileName() const { return fileName_; }

 private:
  void load(CWindow* window, const CXString& name);

  std::string content_;  // of a file
  std::string_view text_;
  std::size_t position_ = 0;
  CXString fileName_;
};

}  // namespace footlight
