#pragma once

// Blocks of LZO1X, the usual form of packed pictures. Little-endian:
//
//   0 unpacked size   4 packed bytes that follow   8 the stream
//
// Neither number is trusted: the stream ends with the data, and the decoder is the library's checked one.

#include <vector>

#include "files/compression.h"

namespace footlight {

class CLZWCompression2 : public CCompression {
 public:
  using CCompression::CCompression;

  // The block; empty when the library reports a failure.
  std::vector<std::byte> compress() const;
  // Exactly `unpackedSize` bytes.
  std::vector<std::byte> decompress(std::size_t unpackedSize) const;
  // What the block holds, but not more than `bound` bytes.
  std::vector<std::byte> decompressUpTo(std::size_t bound) const;
};

}  // namespace footlight
