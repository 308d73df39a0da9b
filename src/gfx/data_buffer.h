#pragma once

// Elements of one size in one piece of memory, with a place among them, the cursor, and room for one copy of
// the whole to go back to. The two-dimensional form has its elements in rows without padding.
//
// The cursor may be moved anywhere; outside of the buffer there is no element to reach. A size that is over
// the limits of a picture gives a buffer without elements.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"

namespace footlight {

class CDataBuffer : public CXObject {
 public:
  // Zero elements.
  CDataBuffer(int count, int elementSize);
  // Copies of the source's elements; what it lacks is zero.
  CDataBuffer(std::span<const std::byte> source, int count, int elementSize);

  // Without the copy of the whole and with the cursor at the start.
  std::unique_ptr<CXObject> clone() const override;
  // Frees the elements and the copy.
  void flush();
  // Copies all elements aside, in place of an earlier copy.
  void backup();
  // Puts the copy back, if there is one; with `dropBackup` it is freed then.
  void restore(bool dropBackup);
  void zero();
  // Bytes of all elements.
  int getMemoryUsage() const { return count_ * elementSize_; }

  // The cursor to the first element, or by so many elements.
  void start() { position_ = 0; }
  CDataBuffer& operator++() { return *this += 1; }
  CDataBuffer& operator--() { return *this -= 1; }
  CDataBuffer& operator+=(int elements) {
    position_ += elements;
    return *this;
  }
  CDataBuffer& operator-=(int elements) {
    position_ -= elements;
    return *this;
  }
  // The bytes of the element under the cursor; none outside of the buffer. Valid until `flush`.
  std::span<std::byte> cursor();

  int count() const { return count_; }
  int elementSize() const { return elementSize_; }
  std::span<std::byte> data() { return data_; }
  std::span<const std::byte> data() const { return data_; }

 protected:
  void moveTo(std::int64_t position) { position_ = position; }

 private:
  int count_ = 0;
  int elementSize_ = 0;
  std::int64_t position_ = 0;
  std::vector<std::byte> data_;
  std::vector<std::byte> backupData_;
};

class CDataBuffer2Dim : public CDataBuffer {
 public:
  CDataBuffer2Dim(CXSize size, int elementSize);
  CDataBuffer2Dim(std::span<const std::byte> source, CXSize size, int elementSize);

  std::unique_ptr<CXObject> clone() const override;
  int getWidth() const { return width_; }
  int getHeight() const { return height_; }
  // Puts the cursor on the element, or moves it by a row.
  void at(int x, int y) { moveTo(std::int64_t{y} * width_ + x); }
  void nextLine() { *this += width_; }
  void prevLine() { *this -= width_; }

 private:
  int width_;
  int height_;
};

}  // namespace footlight
