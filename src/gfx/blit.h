#pragma once

// The blitters: one picture onto another, in place and in one pass. The formats of both sides pick the inner
// loop; a pair that has none draws nothing. Both sides may be the same memory.
//
// Blending a channel value s onto t with the weight a is `mix(s, t, a)`. Alpha planes go from 0
// (transparent) to 255.
//
// All answer true but for: no source pixels, a part to draw that is empty or does not lie inside both
// pictures, and the pairs of formats said below.

#include <cstdint>

#include "gfx/canvas.h"

namespace footlight::blit {

// ((s - t) * a + t * 256) / 256 for channels of up to 6 bits.
constexpr std::uint32_t mix(std::uint32_t s, std::uint32_t t, std::uint32_t a) {
  return (((s - t) * a + (t << 8)) & 0xFFFF) >> 8;
}

// Copies pixels. Equal formats of 2 bytes, and 2 bytes to 32 bits; 2 bytes to 24 bits draws nothing; false
// for other pairs.
bool copy(const _canvas& source, const _canvas& destination);
// Copies through the source's alpha plane. Equal formats of 2 bytes, and 2 bytes to 32 bits; false
// for 24 bits.
bool copy_alpha(const _canvas& source, const _canvas& destination);
// Copies pixels whose alpha is not 0; equal formats of 2 bytes only.
bool copy_alpha_as_mask(const _canvas& source, const _canvas& destination);
// Copies at an opacity, through the alpha plane where the source has one. Formats as `copy_alpha`.
bool copy_blend(const _canvas& source, const _canvas& destination, std::uint8_t opacity);
// Copies onto a picture with an alpha plane of its own, which is kept up to date. Equal formats of
// 2 bytes only.
bool copy_to_canvas(const _canvas& source, const _canvas& destination);

// Draws with the one of these that fits: at an opacity below 255, onto a picture with an alpha plane, through
// the source's own, or plainly.
bool compose(const _canvas& source, const _canvas& destination, std::uint8_t opacity, bool alphaAsMask);

// Turns pixels in place from 15 to 16 bits or back, two at a time: an odd last one stays. True also for equal
// formats; false, with nothing changed, for other pairs.
bool convert_bpp(std::span<std::byte> data, int from, int to);

// The inner loops come in several forms that draw the same to the bit; the widest that the machine has is in
// use from the start. Another one is for tests and measurements.
enum class Form { plain, sse2, avx2, avx512 };
// False, and nothing changes, where the machine lacks the form.
bool useForm(Form form);
void useBestForm();

}  // namespace footlight::blit
