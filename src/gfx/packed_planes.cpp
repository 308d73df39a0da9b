#include "gfx/packed_planes.h"

#include <algorithm>

#include "files/lzw_compression2.h"
#include "files/rle_compression.h"

namespace footlight {

namespace {

std::vector<std::byte> unpackRle(Plane plane, std::span<const std::byte> packed, std::size_t size) {
  return plane == Plane::colour ? CRLECompression::decompress(packed, size)
                                : CRLECompression::decompresschar(packed, size);
}

std::vector<std::byte> packRle(Plane plane, std::span<const std::byte> plain) {
  return plane == Plane::colour ? CRLECompression::compress(plain) : CRLECompression::compresschar(plain);
}

std::vector<std::byte> sized(std::span<const std::byte> bytes, std::size_t size) {
  std::vector<std::byte> out;
  out.reserve(size);
  const auto kept = bytes.first(std::min(bytes.size(), size));
  out.assign(kept.begin(), kept.end());
  out.resize(size);
  return out;
}

}  // namespace

std::vector<std::byte> unpackPlane(_compression form, Plane plane, std::span<const std::byte> packed,
                                   std::size_t size) {
  switch (form) {
    case _compression::lzw:
      return CLZWCompression2(packed).decompress(size);
    case _compression::lzwOverRle:
      return unpackRle(plane, unwrapRle(plane, packed, size), size);
    case _compression::rle:
      return unpackRle(plane, packed, size);
    default:
      return sized(packed, size);
  }
}

std::vector<std::byte> unwrapRle(Plane plane, std::span<const std::byte> packed, std::size_t size) {
  const std::size_t width = plane == Plane::colour ? 2 : 1;
  return CLZWCompression2(packed).decompressUpTo(CRLECompression::bound((size + width - 1) / width, width));
}

std::vector<std::byte> packPlane(_compression form, Plane plane, std::span<const std::byte> plain) {
  switch (form) {
    case _compression::lzw:
      return CLZWCompression2(plain).compress();
    case _compression::lzwOverRle:
      return CLZWCompression2(packRle(plane, plain)).compress();
    case _compression::rle:
      return packRle(plane, plain);
    default:
      return {plain.begin(), plain.end()};
  }
}

}  // namespace footlight
