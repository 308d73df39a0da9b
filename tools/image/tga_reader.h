#pragma once

// TGA files of all usual forms: colours, shades of gray or a palette, plain or in runs, from any corner.

#include "convert.h"

namespace footlight::image {

// Nothing, and the reason in `why`, when the bytes are no such picture. Missing pixels are black.
std::optional<Picture> readTgaPicture(std::span<const std::byte> file, std::string* why);

}  // namespace footlight::image
