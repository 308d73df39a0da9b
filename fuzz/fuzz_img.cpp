// An IMG file of any layout, from the disk to the pixels. A picture that loads is whole, the same each time,
// and comes back from its own saved form; one that does not load leaves nothing.

#include <algorithm>
#include <cstdlib>

#include "files/file.h"
#include "gfx/image.h"
#include "gfx/pixel_format.h"
#include "platform/headless/headless_platform.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

namespace {

void demand(bool holds) {
  if (!holds) std::abort();
}

bool areEqual(const CImage& a, const CImage& b) {
  return a.Size() == b.Size() && a.getBpp() == b.getBpp() && a.GetPosition() == b.GetPosition() &&
         std::ranges::equal(a.pixels().bytes(), b.pixels().bytes()) &&
         std::ranges::equal(a.AlphaChannel().bytes(), b.AlphaChannel().bytes());
}

void checkWhole(const CImage& image) {
  demand(image.getCompression() == _compression::none);
  demand(static_cast<std::int64_t>(image.pixels().size()) ==
         get_data_size(image.Width(), image.Height(), image.getBpp()));
  const auto pixels = static_cast<std::size_t>(get_data_size(image.Width(), image.Height(), 8));
  demand(!image.hasAlpha() || image.AlphaChannel().size() == pixels);
  demand(image.toRgb().size() == pixels);
}

// Through the run-length form and back.
void checkPacking(CImage& image) {
  CImage copy(nullptr, image);
  copy.Compress(_compression::rle);
  copy.unpack();
  demand(areEqual(copy, image));
  copy.pack(true);
  demand(copy.getCompression() == _compression::rle);
  copy.DeCompressRLE2();
  demand(areEqual(copy, image));
}

void checkImage(std::span<const std::uint8_t> input) {
  const auto bytes = std::as_bytes(input);
  const test::Disk disk = {
      {"C:\\GAME\\a.img", std::make_shared<const std::vector<std::byte>>(bytes.begin(), bytes.end())}};
  platform::HeadlessPlatform machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  {
    CImage image(nullptr);
    CImage again(nullptr);
    const int error = image.Load("a.img", true);
    demand(error == again.Load("a.img", true) && areEqual(image, again));
    demand(error == 0 || error == CFile::kNotFound);
    demand(image.isLoaded() == (error == 0));
    if (error != 0) {
      demand(image.pixels().size() == 0 && !image.hasAlpha());
    } else {
      checkWhole(image);
      if (get_pixel_size(image.getBpp()) % 2 == 0) checkPacking(image);
      demand(image.Save("b.img", _compression::none) == 0 && again.Load("b.img", true) == 0);
      demand(areEqual(image, again));
    }
  }
  platform::use(nullptr);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkImage({data, size});
  return 0;
}
