#pragma once

// Guards the reading of a value that reads other values: expressions, conditions, calls of groups. Values
// that name one another twice each take two to the power of their number, without ever being deep. So
// within one reading only so many others begin; from then on everything unwinds with the empty value, up
// to the first. What a behaviour reads on the way counts by itself, since its lines may go round as often
// as they like.

#include "foundation/depth.h"
#include "script/watchdog.h"

namespace footlight {

class EvaluationGuard {
 public:
  EvaluationGuard()
      : outer_(nest), isNested_(outer_.depth + 1 == DepthGuard::current()), mayGoOn_(depth_ && goesOn()) {}
  ~EvaluationGuard() { nest = {outer_.depth, isNested_ ? nest.begun : outer_.begun}; }
  EvaluationGuard(const EvaluationGuard&) = delete;
  EvaluationGuard& operator=(const EvaluationGuard&) = delete;

  // False at a limit, or when the run must end: give the empty value.
  explicit operator bool() const { return mayGoOn_; }

 private:
  struct Nest {
    int depth;  // of the reading that runs; 0 for none
    int begun;  // within the first one
  };

  bool goesOn() {
    nest = {DepthGuard::current(), isNested_ ? outer_.begun : 0};
    return watchdog::mayContinue() && countOne();
  }
  static bool countOne() {
    if (nest.begun == limits::kNestedEvaluations) return false;
    if (++nest.begun < limits::kNestedEvaluations) return true;
    limitHit("values within one value");
    return false;
  }

  static inline Nest nest{};
  const DepthGuard depth_;
  const Nest outer_;
  const bool isNested_;
  const bool mayGoOn_;
};

}  // namespace footlight
