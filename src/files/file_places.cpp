#include "files/file_places.h"

namespace footlight {

namespace {
CFilePlaces* installed = nullptr;
}

CFilePlaces::~CFilePlaces() {
  if (installed == this) installed = nullptr;
}

void CFilePlaces::use(CFilePlaces* places) { installed = places; }

CFilePlaces* CFilePlaces::current() { return installed; }

}  // namespace footlight
