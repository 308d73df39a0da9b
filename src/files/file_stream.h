#pragma once

// A CFile over a block of memory that stays the caller's. Nothing can be opened or written; line ends stay
// as they are.

#include "files/file.h"

namespace footlight {

class CFile_Stream : public CFile {
 public:
  CFile_Stream(const void* data, int length)
      : data_(static_cast<const char*>(data)), length_(data != nullptr && length > 0 ? length : 0) {}

  int Open(CWindow* window, const CXString& name, int mode) override;
  int Length() override { return length_; }
  int Tell() override { return position_; }
  // Origin 0 sets the position and 1 adds, both inside the block; 2 goes to the end whatever the offset is.
  int Seek(int offset, int origin) override;
  // At most what remains.
  int Read(void* target, int count) override;
  int Write(const void* source, int count) override;
  int Close() override { return 0; }
  bool GetLine(char* target, int size) override;
  CXString getLine() override;
  void putLine(const CXString& text) override;
  bool eof() override { return position_ == length_; }

 private:
  std::string_view takeLine(int limit);

  const char* data_;
  int length_;
  int position_ = 0;
};

}  // namespace footlight
