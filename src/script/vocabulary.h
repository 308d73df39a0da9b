#pragma once

#include <string>

namespace footlight {

// Every type with its words, properties, signals and methods as JSON, for authors, editors and documents. It
// is printed from the tables that the engine runs on.
std::string vocabularyJson();

}  // namespace footlight
