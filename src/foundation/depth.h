#pragma once

// One counter for everything that nests on the engine's stack because of scripts and pictures: runs, redraws
// and invalidations together. At the limit the piece of work is skipped, so recursion without end comes back.

#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

class DepthGuard {
 public:
  DepthGuard() : entered_(depth < limits::kNestedRuns) {
    if (entered_) {
      ++depth;
    } else {
      guardHit("nested runs");
    }
  }
  ~DepthGuard() {
    if (entered_) --depth;
  }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

  // False at the limit: do nothing.
  explicit operator bool() const { return entered_; }

 private:
  static inline int depth = 0;
  bool entered_;
};

}  // namespace footlight
