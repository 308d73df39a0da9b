#pragma once

// The animation that a leaf of a sequence plays: that of an object of the scene, or one from a file. It is
// referred to weakly; one that has gone is none.

#include "files/shared_resource.h"
#include "gfx/animo6.h"
#include "sequence/sequence_cast.h"

namespace footlight {

class FigureLink {
 public:
  static constexpr int kPriority = 1000;  // of an animation from a file, on the screen

  // The animation, or null.
  CAnimo6* get() const { return animo_.get(); }
  bool isPlaying() const { return animo_ && animo_->isPlaying(); }

  // In place of none. `playable` is told when the object gets another animation.
  void take(CPlayable* playable, CSequenceFigure* figure);
  // In place of none, from a file; shared where there is a manager. True when it was not there before.
  bool takeFile(CWindow* window, CResourcesManager* resources, const CXString& name);
  // What the object shows from now on; null for the end of the object.
  void replace(CAnimo* animo);
  // Has none afterwards. An animation of a manager stays there.
  void leave(const CPlayable* playable);
  void show() const;

 private:
  WeakRef<CAnimo6> animo_;
  SharedResource<CAnimo6> file_;
  CSequenceFigure* figure_ = nullptr;
  WeakRef<CXObject> object_;  // that the figure is part of
};

}  // namespace footlight
