#pragma once

#include <SDL_scancode.h>

namespace footlight::platform {

// The scan code of set 1 for a key; codes of the extended set carry 128 more. -1 for keys that have none.
int scanCodeOf(SDL_Scancode key);

}  // namespace footlight::platform
