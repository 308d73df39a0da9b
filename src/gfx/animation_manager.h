#pragma once

// The frame clock: once a tick it steps every playable whose frame time has come, at most one frame each.
// Time that was missed is not made up. Playables are held weakly; a step runs scripts, which may add, remove
// and end playables freely.

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "foundation/xobject.h"
#include "gfx/playable.h"

namespace footlight {

class CRefreshScreen;

class CAnimationManager : public CXObject {
 public:
  // The screen may be null.
  void add(CPlayable* playable, CRefreshScreen* screen);
  // An unknown playable is ignored.
  void remove(const CPlayable* playable);
  // One pass of the clock; gives 0.
  int domodal();
  // Pauses all that play.
  virtual void pause();
  // Resumes all that are paused, or of these the ones that belong.
  using Choice = std::function<bool(const CPlayable&)>;
  virtual void resume(const Choice& belongs = {});

  int getSize() const { return static_cast<int>(entries_.size()); }

 private:
  struct Entry {
    CPlayable* playable;
    WeakRef<CXObject> object;
    CRefreshScreen* refreshScreen;
    bool due;
    bool removed;
    std::uint32_t lastTick;
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;

  Entries live() const;

  Entries entries_;
};

}  // namespace footlight
