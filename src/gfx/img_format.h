#pragma once

// The IMG picture file in its current form: a header of 40 bytes, the colour data, the alpha data, all
// little-endian.
//
//   0 "PIK" and a 0 byte   4 width   8 height   12 bits per pixel   16 bytes of colour   20 reserved
//   24 packing   28 bytes of alpha   32 x   36 y
//
// The length of the colour data is what the file holds beside the header and the alpha data. A file that says
// it is not packed, but has not the bytes of its size, is packed.

#include <optional>
#include <span>
#include <vector>

#include "foundation/geometry.h"
#include "gfx/graphics_object.h"

namespace footlight {

struct ImgPicture {
  CXSize size;
  int bpp = 0;
  _compression compression = _compression::none;
  CXPoint position;
  std::vector<std::byte> colour;  // of the full size unless packed
  std::vector<std::byte> alpha;   // empty without an alpha plane; of the full size unless packed
};

// Nothing when the bytes are no such file, or one in a form that we do not read yet (block packing, JPEG, the
// two older layouts); `why` then says so for a report. Missing bytes are zero.
std::optional<ImgPicture> readImg(std::span<const std::byte> file, const char** why);

// The whole file. The bytes go out as they stand, `packing` only names them.
std::vector<std::byte> writeImg(const ImgPicture& picture, _compression packing);

}  // namespace footlight
