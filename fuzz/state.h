#pragma once

// The whole state of a world as text, a line a fact: two runs that must not differ are compared by it. What
// is the interpreter's own matter is left out: the numbers in the names of inline code, and its places
// among the objects.

#include <string>

#include "support/game_world.h"

namespace footlight::fuzz {

// Ends the program when the state contradicts itself.
std::string describe(test::World& world);
// What a world leaves behind once it is closed.
std::string describeDisk(const test::World& world);

}  // namespace footlight::fuzz
