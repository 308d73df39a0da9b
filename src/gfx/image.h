#pragma once

// A still picture from a file. It is either unloaded, with its file name kept, or loaded. One that is to be
// released after use goes back to unloaded at each `hide` and loads anew at the next `show`.
//
// A picture with packed pixels is unpacked as it is loaded by name, and keeps a run-length form at hand.

#include "files/file_resolver.h"
#include "gfx/graphics_object.h"

namespace footlight {

class CImage : public CGraphicsObject, public CFileResolver {
 public:
  explicit CImage(CWindow* window) : CGraphicsObject(window) {}
  // Loads at once; the result is the error code.
  CImage(CWindow* window, const CXString& name);
  // Shares the object's pixels.
  CImage(CWindow* window, const CGraphicsObject& object) : CGraphicsObject(window, object) {}

  // Shares the pixels and has no file name.
  std::unique_ptr<CXObject> clone() const override;
  int getGfxType() const override { return 1; }

  // Replaces the picture and shows it; `convert` also turns it to the display's format. A name that does not
  // end in ".img", in any case, is that of a JPEG file. 2000 when there is no such file or it is no picture:
  // the object is empty then.
  virtual int Load(const CXString& name, bool convert);
  int Load(const CXString& name) override { return Load(name, true); }
  // An IMG picture from where the file stands to its end. Run-length pixels stay packed.
  int Load(CFile* file) override;
  // A JPEG picture, in the display's format.
  virtual int load(const CXString& name);
  // An IMG picture of the "NVI" layout. Whatever form but the table of codes it is packed in stays.
  virtual int Load3(CFile* file);

  // Back to unloaded.
  virtual void flush();  // NOLINT(bugprone-virtual-near-miss): both names are part of the interface
  virtual void show();
  virtual void hide();

  void retire() override;
  void destroy() override { dispose(); }

 private:
  void readByName(const CXString& name);
  int read(CFile* file);
};

}  // namespace footlight
