#pragma once

// A second one of a level with the objects of its definition, to be stored: the level itself may run, and
// stays as it is. The objects share nothing with those of the level, and none of their code runs, neither at
// the beginning nor at the end.

#include "app/mc_scene.h"

namespace footlight {

class CLevelCopy {
 public:
  // `parent` is where code of the definition looks for names. The level must outlive the copy.
  CLevelCopy(CMC_Scene& level, CMC_Scene* parent);
  ~CLevelCopy();
  CLevelCopy(const CLevelCopy&) = delete;
  CLevelCopy& operator=(const CLevelCopy&) = delete;

  CMC_Scene& operator*() const { return *copy_; }
  CMC_Scene* operator->() const { return copy_.get(); }

 private:
  Owned<CMC_Scene> copy_;
};

}  // namespace footlight
