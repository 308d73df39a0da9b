#pragma once

// Which events of an animation a figure uses when it speaks.

#include <string>

#include "gfx/ann_format.h"

namespace footlight::anim {

// Lines in UTF-8: the events before the speech, during it and behind it, each with its frames. The prefix may
// be empty.
std::string speechOf(const AnnFile& animation, const CXString& prefix);

}  // namespace footlight::anim
