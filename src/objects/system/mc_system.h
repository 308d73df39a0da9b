#pragma once

// SYSTEM: the clock, the calendar (UTC, Polish names) and a few services of the machine. It has no state.

#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kRandom = 102;
inline constexpr int kSystem = 11000;
}  // namespace type

class CMC_System : public CMC_Object {
 public:
  CMC_System() : CMC_Object("SYSTEM", type::kSystem) {}
  static bool isTypeOf(int type) { return type == type::kSystem; }
};

}  // namespace footlight
