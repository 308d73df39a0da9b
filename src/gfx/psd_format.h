#pragma once

// The layers of a PSD file, as the engine reads them. Big-endian:
//
//   26 bytes of header, of which nothing counts; 32 bits, the length of the colour mode data, which must be
//   empty; 32 bits of length and the image resources; 32 bits, the length of all that follows on layers; 32
//   bits, that of the layers; 16 bits, how many there are, below 0 or not
//
// A record for each layer: top, left, bottom, right (32 bits each); 16 bits, its channels, but the number of
// the first layer holds for all; for each channel its id (16 bits) and a length (32 bits); 16 bytes of no
// meaning; a 32-bit length of the mask, of which 20 bytes follow if it is above 0; a 32-bit length and the
// blending ranges; the name, a length byte before it, padded together to a multiple of 4; then blocks of
// "8BIM", a key and a 32-bit length.
//
// Then, layer by layer, each channel: 16 bits, 0 for plain bytes, 1 for rows packed each on its own (see
// rle_compression2.h), before which stand their lengths in 16 bits each. Channels of another coding have
// no bytes and are left out. The picture of all layers together, which follows, is not read.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "foundation/geometry.h"

namespace footlight {

struct PsdChannel {
  int id = 0;                    // 0 red, 1 green, 2 blue, -1 alpha
  std::vector<std::byte> plane;  // of the layer's size; empty for a coding that is not known
};

struct PsdLayer {
  CXRect rect;  // in the document
  std::string name;
  std::vector<PsdChannel> channels;
  bool isWhole = false;  // its channels were all in the file
};

struct PsdPicture {
  std::vector<PsdLayer> layers;  // of a file that ends early those before its end
  const char* why = nullptr;     // what is wrong with a file that was not read to its last layer
};

PsdPicture readPsd(std::span<const std::byte> file);

}  // namespace footlight
