#include "gfx/pixel_block.h"

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "gfx/pixel_format.h"

namespace footlight {

bool isPictureSize(std::int64_t width, std::int64_t height) {
  constexpr int kPixelBytes = 4;
  if (limits::isPictureSize(width, height)) return memory::hasRoom(width * height * kPixelBytes);
  if (width > 0 && height > 0) guardHit("picture size");
  return false;
}

PixelBlock PixelBlock::forPicture(int width, int height, int bpp) {
  if (!isPictureSize(width, height)) return {};
  return PixelBlock(std::vector<std::byte>(static_cast<std::size_t>(get_data_size(width, height, bpp))), bpp);
}

}  // namespace footlight
