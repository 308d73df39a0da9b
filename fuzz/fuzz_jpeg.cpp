// JPEG data in memory. A picture comes out whole and the same each time, in both formats and fitted to
// another size; one that cannot be read leaves the error code and a reason.

#include <cstdlib>

#include "files/file.h"
#include "gfx/jpeg.h"

namespace footlight::fuzz {

namespace {

void demand(bool holds) {
  if (!holds) std::abort();
}

void checkPicture(std::span<const std::byte> data, int bpp) {
  JPEG picture(data);
  const auto size =
      static_cast<std::size_t>(picture.getWidth()) * static_cast<std::size_t>(picture.getHeight());
  const auto pixels = picture.decompress(bpp);
  demand(picture.decompress(bpp).empty());
  std::string why;
  JpegAllowance allowance;
  const auto fitted = unpackJpeg(data, {7, 5}, bpp, allowance, &why);
  if (picture.LastError() != 0) {
    demand(picture.LastError() == CFile::kNotFound && pixels.empty() && !picture.why().empty());
    demand(fitted.empty() && why == picture.why());
    return;
  }
  demand(size > 0 && pixels.size() == size * 2);
  demand(fitted.size() == 70 && fitted[0] == pixels[0]);
  demand(JPEG(data).decompress(bpp) == pixels);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace footlight::fuzz;
  const auto bytes = std::as_bytes(std::span(data, size));
  checkPicture(bytes, 15);
  checkPicture(bytes, 16);
  return 0;
}
