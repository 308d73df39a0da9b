#pragma once

// The IMG picture file. Little-endian, in three layouts.
//
// "PIK", which is written: a header of 40 bytes, the colour data, the alpha data.
//
//   0 "PIK" and a 0 byte   4 width   8 height   12 bits per pixel   16 bytes of colour   20 reserved
//   24 packing   28 bytes of alpha   32 x   36 y
//
// The length of the colour data is what the file holds beside the header and the alpha data; JPEG data take
// theirs from the header. A file that says it is not packed, but has not the bytes of its size, is packed
// in LZO blocks.
//
// "NVI": a header of 37 bytes, then both planes with the lengths that it gives. Packing 2 is the older one,
// through a table of codes.
//
//   0 "NVI" and a 0 byte   4 width   6 height (16 bits, signed)   8 bits per pixel (8 bits)   9 bytes of
//   colour 13 bytes of alpha   17 x   19 y (16 bits, signed)   21 packing   25 reserved
//
// Anything else is the oldest layout: 80 bytes of no meaning, width and height (16 bits, signed), 6 bytes of
// no meaning, flags (16 bits: the code of the format in the lowest four, bit 10 for an alpha plane), 2 bytes
// of no meaning. Plain planes follow, or LZO blocks where the lengths do not fit plain ones.

#include <optional>
#include <span>
#include <vector>

#include "foundation/geometry.h"
#include "gfx/packed_planes.h"

namespace footlight {

struct ImgPicture {
  CXSize size;
  int bpp = 0;
  _compression compression = _compression::none;  // of the planes below
  _compression stored = _compression::none;       // of the file
  CXPoint position;
  std::vector<std::byte> colour;  // of the full size unless packed
  std::vector<std::byte> alpha;   // likewise, of an alpha plane
  bool hasAlpha = false;          // an alpha plane belongs to the picture, even if its bytes are missing
};

// Nothing when the bytes are no such file or its numbers are out of bounds; `why` then says so for a report.
// Missing bytes are zero. LZO blocks and what the older layouts alone pack come out plain.
std::optional<ImgPicture> readImg(std::span<const std::byte> file, const char** why);

// Is a file with these first bytes one of the "NVI" layout?
bool isOlderImg(std::span<const std::byte> file);

// The whole file. The bytes go out as they stand, `packing` only names them.
std::vector<std::byte> writeImg(const ImgPicture& picture, _compression packing);

}  // namespace footlight
