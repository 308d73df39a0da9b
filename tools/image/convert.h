#pragma once

// Pictures between IMG files and PNG files, as bytes.
//
// On the way to IMG a colour keeps its upper bits, as the engine's own colours do. On the way back its upper
// bits fill the lower ones, so that white stays white; the way to PNG and back again changes nothing.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "foundation/geometry.h"
#include "gfx/img_format.h"
#include "platform/png_file.h"

namespace footlight::image {

enum class AlphaPlane { asNeeded, always, never };

// How an IMG file is written.
struct Form {
  int bpp = 16;  // or 15
  _compression packing = _compression::none;
  AlphaPlane alpha = AlphaPlane::asNeeded;  // needed: a pixel is not opaque
  int quality = 90;                         // of JPEG colours, 1 to 100
};

struct Picture {
  platform::PngPicture pixels;
  CXPoint position;
  // What an IMG file said of itself; 0 bits per pixel for a PNG file.
  int bpp = 0;
  _compression packing = _compression::none;
  bool hasAlpha = false;
};

// The picture of a PNG or IMG file; nothing, and the reason in `why`, when the bytes are neither.
std::optional<Picture> readPicture(std::span<const std::byte> file, std::string* why);
// Between plain pixels and the planes of an IMG file, of an animation's frame too. Nothing, and the reason in
// `why`, when that cannot be.
std::optional<Picture> unpacked(ImgPicture packed, std::string* why);
std::optional<ImgPicture> packed(const Picture& picture, const Form& form, std::string* why);
// The whole file. Nothing, and the reason in `why`, when the picture cannot be packed.
std::optional<std::vector<std::byte>> toImg(const Picture& picture, const Form& form, std::string* why);
std::optional<std::vector<std::byte>> toPng(const Picture& picture, std::string* why);
// One line: size, bits per pixel, packing, alpha plane, position.
std::string describe(const Picture& picture);

// The words for the forms of packing, for command lines and descriptions.
struct PackingWord {
  const char* word;
  _compression packing;
};
inline constexpr PackingWord kPackings[] = {
    {"none", _compression::none}, {"lzo", _compression::lzw},   {"lzo-rle", _compression::lzwOverRle},
    {"rle", _compression::rle},   {"jpeg", _compression::jpeg},
};

}  // namespace footlight::image
