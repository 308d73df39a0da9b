#pragma once

// Finds what code makes while it runs: local variables, clones, instances, created objects, loaded files.

#include "game.h"

namespace footlight::check {

// Looks through the code of a file as it stands in one of its scopes.
void discoverIn(Game& game, const SourceFile& file, Scope& scope);

}  // namespace footlight::check
