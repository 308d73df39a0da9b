#include "gfx/targa.h"

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/pixel_format.h"
#include "gfx/tga_format.h"
#include "gfx/window.h"

namespace footlight {

void convertFrom24(CGraphicsObject& picture, int bpp) {
  const PixelBlock from = picture.pixels();
  if (!from || from.bpp() != 24 || picture.getCompression() != _compression::none) return;
  const PixelBlock to = PixelBlock::forPicture(picture.Width(), picture.Height(), bpp);
  const std::size_t count = to.size() / 2;
  if (from.size() < count * 3) return;
  auto* out = reinterpret_cast<std::uint16_t*>(to.bytes().data());
  const auto* in = reinterpret_cast<const std::uint8_t*>(from.bytes().data());
  const int greenBits = bpp == 15 ? 5 : 6;
  for (std::size_t i = 0; i < count; ++i, in += 3) {
    out[i] = static_cast<std::uint16_t>((in[2] >> 3) << (5 + greenBits) | (in[1] >> (8 - greenBits)) << 5 |
                                        in[0] >> 3);
  }
  picture.setPixels(to);
}

int pictureBpp(const CWindow* window) { return window != nullptr && window->GetBpp() == 15 ? 15 : 16; }

CTarga::CTarga(CWindow* window, const CXString& name) : CGraphicsObject(window) { CTarga::Load(name); }

int CTarga::Load(CFile* file) {
  const auto bytes = file->readRest(limits::kPictureFileBytes);
  const auto picture = bytes ? readTga(*bytes) : std::nullopt;
  Flush();
  if (!picture) {
    diagnose::report(diagnose::Group::file, file->getFileName(), "", "no TGA picture that can be read");
    setErrorCode(CFile::kNotFound);
    return CGraphicsObject::Load(file);
  }
  setErrorCode(0);
  setSize(picture->size);
  bpp_ = picture->bpp;
  if (picture->unread != nullptr) {
    diagnose::report(diagnose::Group::file, file->getFileName(), "", picture->unread);
  } else {
    data_ = PixelBlock(picture->pixels, picture->bpp);
    FlipH();
  }
  return CGraphicsObject::Load(file);
}

int CTarga::Load(const CXString& name) {
  Flush();
  CFile file(window_, name, CFile::kReadBinary);
  setErrorCode(file.LastError());
  if (LastError() == 0) {
    fileName_ = name;
    Load(&file);
    Visible(true);
  }
  if (window_ != nullptr && window_->GetSurface() != nullptr) convertFrom24(*this, pictureBpp(window_));
  return CGraphicsObject::Load(name);
}

int CTarga::Save(const CXString& name, _compression compression) {
  return CGraphicsObject::Save(name, compression);
}

CXBitmap::CXBitmap(CWindow* window, const CXString& name) : CGraphicsObject(window) { CXBitmap::Load(name); }

int CXBitmap::Load(const CXString& name) {
  diagnose::report(diagnose::Group::file, name, "", "BMP files are not read; footlight-image converts them");
  return CGraphicsObject::Load(name);
}

}  // namespace footlight
