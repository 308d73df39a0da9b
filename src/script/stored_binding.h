#pragma once

// Bindings as the binary form of a game holds them: by the names of signals and behaviours.

#include <vector>

#include "foundation/xstring.h"

namespace footlight {

class CXArchive;

struct StoredBinding {
  CXString signal;
  CXString behaviour;
  std::vector<CXString> arguments;
};
using StoredBindings = std::vector<StoredBinding>;

// All of them, with their count in front. While reading the list is replaced.
void passBindings(CXArchive& archive, StoredBindings& bindings);

}  // namespace footlight
