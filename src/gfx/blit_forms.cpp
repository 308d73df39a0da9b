// Which form of the inner loops draws.

#include <atomic>
#include <functional>

#include "gfx/blit.h"
#include "gfx/blit_area.h"
#include "gfx/blit_kernels.h"

namespace footlight::blit {

namespace {

// Null for a form that this machine does not have.
const Kernels* kernelsOf(Form form) {
  switch (form) {
    case Form::plain:
      return &kPlainKernels;
#if defined(__x86_64__)
    case Form::sse2:
      return &kSse2Kernels;
    case Form::avx2:
      return __builtin_cpu_supports("avx2") ? &kAvx2Kernels : nullptr;
    case Form::avx512:
      return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") ? &kAvx512Kernels
                                                                                      : nullptr;
#endif
    default:
      return nullptr;
  }
}

const Kernels* widest() {
  for (const Form form : {Form::avx512, Form::avx2, Form::sse2}) {
    if (const Kernels* found = kernelsOf(form); found != nullptr) return found;
  }
  return &kPlainKernels;
}

std::atomic<const Kernels*>& inUse() {
  static std::atomic<const Kernels*> form = widest();
  return form;
}

bool overlap(std::span<const std::byte> a, std::span<const std::byte> b) {
  const std::less<> before;
  return !a.empty() && !b.empty() && before(a.data(), b.data() + b.size()) &&
         before(b.data(), a.data() + a.size());
}

}  // namespace

const Kernels& kernels() { return *inUse().load(std::memory_order_relaxed); }

bool useForm(Form form) {
  const Kernels* found = kernelsOf(form);
  if (found != nullptr) inUse().store(found, std::memory_order_relaxed);
  return found != nullptr;
}

void useBestForm() { inUse().store(widest(), std::memory_order_relaxed); }

const Kernels& kernelsFor(const _canvas& source, const _canvas& destination) {
  const bool apart = !overlap(source.data, destination.data) && !overlap(source.alpha, destination.alpha) &&
                     !overlap(source.alpha, destination.data) && !overlap(source.data, destination.alpha);
  return apart ? kernels() : kPlainKernels;
}

Job jobOf(const _canvas& source, const _canvas& destination, const Area& area, std::uint32_t opacity) {
  return {
      .source = pixels16(source) + area.sourceStart,
      .alpha = source.alpha.empty() ? nullptr : alphaOf(source) + area.sourceStart,
      .target = destination.data.data() + area.targetStart * get_pixel_size(destination.bpp),
      .targetAlpha = destination.alpha.empty() ? nullptr : alphaOf(destination) + area.targetStart,
      .sourceStride = area.sourceStride,
      .targetStride = area.targetStride,
      .width = area.width,
      .height = area.height,
      .opacity = opacity,
  };
}

}  // namespace footlight::blit
