#pragma once

// The picture, animation or sound behind a script object. One of a scene's object belongs to the scene's
// resources manager and is shared by all objects that load the same file; elsewhere, and for clones, the
// object owns it.

#include "files/shared_resource.h"

namespace footlight {

class CMC_ObjectsContainer;

// Only scenes share: null for the objects of any other container.
CResourcesManager* managerFor(const CMC_ObjectsContainer* container);

}  // namespace footlight
