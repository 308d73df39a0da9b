#pragma once

// Run-length data of pictures in rows, each packed on its own. A control byte n, read as signed, says: from 0
// on, that n + 1 bytes follow and are copied; below 0, that one byte follows and is repeated |n| + 1 times,
// which makes 129 times of -128. PSD files hold it.

#include <cstdint>
#include <vector>

#include "files/compression.h"
#include "foundation/geometry.h"

namespace footlight {

class CRLECompression2 : public CCompression {
 public:
  // The number of packed bytes of each row; one below 0 counts as none. Both spans stay the caller's.
  CRLECompression2(CXSize size, std::span<const std::int16_t> rowLengths, std::span<const std::byte> data)
      : CCompression(data), size_(size), rowLengths_(rowLengths) {}

  // Width x height bytes. No row reads or writes beyond its own bytes; rows without a length are zero.
  std::vector<std::byte> Decompress() const;

 private:
  CXSize size_;
  std::span<const std::int16_t> rowLengths_;
};

}  // namespace footlight
