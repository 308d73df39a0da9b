#pragma once

// Watches the sounds that were started for their ends, once a tick, and carries over what the streams' thread
// has to tell. Sounds are held weakly.

#include <vector>

#include "foundation/xobject.h"

namespace footlight {

class CSound4;

class CSoundManager : public CXObject {
 public:
  void add(CSound4* sound);
  // The end of this sound is awaited.
  void play(const CSound4* sound);
  void domodal();
  // All that play, and all that are paused.
  virtual void pause();
  virtual void resume();

  int getSize() const { return static_cast<int>(nodes_.size()); }

 private:
  struct Node {
    WeakRef<CSound4> sound;
    bool active = false;
  };

  std::vector<Node> nodes_;
};

}  // namespace footlight
