// The inner loops with the instructions that machines with AVX-512BW have. The registers stay at 16 pixels:
// twice as wide ones draw whole pictures hardly faster, and sprites slower, whose rims are narrow.

#if defined(__x86_64__)

#include "gfx/blit_wide.h"

namespace footlight::blit {

constinit const Kernels kAvx512Kernels = wideKernels<16>();

}  // namespace footlight::blit

#endif
