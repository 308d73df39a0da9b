#include "script/stored_binding.h"

#include "files/archive.h"

namespace footlight {

namespace {

constexpr std::size_t kTextBytes = 4;      // the least of a text
constexpr std::size_t kBindingBytes = 12;  // the least of a binding

}  // namespace

void passBindings(CXArchive& archive, StoredBindings& bindings) {
  const auto count = static_cast<std::size_t>(archive.passCount(bindings.size(), kBindingBytes));
  if (!archive.isStoring()) bindings.assign(count, {});
  for (StoredBinding& binding : bindings) {
    archive.pass(binding.signal);
    archive.pass(binding.behaviour);
    const int texts = archive.passCount(binding.arguments.size(), kTextBytes);
    binding.arguments.resize(static_cast<std::size_t>(texts));
    for (CXString& argument : binding.arguments) archive.pass(argument);
    if (archive.hasFailed()) return;
  }
}

}  // namespace footlight
