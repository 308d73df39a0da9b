#pragma once

// Turns the text of one statement into the statement that runs. Arguments are compiled recursively as
// statements of their own.

#include <memory>

#include "script/mc_behaviour_entry.h"

namespace footlight {

// Compiles in the scope of the behaviour; never null.
std::unique_ptr<CMC_Behaviour_Entry> compileStatement(CMC_Behaviour* behaviour, CXString line);

}  // namespace footlight
