#include "objects/shared_resource.h"

#include "app/mc_scene.h"
#include "app/unit6.h"

namespace footlight {

CResourcesManager* managerFor(const CMC_ObjectsContainer* container) {
  if (container == nullptr || container->getType() != type::kScene) return nullptr;
  if (static_cast<const CMC_Scene*>(container)->isCopy()) return nullptr;
  const CUnit6* unit = CMC_Scene::getDefUnit();
  return unit != nullptr ? unit->getResourcesManager() : nullptr;
}

}  // namespace footlight
