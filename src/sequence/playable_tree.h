#pragma once

// Owns the playables of a sequence, and ends them all at once, whatever ties there are between them. Sounds
// and animations of a resources manager are not among them.

#include <vector>

#include "gfx/playable.h"

namespace footlight {

class CPlayableTree {
 public:
  CPlayableTree() = default;
  CPlayableTree(CPlayableTree&&) = default;
  CPlayableTree& operator=(CPlayableTree&& other) noexcept;
  ~CPlayableTree() { end(); }

  // Where the tree begins; null for a tree without a root, and when that has gone.
  CPlayable* root() const { return rootObject_ ? root_ : nullptr; }
  void setRoot(CPlayable* root);
  template <class T>
  T* keep(Owned<T> part) {
    T* kept = part.get();
    parts_.push_back({kept, std::move(part)});
    return kept;
  }
  // Without parts afterwards. What a part plays goes on if it belongs to others.
  void end();

 private:
  struct Part {
    CPlayable* playable;
    Owned<CXObject> object;
  };

  std::vector<Part> parts_;
  CPlayable* root_ = nullptr;
  WeakRef<CXObject> rootObject_;
};

}  // namespace footlight
