// The inner loops in the registers that machines with AVX2 have.

#if defined(__x86_64__)

#include "gfx/blit_wide.h"

namespace footlight::blit {

constinit const Kernels kAvx2Kernels = wideKernels<16>();

}  // namespace footlight::blit

#endif
