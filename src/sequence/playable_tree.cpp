#include "sequence/playable_tree.h"

namespace footlight {

CPlayableTree& CPlayableTree::operator=(CPlayableTree&& other) noexcept {
  end();
  parts_ = std::move(other.parts_);
  root_ = other.root_;
  rootObject_ = std::move(other.rootObject_);
  return *this;
}

void CPlayableTree::setRoot(CPlayable* root) {
  root_ = root;
  rootObject_ = root != nullptr ? root->asObject() : nullptr;
}

// The last ones first: the frame clock finds them soonest from its end.
void CPlayableTree::end() {
  std::vector<Part> parts = std::exchange(parts_, {});
  rootObject_ = nullptr;
  while (!parts.empty()) {
    parts.back().playable->retire();
    parts.pop_back();
  }
}

}  // namespace footlight
