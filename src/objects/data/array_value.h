#pragma once

// One element of an ARRAY, a queue, a grid or a table: a value of one of the four types, in the room of two
// numbers. What is more than coming and going works on a pooled variable with the value, so that the rules of
// variables stand once.

#include <memory>
#include <variant>

#include "script/mc_variable.h"
#include "script/value.h"

namespace footlight {

class ArrayValue {
 public:
  ArrayValue(Number number) {
    if (number.isWhole()) {
      value_ = number.whole();
    } else {
      value_ = number.real();
    }
  }
  // What is none of the four values is taken as its text.
  explicit ArrayValue(CMC_Variable& variable);

  // One of the four value types.
  int type() const;
  // None for a text and for a BOOL.
  Number number() const {
    if (const int* whole = std::get_if<int>(&value_)) return Number(*whole);
    const double* real = std::get_if<double>(&value_);
    return real != nullptr ? Number(*real) : Number();
  }
  // Null for all but a text.
  const CXString* text() const {
    const auto* text = std::get_if<std::unique_ptr<CXString>>(&value_);
    return text != nullptr ? text->get() : nullptr;
  }
  // The value as a number, or as a pooled variable of its own.
  Value get() const;
  // The same, a pooled variable in any case.
  Ref<CMC_Variable> variable() const;

 private:
  std::variant<int, double, bool, std::unique_ptr<CXString>> value_;
};
static_assert(sizeof(ArrayValue) == 16);

// Whether an element equals a value, by the rules of the element's type; none equals null.
class EqualTo {
 public:
  explicit EqualTo(CMC_Variable* value) : value_(value), whole_(value != nullptr ? value->asInteger() : 0) {}
  bool operator()(const ArrayValue& item) const {
    if (value_ != nullptr && item.number().isWhole()) return item.number().whole() == whole_;
    return value_ != nullptr && item.variable()->equals(value_);
  }

 private:
  CMC_Variable* value_;
  int whole_;
};

}  // namespace footlight
