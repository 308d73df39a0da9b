// Copies at an opacity.

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_kernels.h"

namespace footlight::blit {

bool copy_blend(const _canvas& source, const _canvas& destination, std::uint8_t opacity) {
  if (destination.bpp == 24) return false;
  const auto format = targetFormat(source, destination);
  if (!format) return true;
  const auto area = areaOf(source, destination);
  if (!area) return false;
  if (opacity == 0) return true;
  const Kernels& forms = kernelsFor(source, destination);
  const Kernel kernel = (source.alpha.empty() ? forms.blend : forms.alphaBlend)[*format];
  kernel(jobOf(source, destination, *area, opacity));
  return true;
}

}  // namespace footlight::blit
