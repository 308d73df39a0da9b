#pragma once

// Methods of INTEGER and DOUBLE that take one number and whose result nobody looks at: they need neither a
// list of arguments nor an object for the number.

#include <string_view>

#include "script/mc_variable.h"

namespace footlight {

// False, with nothing done, for an object of another type: its method is to be called as any other.
using NumberMethod = bool (*)(CMC_Object& object, Number argument);

// Null for a method that has no such form.
NumberMethod findNumberMethod(std::string_view name);

// The same by operation; none takes the number itself.
bool applyNumber(CMC_Object& object, Operation operation, Number argument);

}  // namespace footlight
