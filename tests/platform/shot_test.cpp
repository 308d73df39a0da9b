#include "platform/shot.h"

#include <cstring>
#include <gtest/gtest.h>

namespace footlight::platform {
namespace {

TEST(Shot, ExpandsEveryDepthAndSkipsThePadding) {
  struct Case {
    int bpp;
    std::vector<std::uint32_t> pixels;  // two rows of two
    std::vector<std::uint32_t> expected;
  };
  const std::vector<Case> cases = {
      {16, {0xFFFF, 0xF800, 0x07E0, 0x0821}, {0xF8FCF8, 0xF80000, 0x00FC00, 0x080408}},
      {15, {0x7FFF, 0x7C00, 0x03E0, 0x8421}, {0xF8F8F8, 0xF80000, 0x00F800, 0x080808}},
      {32, {0xFF123456, 0x00FFFFFF, 0x01000000, 0xABCDEF01}, {0x123456, 0xFFFFFF, 0, 0xCDEF01}},
  };
  for (const Case& c : cases) {
    constexpr int kPitch = 16;
    const std::size_t size = c.bpp == 32 ? 4 : 2;
    std::vector<std::byte> memory(2 * kPitch, std::byte{0x5A});
    for (std::size_t i = 0; i < 4; ++i) {
      std::memcpy(memory.data() + i / 2 * kPitch + i % 2 * size, &c.pixels[i], size);
    }
    EXPECT_EQ(expandFrame({memory.data(), kPitch, 2, 2, c.bpp}), c.expected) << c.bpp;
  }
}

}  // namespace
}  // namespace footlight::platform
