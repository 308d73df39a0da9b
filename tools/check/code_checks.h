#pragma once

// Checks code: the names that its statements call, their methods and arguments, tests, texts that are to be
// behaviours. What only a run can tell is left in peace.

#include "game.h"
#include "nearest.h"

namespace footlight::check {

// All code of a file, in all scopes that it stands in: a name that one of them has is right.
void checkCode(Game& game, const SourceFile& file);

// The nearest name in sight of any of the scopes among the things that the filter takes.
std::string nearestName(std::span<Scope* const> scopes, std::string_view word,
                        const std::function<bool(const Thing&)>& filter);

bool isBehaviour(const Thing& thing);
bool isOfUnknownType(const Thing& thing);

}  // namespace footlight::check
