#pragma once

// Definition text lies on the disk plain or in a light coded form; who asks a coder for lines does
// not see which.
//
// The coded form. The first line is "{<C:N>}"; "{<D:N>}" is the same and asks for a plain copy beside the
// file. Each further physical line holds up to N logical lines, each being its shifted bytes and the plain
// mark "<E>". Byte by byte, over the ends of lines, an index runs from 0 to N - 1 and round again; the
// shifts for 0, 1, 2, 3, ... are +1, -1, +2, -2, ... There is no escape and no checksum: damaged text
// yields wrong text.
//
// A first line whose N is not from 1 to 65535, or that does not end its mark, makes the file a plain one.

#include <memory>
#include <string>
#include <string_view>

#include "files/text_file_reader.h"

namespace footlight {

class CTextCoder : public CXObject {
 public:
  static constexpr int kMostCycle = 65535;

  // Reads the file. The error code is the reader's; nothing more happens when it is not 0. `keepQuiet`
  // suppresses the plain copy.
  CTextCoder(CWindow* window, const CXString& fileName, bool keepQuiet);
  // Reads from a reader that stays the caller's. It knows no file name, so there is no plain copy.
  CTextCoder(CWindow* window, CTextFileReader* reader, bool keepQuiet);
  CTextCoder(const CTextCoder&) = delete;
  CTextCoder& operator=(const CTextCoder&) = delete;

  // Nothing is left; in a coded file this shows only after a line was looked for in vain.
  virtual bool _eof() const;
  // The next logical line in plain text, with a line feed at its end; the line feed alone when there is none.
  virtual CXString getLine();
  // The next physical line of a file that is not coded, without its line feed, in the reader's memory.
  std::string_view plainLine() { return reader_->getLine(); }
  // The next physical line of a plain file in coded form, with its line feed; empty at the end.
  virtual CXString codeLine();
  virtual bool isCoded() const { return coded_; }

  // The full path that was read; empty for memory.
  const CXString& getFileName() const { return reader_->getFileName(); }

  // Writes a coded copy of a plain file; a coded one is left alone and nothing is written.
  static void code(CWindow* window, const CXString& from, const CXString& to, int cycle);
  // Writes a plain copy of a coded file; for a plain one nothing is written.
  static void decode(CWindow* window, const CXString& from, const CXString& to);

 private:
  virtual int getOffset(int index) const;  // the shift

  void init(CWindow* window, bool keepQuiet);
  void setCycle(int cycle) { cycle_ = cycle; }
  char shift(char character, int direction);

  CXString fileName_;
  std::unique_ptr<CTextFileReader> owned_;
  CTextFileReader* reader_;
  bool coded_ = false;
  int cycle_ = 1;
  int index_ = 0;
  bool finished_ = false;
  std::size_t position_ = 0;
  int lines_ = 0;
  std::string_view line_;  // the current physical line, in the reader's memory
};

}  // namespace footlight
