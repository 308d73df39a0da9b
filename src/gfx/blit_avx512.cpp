// The inner loops in the registers that machines with AVX-512BW have.

#if defined(__x86_64__)

#include "gfx/blit_wide.h"

namespace footlight::blit {

constinit const Kernels kAvx512Kernels = wideKernels<16>();

}  // namespace footlight::blit

#endif
