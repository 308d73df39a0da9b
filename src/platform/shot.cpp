#include "platform/shot.h"

#include <cstring>

#include "platform/png_file.h"

namespace footlight::platform {

namespace {

constexpr std::uint32_t from15(std::uint32_t pixel) {
  return (pixel & 0x7C00) << 9 | (pixel & 0x3E0) << 6 | (pixel & 0x1F) << 3;
}
constexpr std::uint32_t from16(std::uint32_t pixel) {
  return (pixel & 0xF800) << 8 | (pixel & 0x7E0) << 5 | (pixel & 0x1F) << 3;
}

std::uint32_t readPixel(const std::byte* row, int x, int bpp) {
  std::uint32_t pixel = 0;
  const std::size_t size = bpp == 32 ? 4 : 2;
  std::memcpy(&pixel, row + static_cast<std::size_t>(x) * size, size);
  if (bpp == 32) return pixel & 0xFFFFFF;
  return bpp == 15 ? from15(pixel) : from16(pixel);
}

}  // namespace

std::vector<std::uint32_t> expandFrame(const Frame& frame) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
  for (int y = 0; y < frame.height; ++y) {
    const std::byte* row = frame.pixels + std::ptrdiff_t{y} * frame.pitch;
    for (int x = 0; x < frame.width; ++x) pixels.push_back(readPixel(row, x, frame.bpp));
  }
  return pixels;
}

std::string writeShot(const Frame& frame, const std::string& file) {
  return platform::writePngFile(file, frame.width, frame.height, expandFrame(frame));
}

}  // namespace footlight::platform
