#pragma once

// What is in an open big file: its list, and its files on the disk. Both run on the engine's file system,
// with its names and behind its fence.

#include <functional>
#include <string>

#include "files/big_file.h"
#include "pack/run.h"

namespace footlight::pack {

// For people: UTF-8, slashes, and a question mark for what a terminal would take for a command.
std::string shownName(const std::string& name);

// All files in the order of their contents, with their names from the root on, without a backslash in front.
void forEachFile(const BigFileTable& table,
                 const std::function<void(const std::string& name, const BigFileRecord& record)>& visit);

void list(const CBigFile& bigFile, Outcome& outcome);

// Writes all files below the folder, which is there. Names that would lead elsewhere are left out, and so are
// files that another one of the same name precedes, that reach beyond the end of the big file, or that
// together have more bytes than it has.
void extract(const CBigFile& bigFile, const CXString& folder, Outcome& outcome);

}  // namespace footlight::pack
