#pragma once

// Pictures as PNG files, for screen shots, printed pages and tools. Names are the machine's own: this is
// for files that the player names on the command line or that stand for a device, never for names that come
// from a game.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace footlight::platform {

// Rows from the top without padding; a pixel is 0xAARRGGBB.
struct PngPicture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

enum class PngChannels { rgb, rgba };

// Nothing when the sizes do not fit together or memory is short. With `rgb` the top byte is left out.
std::optional<std::vector<std::byte>> encodePng(int width, int height, std::span<const std::uint32_t> pixels,
                                                PngChannels channels);
// Nothing when the bytes are no PNG picture, it is damaged, or it is larger than the engine's pictures may
// be. A picture without alpha comes with a top byte of FF.
std::optional<PngPicture> decodePng(std::span<const std::byte> bytes);

// Writes a whole new file, as posix/atomic_file.h tells. Empty, or what went wrong; the old file stays then.
std::string writePngFile(const std::string& machinePath, int width, int height,
                         std::span<const std::uint32_t> pixels, PngChannels channels = PngChannels::rgb);
std::optional<PngPicture> readPngFile(const std::string& machinePath);

}  // namespace footlight::platform
