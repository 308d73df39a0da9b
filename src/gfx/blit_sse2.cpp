// The inner loops in the registers that every machine of this family has.

#if defined(__x86_64__)

#include "gfx/blit_wide.h"

namespace footlight::blit {

constinit const Kernels kSse2Kernels = wideKernels<8>();

}  // namespace footlight::blit

#endif
