#pragma once

// The inner loops of the blitters, each in several forms of the same arithmetic: plain, one pixel at a
// time, and wide, in the registers that the machine has. All forms give the same picture to the bit. For
// the blit_*.cpp alone.
//
// The wide forms are compiled for machines that may not be this one, so nothing that other sources could
// share may come out of them: they see this header and what is theirs alone.

#include <cstdint>

namespace footlight::blit {

// A rectangle to draw: the first pixels of both sides, checked, and what leads from row to row, in pixels.
struct Job {
  const std::uint16_t* source;
  const std::uint8_t* alpha;  // null for a kernel that reads none
  void* target;               // 2 or 4 bytes a pixel, as the kernel says
  std::uint8_t* targetAlpha;  // null but for `toCanvas`
  std::int64_t sourceStride;
  std::int64_t targetStride;
  int width;              // above 0
  int height;             // above 0
  std::uint32_t opacity;  // 1 to 255
};

using Kernel = void (*)(const Job& job);

// What a target is made of.
enum TargetFormat { kTo15, kTo16, kTo32, kTargetFormats };

struct Kernels {
  Kernel copy32;
  Kernel mask;  // 2 bytes a pixel
  Kernel alpha[kTargetFormats];
  Kernel blend[kTargetFormats];
  Kernel alphaBlend[kTargetFormats];
  Kernel toCanvas[2];
};

extern const Kernels kPlainKernels;
#if defined(__x86_64__)
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;
#endif

// The form in use.
const Kernels& kernels();

}  // namespace footlight::blit
