#pragma once

// One counter for everything that nests on the engine's stack because of scripts and pictures: runs, redraws
// and invalidations together. At the limit the piece of work is skipped, so recursion without end comes back.
// Where it branches, each piece that is skipped leaves a sibling that climbs to the limit again, two to the
// power of the depth in all; so after some refusals the whole nest unwinds: nothing more is entered until the
// stack is empty.

#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

class DepthGuard {
 public:
  DepthGuard() : entered_(depth < limits::kNestedRuns && (refusals < limits::kRefusedRuns || depth == 0)) {
    if (entered_) {
      if (depth++ == 0) refusals = 0;
    } else {
      refuse();
    }
  }
  ~DepthGuard() {
    if (entered_) --depth;
  }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

  // False at the limit: do nothing.
  explicit operator bool() const { return entered_; }
  // How many are entered now.
  static int current() { return depth; }

 private:
  static void refuse() {
    if (refusals == limits::kRefusedRuns) return;
    limitHit(++refusals == limits::kRefusedRuns ? "recursion that branches" : "nested runs");
  }

  static inline int depth = 0;
  static inline int refusals = 0;
  bool entered_;
};

}  // namespace footlight
