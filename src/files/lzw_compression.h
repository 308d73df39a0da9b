#pragma once

// Blocks packed through a table of codes, the form of older pictures. Little-endian:
//
//   0 unpacked size   4 packed bytes that follow   8 number of codes   12 the codes
//
// Codes stand low bits first, 9 to 16 bits wide. Below 256 they are bytes; 256 empties the table and goes
// back to 9 bits, and the code behind it is a byte; from 257 on they stand for the strings in the table,
// which grows by one entry a code until it is full: the string before and the first byte of this one.

#include <vector>

#include "files/compression.h"

namespace footlight {

class CLZWCompression : public CCompression {
 public:
  using CCompression::CCompression;

  // The block. The encoder empties its table when a stretch of codes packs worse than the block so far.
  std::vector<std::byte> compress() const;
  // Exactly `unpackedSize` bytes; decoding ends at a code that stands for nothing.
  std::vector<std::byte> decompress(std::size_t unpackedSize) const;
};

}  // namespace footlight
