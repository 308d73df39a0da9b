#include "files/file_resolver.h"

#include "files/resources_manager.h"

namespace footlight {

CFileResolver& CFileResolver::operator=(const CFileResolver& other) {
  fileName_ = other.fileName_;
  loaded_ = other.loaded_;
  releaseAfterUse_ = other.releaseAfterUse_;
  return *this;
}

CFileResolver::~CFileResolver() {
  const std::vector<CResourcesManager*> managers = managers_;
  for (CResourcesManager* manager : managers) manager->forget(this);
}

}  // namespace footlight
