#pragma once

// The order that a list of values of several types comes into by sorting. Each value is inserted in turn
// before the first one that compares greater, on the basis of that one's own type: "10" is greater than the
// INTEGER 9 as a number and below it as a text. No common order stands behind that, so the insertions are
// really done, in a tree that finds each place in logarithmic time.

#include <span>
#include <vector>

#include "script/mc_variable.h"

namespace footlight {

// The places that the values had before, in their new order. None of them may be null; they must be of the
// four value types. Fewer than all when the watchdog ends the run meanwhile.
std::vector<int> insertionOrder(std::span<CMC_Variable* const> values);

}  // namespace footlight
