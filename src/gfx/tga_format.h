#pragma once

// The TGA picture file, as far as the engine reads it: without an image id and with plain pixels of 24 bits,
// rows from the bottom up. Little-endian; of the 18 bytes of the header four fields count:
//
//   0 length of the image id (8 bits)   12 width   14 height (16 bits)   16 bits per pixel (8 bits)

#include <optional>
#include <span>
#include <vector>

#include "foundation/geometry.h"

namespace footlight {

struct TgaPicture {
  CXSize size;
  int bpp = 0;
  std::vector<std::byte> pixels;  // rows from the bottom; missing bytes are zero; empty for what is not read
  const char* unread = nullptr;   // why there are no pixels
};

// Nothing when the header is not whole.
std::optional<TgaPicture> readTga(std::span<const std::byte> file);

}  // namespace footlight
