// A PNG or IMG file as the converter of pictures takes it, in the form that the first byte chooses. What it
// writes it reads again, in the same size.

#include "demand.h"
#include "image/convert.h"

namespace footlight::fuzz {

namespace {

void play(std::span<const std::uint8_t> data) {
  if (data.empty()) return;
  std::string why;
  const auto picture = image::readPicture(std::as_bytes(data.subspan(1)), &why);
  demand(picture.has_value() == why.empty());
  if (!picture) return;
  image::describe(*picture);
  const std::size_t packing = data[0] % std::size(image::kPackings);
  const image::Form form{.bpp = data[0] & 0x80 ? 15 : 16, .packing = image::kPackings[packing].packing};
  for (const auto& bytes : {image::toImg(*picture, form, &why), image::toPng(*picture, &why)}) {
    if (!bytes) continue;
    const auto again = image::readPicture(*bytes, &why);
    demand(again && again->pixels.width == picture->pixels.width &&
           again->pixels.height == picture->pixels.height);
  }
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
