#pragma once

// CXArchive is the engine's one binary stream. It reads or it stores, and one routine serves both: `pass` of
// a field writes it when storing and sets it otherwise. All numbers are little-endian, with nothing between.
//
// What does not fit while reading sets the failed flag: from then on every field comes back zero or empty and
// nothing is left. What is stored reaches the disk as a whole by `Close`, or not at all.

#include <cstdint>
#include <span>
#include <vector>

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CFile;
class CWindow;

class CXArchive {
 public:
  // Reads the rest of an open file. One that is not open, or over the limit of files, has failed.
  explicit CXArchive(CFile& file);
  // Stores into a file that `Close` makes; the window and the name are those of CFile::Open.
  CXArchive(CWindow* window, CXString name);
  // Reads these bytes, which stay the caller's.
  explicit CXArchive(std::span<const std::byte> bytes) : in_(bytes) {}
  ~CXArchive();
  CXArchive(const CXArchive&) = delete;
  CXArchive& operator=(const CXArchive&) = delete;

  bool isStoring() const { return storing_; }
  // What was read does not fit, or something cannot be stored.
  bool hasFailed() const { return failed_ || !in_.ok(); }
  void fail() { failed_ = true; }
  // Bytes left to read, and the place of the next one.
  std::size_t left() const { return hasFailed() ? 0 : in_.left(); }
  std::size_t position() const { return storing_ ? out_.size() : in_.position(); }
  std::span<const std::byte> written() const { return out_.written(); }

  // 4 bytes.
  void pass(int& value);
  void pass(std::uint32_t& value);
  // 8 bytes.
  void pass(std::int64_t& value);
  // 1 byte.
  void pass(bool& value);
  // 4 bytes: whole thousandths, cut toward zero.
  void pass(double& value);
  // The length in 4 bytes, then the characters. A negative length does not fit.
  void pass(CXString& text);
  // Four numbers: left, top, right, bottom.
  void pass(CXRect& rect);
  // A value that may not change; only for storing.
  template <class Value>
  void store(Value value) {
    pass(value);
  }
  // A count of things of at least so many bytes each. One that is negative or needs more bytes than are left
  // does not fit and gives 0.
  int passCount(std::size_t count, std::size_t bytesOfOne);

  // The length in 1 byte, then as many characters, 127 at most. A length of 0 or less, signed, is empty.
  void writeShortString(std::string_view text);
  CXString readShortString();
  // A word as text: written as it is, read up to the next blank and at most 1024 characters.
  void FWrite(std::string_view word);
  CXString FRead();
  // Appends the bytes of the named file; false when it cannot be read.
  bool CopyFileA(const CXString& name);

  // Kept, and never written.
  void Separator(unsigned char separator) { separator_ = separator; }
  unsigned char getSeparator() const { return separator_; }
  // The file that is read; null when there is none.
  CFile* GetFileHandle() const { return file_; }
  // Ends the work. Storing: writes the file; false when it could not be written, or something failed before,
  // and then the old file is still there.
  bool Close();

  // An object that lives as long as the archive: it stands in for one that is not read yet.
  void keep(Owned<CXObject> object) { kept_.push_back(std::move(object)); }

  // A value as the archive holds it, and back.
  static std::int32_t toThousandths(double value);
  static double fromThousandths(std::int32_t thousandths) { return thousandths * 0.001; }

 private:
  CFile* file_ = nullptr;
  CWindow* window_ = nullptr;
  CXString name_;
  bool storing_ = false;
  bool failed_ = false;
  unsigned char separator_ = 0;
  std::vector<std::byte> bytes_;
  ByteReader in_;
  ByteWriter out_;
  std::vector<Owned<CXObject>> kept_;
};

}  // namespace footlight
