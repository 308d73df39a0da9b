#pragma once

// Where elements hold code: behaviours, bindings that are code themselves, operands.

#include <functional>

#include "source_file.h"

namespace footlight::check {

struct CodePart {
  const CMElement& element;
  const CMProperty& property;
  bool isValue;  // one statement whose value is used
};

void eachCodePart(const CMElements& elements, const std::function<void(const CodePart&)>& function);

// Whether a property binds a signal to code that stands in it.
bool isInlineBinding(const CMProperty& property);

}  // namespace footlight::check
