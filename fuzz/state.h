#pragma once

// The whole state of a world as text, a line a fact: two runs that must not differ are compared by it. Names
// and numbers that stand for nothing in a game, such as those of inline code, are replaced by their order.

#include <string>

#include "support/game_world.h"

namespace footlight::fuzz {

using test::World;


// Ends the program when the state contradicts itself.
std::string describe(World& world);
// What a world leaves behind once it is closed.
std::string describeDisk(const World& world);

}  // namespace footlight::fuzz
