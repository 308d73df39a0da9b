#include "gfx/image_file.h"

#include "files/path.h"
#include "foundation/diagnose.h"
#include "gfx/animo.h"
#include "gfx/image.h"
#include "gfx/psd.h"
#include "gfx/targa.h"

namespace footlight {

_filetype CImageFile::Load(const CXString& name) {
  object_.reset();
  const CXString extension = CPath(window_, name).GetExtension();
  if (extension == "img" || extension == "jpg") {
    object_.reset(new CImage(window_, name));
    return _filetype::image;
  }
  if (extension == "ann") {
    object_.reset(new CAnimo(window_, name));
    return _filetype::animation;
  }
  if (extension == "tga") {
    object_.reset(new CTarga(window_, name));
    return _filetype::targa;
  }
  if (extension == "bmp") {
    object_.reset(new CXBitmap(window_, name));
    return _filetype::bitmap;
  }
  if (extension == "psd") {
    object_.reset(new CPSD(window_, name));
    return _filetype::photoshop;
  }
  diagnose::report(diagnose::Group::file, name, "", "pictures of this kind are not read");
  return _filetype::unknown;
}

_filetype CImageFile::Save(CGraphicsObject* object, const CXString& name, _compression compression) {
  if (object == nullptr) return _filetype::unknown;
  const CXString extension = CPath(window_, name).GetExtension();
  if (extension == "img") {
    CImage(window_, *object).Save(name, compression);
    return _filetype::image;
  }
  if (extension == "ann") {
    object->Save(name, compression);
    return _filetype::animation;
  }
  return _filetype::unknown;
}

}  // namespace footlight
