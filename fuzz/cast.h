#pragma once

// The objects that generated code speaks of: definition text for a level of the game, and the names and types
// of what it makes.

#include <string>
#include <vector>

#include "objects/all_types.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

using test::Disk;

struct Named {
  std::string name;
  int type;
};

struct Cast {
  // Types are known by their words from the first one on.
  Cast() { installAllTypes(); }
  std::vector<Named> names;  // of the level's own objects
  std::string text;          // the definition document

  // A name that the document does not define.
  void know(const char* name, int type) { names.push_back({name, type}); }
  // One element; `properties` are pieces "PROPERTY=value" between bars.
  void add(const std::string& name, const char* type, const std::string& properties = {});
};

// An object of every type that a definition can make, several of those that scripts use most; for scenes. The
// shared variables are found in the levels above, until something of their name comes into the scene.
Cast wholeCast(const std::string& level);
// The shared variables and a few objects of the types that scripts use most: for the levels above.
Cast smallCast(const std::string& level);
void addSharedVariables(Cast& cast);

// Files that the levels of every game use: class files, files to load, pictures. Names of the loadable ones
// and of the pictures are in kFiles.
void addCommonFiles(Disk& disk);
inline constexpr const char* kFiles[] = {"EXTRA.cnv", "OTHER.cnv",  "A.IMG",
                                         "B.IMG",     "NOSUCH.cnv", "$COMMON\\NEW.IMG"};

}  // namespace footlight::fuzz
