#pragma once

// Packs a picture as JPEG data.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace footlight::image {

// Rows from the top without padding; a pixel is 0x??RRGGBB. The quality goes from 1 to 100; from 90 on
// colours keep the full resolution. Empty when the library cannot pack the picture.
std::vector<std::byte> encodeJpeg(int width, int height, std::span<const std::uint32_t> pixels, int quality);

}  // namespace footlight::image
