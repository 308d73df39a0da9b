#pragma once

// The planes of a picture, its colours and its alpha bytes, from the forms of files to plain bytes and back.
// Sizes are those of the picture, which the caller has checked against the limits; what a stream says of its
// own size allocates nothing.

#include <cstddef>
#include <span>
#include <vector>

namespace footlight {

// What the bytes of a picture are.
enum class _compression {
  none = 0,
  lzw = 2,
  lzwOverRle = 3,
  rle = 4,
  jpeg = 5,  // colour only; the alpha plane is lzw then
};

enum class Plane { colour, alpha };

// Exactly `size` plain bytes of a plane in any form but JPEG, cut or filled with zeros.
std::vector<std::byte> unpackPlane(_compression form, Plane plane, std::span<const std::byte> packed,
                                   std::size_t size);
// The run-length form of a plane of `size` bytes out of the block around it.
std::vector<std::byte> unwrapRle(Plane plane, std::span<const std::byte> packed, std::size_t size);
// A plane in any form but JPEG.
std::vector<std::byte> packPlane(_compression form, Plane plane, std::span<const std::byte> plain);

}  // namespace footlight
