#include "convert.h"

#include <algorithm>
#include <array>

#include "foundation/byte_reader.h"
#include "gfx/jpeg.h"
#include "gfx/pixel_format.h"
#include "jpeg_writer.h"

namespace footlight::image {

namespace {

using Bytes = std::vector<std::byte>;
using View = std::span<const std::byte>;

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::uint32_t kOpaque = 0xFF000000;

bool isPng(View file) {
  return file.size() >= kPngSignature.size() &&
         std::equal(kPngSignature.begin(), kPngSignature.end(), file.begin(),
                    [](std::uint8_t a, std::byte b) { return static_cast<std::byte>(a) == b; });
}

// A channel of so many bits as one of eight.
constexpr std::uint32_t widened(std::uint32_t value, int bits) {
  return value << (8 - bits) | value >> (2 * bits - 8);
}

std::uint32_t colourOf(std::uint32_t pixel, int bpp) {
  const int greenBits = bpp == 15 ? 5 : 6;
  const std::uint32_t red = widened(pixel >> (5 + greenBits) & 0x1F, 5);
  const std::uint32_t green = widened(pixel >> 5 & ((1u << greenBits) - 1), greenBits);
  return kOpaque | red << 16 | green << 8 | widened(pixel & 0x1F, 5);
}

std::uint16_t pixelOf(std::uint32_t colour, int bpp) {
  const std::uint32_t red = colour >> 19 & 0x1F;
  const std::uint32_t blue = colour >> 3 & 0x1F;
  return static_cast<std::uint16_t>(bpp == 15 ? red << 10 | (colour >> 11 & 0x1F) << 5 | blue
                                              : red << 11 | (colour >> 10 & 0x3F) << 5 | blue);
}

std::uint32_t nextColour(ByteReader& reader, int bpp) {
  if (bpp == 15 || bpp == 16) return colourOf(reader.u16(), bpp);
  if (bpp == 32) return kOpaque | reader.u32();
  const std::uint32_t red = reader.u8();
  const std::uint32_t green = reader.u8();
  return kOpaque | red << 16 | green << 8 | reader.u8();
}

// Turns packed planes into plain ones.
bool unpack(ImgPicture& picture, std::string* why) {
  const _compression form = picture.compression;
  const auto pixels = static_cast<std::size_t>(get_data_size(picture.size.width, picture.size.height, 8));
  if (form == _compression::jpeg) {
    picture.bpp = picture.bpp == 15 ? 15 : 16;
    JpegAllowance allowance;
    picture.colour = unpackJpeg(picture.colour, picture.size, picture.bpp, allowance, why);
    if (picture.colour.empty()) return false;
  } else {
    picture.colour = unpackPlane(form, Plane::colour, picture.colour,
                                 pixels * static_cast<std::size_t>(get_pixel_size(picture.bpp)));
  }
  const _compression alphaForm = form == _compression::jpeg ? _compression::lzw : form;
  if (picture.hasAlpha) picture.alpha = unpackPlane(alphaForm, Plane::alpha, picture.alpha, pixels);
  picture.compression = _compression::none;
  return true;
}

std::optional<Picture> fromImg(View file, std::string* why) {
  const char* fault = "";
  std::optional<ImgPicture> found = readImg(file, &fault);
  if (found) return unpacked(std::move(*found), why);
  *why = fault;
  return std::nullopt;
}

bool isOpaque(const Picture& picture) {
  return std::ranges::all_of(picture.pixels.pixels, [](std::uint32_t p) { return (p & kOpaque) == kOpaque; });
}

bool hasAlphaPlane(const Picture& picture, const Form& form) {
  return form.alpha == AlphaPlane::always || (form.alpha == AlphaPlane::asNeeded && !isOpaque(picture));
}

Bytes plainColours(const Picture& picture, int bpp) {
  Bytes colours;
  colours.reserve(picture.pixels.pixels.size() * 2);
  for (const std::uint32_t colour : picture.pixels.pixels) {
    const std::uint16_t pixel = pixelOf(colour, bpp);
    colours.push_back(static_cast<std::byte>(pixel & 0xFF));
    colours.push_back(static_cast<std::byte>(pixel >> 8));
  }
  return colours;
}

Bytes plainAlpha(const Picture& picture) {
  Bytes alpha;
  alpha.reserve(picture.pixels.pixels.size());
  for (const std::uint32_t colour : picture.pixels.pixels)
    alpha.push_back(static_cast<std::byte>(colour >> 24));
  return alpha;
}

}  // namespace

std::optional<Picture> unpacked(ImgPicture packed, std::string* why) {
  if (get_pixel_size(packed.bpp) == 1) {
    *why = "pictures of " + std::to_string(packed.bpp) + " bits per pixel are not read";
    return std::nullopt;
  }
  Picture picture{{}, packed.position, packed.bpp, packed.stored, packed.hasAlpha};
  if (!unpack(packed, why)) return std::nullopt;
  picture.pixels = {packed.size.width, packed.size.height, {}};
  picture.pixels.pixels.resize(packed.colour.size() / static_cast<std::size_t>(get_pixel_size(packed.bpp)));
  ByteReader colours(packed.colour);
  for (std::uint32_t& pixel : picture.pixels.pixels) pixel = nextColour(colours, packed.bpp);
  for (std::size_t i = 0; i < packed.alpha.size(); ++i) {
    picture.pixels.pixels[i] =
        (picture.pixels.pixels[i] & ~kOpaque) | std::to_integer<std::uint32_t>(packed.alpha[i]) << 24;
  }
  return picture;
}

std::optional<Picture> readPicture(std::span<const std::byte> file, std::string* why) {
  if (!isPng(file)) return fromImg(file, why);
  auto pixels = platform::decodePng(file);
  if (!pixels) {
    *why = "the PNG picture is damaged or over the engine's limits";
    return std::nullopt;
  }
  Picture picture{std::move(*pixels), {}};
  picture.hasAlpha = !isOpaque(picture);
  return picture;
}

std::optional<ImgPicture> packed(const Picture& picture, const Form& form, std::string* why) {
  const int width = picture.pixels.width;
  const int height = picture.pixels.height;
  ImgPicture out;
  out.size = {width, height};
  out.bpp = form.bpp;
  out.position = picture.position;
  const bool isJpeg = form.packing == _compression::jpeg;
  out.colour = isJpeg ? encodeJpeg(width, height, picture.pixels.pixels, form.quality)
                      : packPlane(form.packing, Plane::colour, plainColours(picture, form.bpp));
  if (hasAlphaPlane(picture, form)) {
    out.alpha = packPlane(isJpeg ? _compression::lzw : form.packing, Plane::alpha, plainAlpha(picture));
  }
  if (out.colour.empty()) {
    *why = "the picture cannot be packed in this form";
    return std::nullopt;
  }
  out.compression = out.stored = form.packing;
  return out;
}

std::optional<std::vector<std::byte>> toImg(const Picture& picture, const Form& form, std::string* why) {
  const auto planes = packed(picture, form, why);
  if (!planes) return std::nullopt;
  return writeImg(*planes, form.packing);
}

std::optional<std::vector<std::byte>> toPng(const Picture& picture, std::string* why) {
  auto file =
      platform::encodePng(picture.pixels.width, picture.pixels.height, picture.pixels.pixels,
                          picture.hasAlpha ? platform::PngChannels::rgba : platform::PngChannels::rgb);
  if (!file) *why = "the picture cannot be written as PNG";
  return file;
}

std::string describe(const Picture& picture) {
  std::string text = std::to_string(picture.pixels.width) + "x" + std::to_string(picture.pixels.height);
  if (picture.bpp != 0) {
    text += ", " + std::to_string(picture.bpp) + " bits per pixel";
    for (const PackingWord& row : kPackings) {
      if (row.packing == picture.packing) text += std::string(", packing ") + row.word;
    }
    text += ", at " + std::to_string(picture.position.x) + " " + std::to_string(picture.position.y);
  }
  return text + (picture.hasAlpha ? ", with alpha" : ", without alpha");
}

}  // namespace footlight::image
