// A TGA file as the engine and the converter read it: pixels cover the picture or there are none.

#include "demand.h"
#include "foreign.h"
#include "gfx/tga_format.h"

namespace footlight::fuzz {

namespace {

void checkTga(std::span<const std::byte> file) {
  if (const auto picture = readTga(file)) {
    const auto pixels =
        static_cast<std::size_t>(picture->size.width) * static_cast<std::size_t>(picture->size.height);
    demand(picture->pixels.empty() == (picture->unread != nullptr));
    demand(picture->pixels.empty() || picture->pixels.size() == pixels * 3);
  }
  std::string why;
  const auto converted = image::readForeign(file, ".tga", &why);
  demand(converted.has_value() == why.empty());
  if (!converted) return;
  const auto& pixels = converted->pixels;
  demand(pixels.pixels.size() ==
         static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkTga(std::as_bytes(std::span(data, size)));
  return 0;
}
