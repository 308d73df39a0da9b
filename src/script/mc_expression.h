#pragma once

// Arithmetic: operands and operators from left to right, without precedence. The type of the whole is the
// type of the first operand. An expression stands for its result wherever a value is read; it is calculated
// at each reading.

#include <memory>
#include <vector>

#include "script/mc_variable.h"
#include "script/value.h"

namespace footlight {

class CMC_Behaviour;
class CMC_Behaviour_Entry;
class NameStatement;
class NameUses;

class CMC_Expression : public CMC_Variable {
 public:
  // From a definition: OPERAND1, OPERATOR, OPERAND2; compiled by `init`.
  CMC_Expression(CMC_ObjectsContainer* container, const CMElement* element);
  // From inline text without its brackets; compiled at once.
  CMC_Expression(CMC_ObjectsContainer* container, const CXString& text);
  ~CMC_Expression() override;
  static bool isTypeOf(int type) { return type == type::kExpression; }

  void init() override;
  // The operands, then the number of the operation.
  void serialize(CXArchive& archive) override;
  // The value now, never none: 0 when a run is refused at the nesting limit.
  Value evaluate();
  // The same as a variable.
  Ref<CMC_Variable> calculate();
  // The same where all operands are values in place, so that nothing need run, and the first is a number;
  // else none. Only with caches.
  Number number() const;
  // True for an expression from a definition; one from inline text belongs to its statement.
  bool isStill() const { return still_; }
  // The names that compiling the operands asked for.
  void tellNames(NameUses& uses) const;
  // The number of "+", "-", "*", "@", "%" or of the words ADD, SUB, MUL, DIV, MOD; none for another text.
  static Operation resolveOp(std::string_view text);
  struct Operand {
    Operation operation;  // joins this operand to what stands left of it
    std::string_view text;
  };
  // Cuts inline text at operators outside of square brackets. There is always one operand; any may be empty.
  static std::vector<Operand> cutOperands(std::string_view text);

  void set(CMC_Variable* /*other*/) override {}
  void clear() override {}
  void swap(CMC_Variable* /*a*/, CMC_Variable* /*b*/) override {}
  void inc() override {}
  void dec() override {}
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override;
  Ref<CMC_Variable> convert(int type) override;
  Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) override;
  void setDefault(CMC_Variable* /*value*/) override {}
  void resetINI() override {}
  int getBufferLen() const override { return 0; }
  void netstore(std::span<std::byte> /*buffer*/) const override {}
  bool netrestore(std::span<const std::byte> /*value*/) override { return false; }
  void fromString(const CXString& /*text*/) override {}
  int asInteger() override;
  double asDouble() override;
  bool asBool() override;
  // The name: the text of the value comes from `calculate`.
  CXString toString() const override { return getName(); }
  std::unique_ptr<CMC_Object> copy() const override;

 private:
  struct Item {
    Operation operation;  // joins this operand to what stands left of it
    CXString text;        // empty for an operand that is missing
    std::unique_ptr<CMC_Behaviour_Entry> entry;
  };

  CMC_Expression(const CMC_Expression& other);
  void compile();
  Number plainNumber() const;
  Value operand(const Item& item);

  CXString operand1_;
  CXString operand2_;
  Operation operation_ = Operation::none;
  bool still_;
  Owned<CMC_Behaviour> holder_;  // gives the operands a scope
  std::vector<Item> items_;
  // The operands where each is a name or a literal; else empty.
  struct PlainItem {
    Operation operation;
    const NameStatement* name;
  };
  std::vector<PlainItem> plainItems_;
};

// Any object as a value: a variable itself, the result of an expression, the name of everything else as a
// STRING. Null for null.
Ref<CMC_Variable> asVariable(CMC_Object* object);
// The same, with numbers as they are.
Value asValue(Value value);

}  // namespace footlight
