#pragma once

// Opens a picture file by its extension.

#include "gfx/graphics_object.h"

namespace footlight {

enum class _filetype { unknown = 0, image = 1, targa = 2, bitmap = 3, photoshop = 4, animation = 5 };

class CImageFile : public CXObject {
 public:
  explicit CImageFile(CWindow* window) : window_(window) {}

  // The object is made for every known extension, whether or not its file could be read: it carries
  // the error code.
  _filetype Load(const CXString& name);
  // Writes the object in the form that the extension asks for.
  _filetype Save(CGraphicsObject* object, const CXString& name, _compression compression);

  CGraphicsObject* object() const { return object_.get(); }
  Owned<CGraphicsObject> takeObject() { return std::move(object_); }

 private:
  CWindow* window_;
  Owned<CGraphicsObject> object_;
};

}  // namespace footlight
