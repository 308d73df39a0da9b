#include "objects/data/array_value.h"

#include "script/mc_variable_factory.h"

namespace footlight {

ArrayValue::ArrayValue(CMC_Variable& variable) {
  switch (variable.getType()) {
    case type::kInteger:
      value_ = variable.asInteger();
      break;
    case type::kDouble:
      value_ = variable.asDouble();
      break;
    case type::kBool:
      value_ = variable.asBool();
      break;
    default:
      value_ = std::make_unique<CXString>(variable.asText());
  }
}

int ArrayValue::type() const {
  constexpr int kTypes[] = {type::kInteger, type::kDouble, type::kBool, type::kString};
  return kTypes[value_.index()];
}

Value ArrayValue::get() const {
  const Number known = number();
  return known ? Value(known) : Value(variable());
}

Ref<CMC_Variable> ArrayValue::variable() const {
  using Factory = CMC_VariableFactory;
  if (const CXString* known = text()) return Factory::makeString(*known);
  if (const bool* truth = std::get_if<bool>(&value_)) return Factory::makeBool(*truth);
  return number().isWhole() ? Factory::makeInteger(number().whole()) : Factory::makeDouble(number().real());
}

}  // namespace footlight
