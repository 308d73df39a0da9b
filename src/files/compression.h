#pragma once

// Base of the classes that pack and unpack bytes. The bytes stay the caller's and must outlive the object;
// what comes out is the caller's too.
//
// Unpacking gives exactly as many bytes as were asked for, whatever the packed data say of themselves: what
// they lack is zero, what they have beyond is dropped. Callers check the size against their limits first.

#include <cstddef>
#include <span>

#include "foundation/xobject.h"

namespace footlight {

class CCompression : public CXObject {
 public:
  CCompression() = default;
  explicit CCompression(std::span<const std::byte> data) : data_(data) {}

  int GetSize() const { return static_cast<int>(data_.size()); }
  void setData(std::span<const std::byte> data) { data_ = data; }

 protected:
  std::span<const std::byte> data_;
};

}  // namespace footlight
