#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace footlight::platform {

// A composed frame in the display's format; the pixels stay the caller's.
struct Frame {
  const std::byte* pixels;
  int pitch;  // bytes from row to row
  int width;
  int height;
  int bpp;  // 15, 16 or 32
};

// The frame as 0x00RRGGBB without padding. 16-bit and 15-bit pixels expand as the engine's own conversion
// table does: the low bits are zero, so white is F8FCF8.
std::vector<std::uint32_t> expandFrame(const Frame& frame);
// Writes the frame as a PNG file of the machine. Empty, or what went wrong.
std::string writeShot(const Frame& frame, const std::string& file);

}  // namespace footlight::platform
