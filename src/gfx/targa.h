#pragma once

// Pictures of other makers' programs: TGA and BMP. Both are of three bytes a pixel as they come from a file;
// loaded by name they are in the display's format.

#include <array>

#include "gfx/graphics_object.h"

namespace footlight {

// Turns a picture of three bytes a pixel, blue first, into one of `bpp`, 15 or 16.
void convertFrom24(CGraphicsObject& picture, int bpp);
// The format of pictures on this window's display: 15 or 16 bits per pixel.
int pictureBpp(const CWindow* window);

class CTarga : public CGraphicsObject {
 public:
  explicit CTarga(CWindow* window) : CGraphicsObject(window) {}
  // Loads at once; the result is the error code.
  CTarga(CWindow* window, const CXString& name);

  // What is not read leaves the object without pixels, and is no error (see tga_format.h).
  int Load(CFile* file) override;
  int Load(const CXString& name) override;
  using CGraphicsObject::Save;
  int Save(const CXString& name, _compression compression) override;
};

// BMP files are neither read nor written.
class CXBitmap : public CGraphicsObject {
 public:
  explicit CXBitmap(CWindow* window) : CGraphicsObject(window) {}
  CXBitmap(CWindow* window, const CXString& name);
  CXBitmap(CWindow* window, const CGraphicsObject& object) : CGraphicsObject(window, object) {}

  using CGraphicsObject::Load;
  int Load(const CXString& name) override;
  using CGraphicsObject::Save;
  int Save(const CXString& /*name*/, _compression /*compression*/) override { return LastError(); }
};

}  // namespace footlight
