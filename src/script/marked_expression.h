#pragma once

// Arithmetic on the arguments of a behaviour, as [$1+$2*10], or one of them alone, as $1: whole numbers that
// need not travel through text. It answers only where filling the text and compiling it would provably come
// to the same: the arguments are whole numbers without a sign, but for the first operand, and no object has a
// name that begins like a number.

#include <memory>
#include <vector>

#include "script/mc_variable.h"

namespace footlight {

class MarkedExpression {
 public:
  // Null for a text that holds anything but marks, digits and operators, or one mark.
  static std::unique_ptr<MarkedExpression> compile(const CXString& text);
  // None for other arguments than those.
  Number calculate(const TextList* arguments) const;

 private:
  struct Item {
    Operation operation;
    int mark;   // index of the argument, or -1
    int value;  // for -1
  };

  bool addOperand(Operation operation, std::string_view text);

  std::vector<Item> items_;
};

}  // namespace footlight
