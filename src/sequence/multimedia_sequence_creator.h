#pragma once

// Makes a sequence of a file: a tree of the playables that its lines describe.

#include "sequence/playable_tree.h"

namespace footlight {

class CResourcesManager;
class CSequenceCast;
class CWindow;

class CMultimediaSequenceCreator {
 public:
  // The root is the element with the file's pure name; without that, or without the file, there is none. The
  // observer hears every element. The manager, the cast and the observer may be null. Elements without a
  // playable, lines of unknown elements and unknown keys are left out.
  static CPlayableTree load(CWindow* window, const CXString& fileName, CResourcesManager* resources,
                            const PlayableObserver& observer, const CSequenceCast* cast);
  // The character that chooses the child at a place, from 0, of a node that goes by a parameter.
  static char getParameter(int place);
};

}  // namespace footlight
