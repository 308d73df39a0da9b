#include "script/number_methods.h"

#include <algorithm>

namespace footlight {

namespace {

template <Operation O>
bool apply(CMC_Object& object, Number argument) {
  if (auto* integer = object_cast<CMC_Integer>(&object)) {
    const int operand = asInteger(argument);
    integer->change(O == Operation::none ? operand : CMC_Integer::apply(integer->getValue(), O, operand));
    return true;
  }
  auto* real = object_cast<CMC_Double>(&object);
  if (real == nullptr) return false;
  const double operand = asDouble(argument);
  real->change(O == Operation::none ? operand : CMC_Double::apply(real->getValue(), O, operand));
  return true;
}

struct Row {
  std::string_view name;
  Operation operation;
  NumberMethod function;
};
constexpr Row kRows[] = {
    {"SET", Operation::none, apply<Operation::none>},
    {"ADD", Operation::add, apply<Operation::add>},
    {"SUB", Operation::subtract, apply<Operation::subtract>},
    {"MUL", Operation::multiply, apply<Operation::multiply>},
    {"DIV", Operation::divide, apply<Operation::divide>},
    {"MOD", Operation::modulo, apply<Operation::modulo>},
};

}  // namespace

NumberMethod findNumberMethod(std::string_view name) {
  const auto* row =
      std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& r) { return r.name == name; });
  return row != std::end(kRows) ? row->function : nullptr;
}

bool applyNumber(CMC_Object& object, Operation operation, Number argument) {
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                 [&](const Row& r) { return r.operation == operation; });
  return row->function(object, argument);
}

}  // namespace footlight
