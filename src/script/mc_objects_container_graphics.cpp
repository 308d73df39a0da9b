// The pictures behind the names of script objects, and the names behind pictures.

#include "gfx/direct_draw_surface.h"
#include "gfx/image.h"
#include "gfx/window.h"
#include "objects/gfx/mc_animo.h"
#include "objects/gfx/mc_canvas_observer.h"
#include "objects/gfx/mc_image.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

// A canvas observer stands for the frame.
CGraphicsObject* graphicsOf(CMC_Object* object) {
  if (auto* animation = object_cast<CMC_Animo>(object)) return animation->getAnimo();
  if (auto* image = object_cast<CMC_Image>(object)) return image->getImage();
  const auto* observer = object_cast<CMC_CanvasObserver>(object);
  const CWindow* window = observer != nullptr ? observer->getWindow() : nullptr;
  return window != nullptr ? window->getBackSurface() : nullptr;
}

}  // namespace

CGraphicsObject* CMC_ObjectsContainer::getGraphicsObject(const CXString& name) const {
  const int mark = name.Find('!');  // what follows names a frame of an animation
  if (mark < 0) return graphicsOf(getObject(name.view()));
  CMC_Object* object = getObject(name.slice(0, mark));
  auto* animation = object_cast<CMC_Animo>(object);
  if (animation == nullptr || animation->getAnimo() == nullptr) return graphicsOf(object);
  return animation->getAnimo()->getFrame(name.Right(mark + 1));
}

CXString CMC_ObjectsContainer::getGraphicsObjectName(const CGraphicsObject* graphics, bool parentsToo) const {
  for (CMC_Object* object : objects()) {
    if (graphics != nullptr && graphicsOf(object) == graphics) return object->getName();
  }
  if (parentsToo && getParent() != nullptr) return getParent()->getGraphicsObjectName(graphics, true);
  return "UNKNOWN";
}

}  // namespace footlight
