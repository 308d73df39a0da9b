// The pictures behind the names of script objects, and the names behind pictures.

#include "script/mc_objects_container.h"

namespace footlight {

CGraphicsObject* CMC_ObjectsContainer::getGraphicsObject(const CXString& /*name*/) const { return nullptr; }

CXString CMC_ObjectsContainer::getGraphicsObjectName(const CGraphicsObject* /*graphics*/,
                                                     bool /*parentsToo*/) const {
  return "UNKNOWN";
}

}  // namespace footlight
