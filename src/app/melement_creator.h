#pragma once

#include "foundation/xobject.h"

namespace footlight {

class CMElement;
class CWindow;

// Makes a plain engine object from an element, without any script object around it. Nobody asks it yet: trees
// of sequences that are read from definitions will.
class CMElementCreator {
 public:
  // A picture for an IMAGE with a file name, shown as VISIBLE says; null for everything else.
  static Owned<CXObject> createObject(CWindow* window, const CMElement* element);
};

}  // namespace footlight
