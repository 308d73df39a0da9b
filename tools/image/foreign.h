#pragma once

// Pictures of other programs: TGA of all its usual forms, BMP, JPEG, and the layers of PSD files.

#include "convert.h"

namespace footlight::image {

// Whether files of this ending, in lower case and with its dot, are read here.
bool isForeign(const std::string& extension);
// Nothing, and the reason in `why`, when the bytes are no such picture.
std::optional<Picture> readForeign(std::span<const std::byte> file, const std::string& extension,
                                   std::string* why);

struct Layer {
  std::string name;  // upper case letters, digits and _; no two of a file are the same
  Picture picture;   // with its place in the document
};

// The layers that show something, the lowest one first.
std::optional<std::vector<Layer>> readLayers(std::span<const std::byte> file, std::string* why);
// The lines of a definition file that show the layers, each from the file NAME.img in lower case.
std::string definitionOf(const std::vector<Layer>& layers);

}  // namespace footlight::image
