#pragma once

// What both targets do with an input: play it, and on part of the inputs play it again in the same way and
// with statements read literally. All must leave the same state.

#include <functional>
#include <string>

#include "support/game_world.h"

namespace footlight::fuzz {

using test::Disk;
using test::World;

// Plays the whole input in the world and gives the state that it came to.
using Play = std::function<std::string(World& world)>;

// `choice` decides what is compared: a quarter of the inputs play once, a quarter a second time in the same
// way, half of them a second time with statements read literally. Ends the program when the states differ.
void playAndCompare(const Disk& disk, int budget, std::uint8_t choice, const Play& play);

}  // namespace footlight::fuzz
