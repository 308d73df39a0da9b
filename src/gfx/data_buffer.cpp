#include "gfx/data_buffer.h"

#include <algorithm>

#include "foundation/limits.h"
#include "gfx/pixel_block.h"

namespace footlight {

namespace {

constexpr int kLargestElement = 16;

int countOf(CXSize size) { return isPictureSize(size.width, size.height) ? size.mul() : 0; }

}  // namespace

CDataBuffer::CDataBuffer(int count, int elementSize) : CDataBuffer({}, count, elementSize) {}

CDataBuffer::CDataBuffer(std::span<const std::byte> source, int count, int elementSize) {
  if (count <= 0 || elementSize <= 0 || count > limits::kPicturePixels || elementSize > kLargestElement)
    return;
  count_ = count;
  elementSize_ = elementSize;
  data_.resize(static_cast<std::size_t>(count) * static_cast<std::size_t>(elementSize));
  std::copy_n(source.begin(), std::min(source.size(), data_.size()), data_.begin());
}

std::unique_ptr<CXObject> CDataBuffer::clone() const {
  return std::make_unique<CDataBuffer>(data_, count_, elementSize_);
}

void CDataBuffer::flush() {
  data_ = {};
  backupData_ = {};
  count_ = 0;
  position_ = 0;
}

void CDataBuffer::backup() { backupData_ = data_; }

void CDataBuffer::restore(bool dropBackup) {
  if (backupData_.empty()) return;
  std::copy(backupData_.begin(), backupData_.end(), data_.begin());
  if (dropBackup) backupData_ = {};
}

void CDataBuffer::zero() { std::fill(data_.begin(), data_.end(), std::byte{0}); }

std::span<std::byte> CDataBuffer::cursor() {
  if (position_ < 0 || position_ >= count_) return {};
  const auto size = static_cast<std::size_t>(elementSize_);
  return std::span(data_).subspan(static_cast<std::size_t>(position_) * size, size);
}

CDataBuffer2Dim::CDataBuffer2Dim(CXSize size, int elementSize) : CDataBuffer2Dim({}, size, elementSize) {}

CDataBuffer2Dim::CDataBuffer2Dim(std::span<const std::byte> source, CXSize size, int elementSize)
    : CDataBuffer(source, countOf(size), elementSize),
      width_(count() > 0 ? size.width : 0),
      height_(count() > 0 ? size.height : 0) {}

std::unique_ptr<CXObject> CDataBuffer2Dim::clone() const {
  return std::make_unique<CDataBuffer2Dim>(data(), CXSize(width_, height_), elementSize());
}

}  // namespace footlight
