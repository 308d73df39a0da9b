#pragma once

// Shows an animation in a window: a small game of one scene, made for it in a temporary folder, on the
// engine's own host.

#include <string>

#include "anim/run.h"
#include "gfx/ann_format.h"

namespace footlight::anim {

// Returns when the player closes the window. Empty, or why nothing could be shown.
std::string view(const AnnFile& animation, const Words& words);

}  // namespace footlight::anim
