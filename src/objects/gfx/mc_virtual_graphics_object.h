#pragma once

// VIRTUAL_GRAPHICSOBJECT: the script's face of a picture that is seen through a mask.

#include "gfx/virtual_graphics_object.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/plain_types.h"

namespace footlight {

class CMC_VirtualGraphicsObject : public CMC_Graphic {
 public:
  // Without source and mask, on the screen and of no name.
  explicit CMC_VirtualGraphicsObject(CMC_ObjectsContainer* container);
  CMC_VirtualGraphicsObject(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_VirtualGraphicsObject() override;
  static bool isTypeOf(int type) { return type == type::kVirtualGraphicsObject; }

  // Finds a source or mask that came later than the object itself.
  void init() override;
  // Null only once the object has ended.
  CVirtualGraphicsObject* getPicture() const { return picture_.get(); }
  CGraphicsObject* getGraphic() const override { return getPicture(); }
  void setSource(const CMC_ObjectsContainer* scope, const CXString& name);
  // Of an animation its current picture.
  void setMask(const CMC_ObjectsContainer* scope, const CXString& name);
  void setAsButton(bool asButton, bool changeCursor);

  // Its type has no signals of collisions.
  void onCollision(CGraphicsObject* /*a*/, CGraphicsObject* /*b*/) override {}
  void onCollisionFinished(CGraphicsObject* /*a*/, CGraphicsObject* /*b*/) override {}

 protected:
  void unlink() override;
  bool isOfFile() const override { return false; }

 private:
  CXString sourceName_;  // of the definition
  CXString maskName_;
  Owned<CVirtualGraphicsObject> picture_;
};

}  // namespace footlight
