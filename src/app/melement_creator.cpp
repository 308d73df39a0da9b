#include "app/melement_creator.h"

#include "gfx/image.h"
#include "script/melement.h"

namespace footlight {

Owned<CXObject> CMElementCreator::createObject(CWindow* window, const CMElement* element) {
  const CXString fileName = element->getPropertyValue("FILENAME");
  if (element->getPropertyValue("TYPE") != "IMAGE" || fileName.IsEmpty()) return nullptr;
  Owned<CImage> image(new CImage(window, fileName));
  image->Visible(element->getPropertyBoolValue("VISIBLE"));
  return image;
}

}  // namespace footlight
