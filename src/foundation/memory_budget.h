#pragma once

// The memory that a whole game may take. Limits bound each thing that a script or a file asks for; this
// bounds their sum. Whoever makes something large asks first; where the answer is no, the operation does
// nothing, and a run of script ends at its next nested run.
//
// The program that plays the game counts, since only it may replace the allocator; where nobody counts there
// is always room.

#include <cstdint>

namespace footlight::memory {

// How many bytes the process has taken and not given back.
using Count = std::int64_t (*)();

// From now on that many bytes may be in use; a null count ends counting.
void use(Count count, std::int64_t limit);
// Whether that many bytes more stay within the budget. A refusal is reported as a limit.
bool hasRoom(std::int64_t bytes = 0);

}  // namespace footlight::memory
