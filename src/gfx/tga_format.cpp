#include "gfx/tga_format.h"

#include <algorithm>

#include "foundation/byte_reader.h"
#include "gfx/pixel_block.h"
#include "gfx/pixel_format.h"

namespace footlight {

std::optional<TgaPicture> readTga(std::span<const std::byte> file) {
  ByteReader reader(file);
  const int idLength = reader.u8();
  reader.skip(1);
  const int kind = reader.u8();
  reader.skip(9);
  TgaPicture picture;
  const int width = reader.u16();
  const int height = reader.u16();
  const int bpp = reader.u8();
  reader.skip(1);
  if (!reader.ok()) return std::nullopt;
  constexpr int kPlainColours = 2;
  if (idLength != 0) {
    picture.unread = "TGA files with an image id are not read; footlight-image converts them";
    return picture;
  }
  picture.size = {width, height};
  picture.bpp = bpp;
  if (bpp != 24) {
    picture.unread = "TGA files of other than 24 bits per pixel are not read; footlight-image converts them";
  } else if (kind > kPlainColours) {
    picture.unread = "TGA files that are packed or gray are not read; footlight-image converts them";
  } else if (!isPictureSize(width, height)) {
    picture.unread = "the TGA picture is empty or too large";
  }
  if (picture.unread != nullptr) return picture;
  picture.pixels.resize(static_cast<std::size_t>(get_data_size(width, height, bpp)));
  std::ranges::copy(reader.atMost(picture.pixels.size()), picture.pixels.begin());
  return picture;
}

}  // namespace footlight
