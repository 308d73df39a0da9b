#include "gfx/color.h"

namespace footlight {

std::uint32_t CColor::Convert(_colormodel model) const {
  if (!isBytes()) return value_;
  if (model == _colormodel::bpp15) return (red() >> 3) << 10 | (green() >> 3) << 5 | blue() >> 3;
  if (model == _colormodel::bpp16) return (red() >> 3) << 11 | (green() >> 2) << 5 | blue() >> 3;
  return value_;
}

std::uint32_t CColor::GetInBPP(int bpp) const {
  switch (bpp) {
    case 15:
      return Convert(_colormodel::bpp15);
    case 16:
      return Convert(_colormodel::bpp16);
    case 24:
      return Convert(_colormodel::rgb);
    case 32:
      return Convert(_colormodel::rgba);
    default:
      return value_;
  }
}

std::uint32_t CColor::GetSurfacePixel(int bpp) const {
  if (bpp >= 24 && isBytes()) return red() << 16 | green() << 8 | blue();
  return GetInBPP(bpp);
}

}  // namespace footlight
