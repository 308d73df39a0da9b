#pragma once

// Checks the elements of definition files: their types, properties and bindings, and the names that their
// values are. Their code is checked with them.

#include "game.h"

namespace footlight::check {

// The elements of application.def: the levels of the game.
void checkApplication(Game& game, const SourceFile& file);
// The elements of any other file.
void checkElements(Game& game, const SourceFile& file);

}  // namespace footlight::check
