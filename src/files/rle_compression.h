#pragma once

// The run-length form of pictures: records of a control byte and units, which are bytes for alpha planes and
// 16-bit words for pixels. A control byte of 0 to 127 says that so many units follow and are copied; 128 to
// 255, that one unit follows and is repeated (control & 127) times.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace footlight {

class CRLECompression {
 public:
  // Packs 16-bit words; an odd last byte is left out.
  static std::vector<std::byte> compress(std::span<const std::byte> words);
  static std::vector<std::byte> compresschar(std::span<const std::byte> bytes);
  // Unpacks to exactly `unpackedSize` bytes. What the stream has beyond that is ignored; what it lacks is
  // zero. The caller has checked the size against its limits.
  static std::vector<std::byte> decompress(std::span<const std::byte> packed, std::size_t unpackedSize);
  static std::vector<std::byte> decompresschar(std::span<const std::byte> packed, std::size_t unpackedSize);
};

}  // namespace footlight
