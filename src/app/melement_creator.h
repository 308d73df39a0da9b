#pragma once

#include "sequence/playable_tree.h"

namespace footlight {

class CMElement;
class CMElements;
class CWindow;

// Makes plain engine objects from elements, without any script object around them. Scripts have no way to ask
// for it.
class CMElementCreator {
 public:
  // A picture for an IMAGE with a file name, shown as VISIBLE says; null for everything else.
  static Owned<CXObject> createObject(CWindow* window, const CMElement* element);
  // An animation for an ANIMO with a file name, shown as VISIBLE says, or a node for a SEQUENCE; the tree
  // owns it. Null for everything else.
  static CPlayable* createPlayable(CWindow* window, const CMElement* element, CPlayableTree* tree);
  // The sequence that begins with the element of that name, with its children below it. Without a root when
  // there is no such element. Children that lie too deep, or are too many, are left out.
  static CPlayableTree createSequence(CWindow* window, const CMElements& elements, const CXString& name);
};

}  // namespace footlight
