// The pictures behind the names of script objects, and the names behind pictures.

#include "gfx/image.h"
#include "objects/mc_image.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

CGraphicsObject* graphicsOf(CMC_Object* object) {
  auto* image = object_cast<CMC_Image>(object);
  return image != nullptr ? image->getImage() : nullptr;
}

}  // namespace

CGraphicsObject* CMC_ObjectsContainer::getGraphicsObject(const CXString& name) const {
  const int mark = name.Find('!');  // what follows names a frame of an animation
  return graphicsOf(getObject(name.slice(0, mark < 0 ? name.Length() : mark)));
}

CXString CMC_ObjectsContainer::getGraphicsObjectName(const CGraphicsObject* graphics, bool parentsToo) const {
  for (CMC_Object* object : objects()) {
    if (graphics != nullptr && graphicsOf(object) == graphics) return object->getName();
  }
  if (parentsToo && getParent() != nullptr) return getParent()->getGraphicsObjectName(graphics, true);
  return "UNKNOWN";
}

}  // namespace footlight
