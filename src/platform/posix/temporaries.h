#pragma once

// The temporary files of the atomic writer: how they are named, and how those go that a killed process left
// behind. A name tells the process; the process holds a lock on the file as long as it writes.

#include <string>
#include <string_view>

namespace footlight::platform {

// A name that this process has not used yet.
std::string newTemporaryName();
// A name of that kind, by whomever. Games see no such files and make none.
bool isTemporaryName(std::string_view name);

// Removes what processes that live no more left in an open folder.
void clearTemporaries(int folder);
// The same in a folder of the machine and those below it, the nearest first, up to a bound of names looked
// at. Links are not followed.
void clearTemporariesBelow(const std::string& folder);

}  // namespace footlight::platform
