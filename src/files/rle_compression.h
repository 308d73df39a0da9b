#pragma once

// The run-length form of pictures: records of a control byte and units, which are bytes for alpha planes and
// 16-bit words for pixels. A control byte of 0 to 127 says that so many units follow and are copied; 128 to
// 255, that one unit follows and is repeated (control & 127) times.

#include <vector>

#include "files/compression.h"

namespace footlight {

class CRLECompression : public CCompression {
 public:
  using CCompression::CCompression;

  // Packs 16-bit words; an odd last byte is left out.
  static std::vector<std::byte> compress(std::span<const std::byte> words);
  static std::vector<std::byte> compresschar(std::span<const std::byte> bytes);
  // Unpacks to exactly `unpackedSize` bytes. What the stream has beyond that is ignored; what it lacks is
  // zero. The caller has checked the size against its limits.
  static std::vector<std::byte> decompress(std::span<const std::byte> packed, std::size_t unpackedSize);
  static std::vector<std::byte> decompresschar(std::span<const std::byte> packed, std::size_t unpackedSize);

  // Most bytes that so many units of so many bytes can come from: each in a record of its own.
  static constexpr std::size_t bound(std::size_t units, std::size_t width) { return units * (width + 1); }
};

}  // namespace footlight
