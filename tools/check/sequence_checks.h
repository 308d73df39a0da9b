#pragma once

// Checks sequence files: their lines, the values that keys take, the elements, files, objects and events that
// they name, and whether there is a root at all.

#include "game.h"

namespace footlight::check {

// The file of a SEQUENCE that stands in these scopes, in the place of an animation or a sound each name of
// theirs.
void checkSequence(Game& game, std::span<Scope* const> scopes, const CXString& fileName,
                   const Game::TextFile& file);

}  // namespace footlight::check
