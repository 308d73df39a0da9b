#include "platform/png_file.h"

#include <bit>
#include <fstream>
#include <iterator>
#include <png.h>

#include "foundation/limits.h"
#include "platform/posix/atomic_file.h"

namespace footlight::platform {

namespace {

static_assert(std::endian::native == std::endian::little, "0xAARRGGBB lies in memory as B, G, R, A");

// Frees what the library holds for the picture, whatever way the function is left.
class Image {
 public:
  Image() { image_.version = PNG_IMAGE_VERSION; }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;
  ~Image() { png_image_free(&image_); }
  png_image* get() { return &image_; }
  png_image* operator->() { return &image_; }

 private:
  png_image image_{};
};

std::vector<std::byte> withoutAlpha(std::span<const std::uint32_t> pixels) {
  std::vector<std::byte> bytes;
  bytes.reserve(pixels.size() * 3);
  for (const std::uint32_t pixel : pixels) {
    for (int shift = 0; shift < 24; shift += 8)
      bytes.push_back(static_cast<std::byte>(pixel >> shift & 0xFF));
  }
  return bytes;
}

}  // namespace

std::optional<std::vector<std::byte>> encodePng(int width, int height, std::span<const std::uint32_t> pixels,
                                                PngChannels channels) {
  if (!limits::isPictureSize(width, height)) return std::nullopt;
  if (pixels.size() != static_cast<std::size_t>(std::int64_t{width} * height)) return std::nullopt;
  const bool alpha = channels == PngChannels::rgba;
  Image image;
  image->width = static_cast<png_uint_32>(width);
  image->height = static_cast<png_uint_32>(height);
  image->format = alpha ? PNG_FORMAT_BGRA : PNG_FORMAT_BGR;
  image->flags = PNG_IMAGE_FLAG_FAST;  // rows without filters, which any reader takes quickly
  const std::vector<std::byte> packed = alpha ? std::vector<std::byte>{} : withoutAlpha(pixels);
  const void* source = alpha ? static_cast<const void*>(pixels.data()) : packed.data();

  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*image.get());
  std::vector<std::byte> bytes(size);
  if (png_image_write_to_memory(image.get(), bytes.data(), &size, 0, source, 0, nullptr) == 0)
    return std::nullopt;
  bytes.resize(size);
  return bytes;
}

std::optional<PngPicture> decodePng(std::span<const std::byte> bytes) {
  Image image;
  if (png_image_begin_read_from_memory(image.get(), bytes.data(), bytes.size()) == 0) return std::nullopt;
  if (!limits::isPictureSize(image->width, image->height)) return std::nullopt;
  image->format = PNG_FORMAT_BGRA;
  PngPicture picture{static_cast<int>(image->width), static_cast<int>(image->height), {}};
  picture.pixels.resize(std::size_t{image->width} * image->height);
  if (png_image_finish_read(image.get(), nullptr, picture.pixels.data(), 0, nullptr) == 0)
    return std::nullopt;
  return picture;
}

std::string writePngFile(const std::string& machinePath, int width, int height,
                         std::span<const std::uint32_t> pixels, PngChannels channels) {
  const auto bytes = encodePng(width, height, pixels, channels);
  return bytes ? writeAtomically(machinePath, *bytes) : "is no picture that a PNG file can hold";
}

std::optional<PngPicture> readPngFile(const std::string& machinePath) {
  std::ifstream file(machinePath, std::ios::binary);
  if (!file) return std::nullopt;
  const std::vector<char> content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return decodePng(std::as_bytes(std::span(content)));
}

}  // namespace footlight::platform
