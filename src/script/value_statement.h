#pragma once

// Statements that yield a value: a name or a literal, the same with marks, arithmetic.

#include "script/mc_behaviour_entry.h"
#include "script/mc_expression.h"
#include "script/name_watch.h"

namespace footlight {

// A name, or a literal where the text names nothing.
class NameStatement final : public CMC_Behaviour_Entry {
 public:
  // `bound` is what the text named at compile time, or null.
  NameStatement(CXString line, Origin origin, CMC_Object* bound);

  Result run(const RunContext& context, bool isResultUsed) const override;
  CMC_Object* peek(const RunContext& context) const override {
    CMC_Object* bound = object_.get();
    return bound != nullptr ? bound : find(context);
  }
  bool isPlainValue() const override { return true; }
  bool mayDoSomething() const override { return getLine().IsEmpty(); }
  void tellNames(NameUses& uses) const override;
  // The value, where it is a number.
  Number number(const RunContext& context) const { return numberOf(peek(context)); }
  // The same object as `peek` gives, where it is the literal of this statement: its value never changes.
  const CMC_Object* literal() const { return literal_.get(); }

 private:
  // What is not bound: a variable that came since, or the literal; null without caches.
  CMC_Object* find(const RunContext& context) const;

  CXString name_;
  bool isField_;  // of a structure
  WeakRef<CMC_Object> object_;
  mutable RememberedName remembered_;    // what the name means, where it named nothing then
  mutable Owned<CMC_Variable> literal_;  // the value of a text that names nothing
};

// A value whose text is known once its marks are filled: arithmetic, a name or a literal.
class MarkedStatement : public CMC_Behaviour_Entry {
 public:
  // `text` is what is to be filled.
  MarkedStatement(CXString line, Origin origin, CXString text)
      : CMC_Behaviour_Entry(std::move(line), origin), text_(std::move(text)) {}

  Result run(const RunContext& context, bool isResultUsed) const override;
  void tellNames(NameUses& uses) const override;

 private:
  CXString text_;
};

// Arithmetic. The statement stands for the expression, which is calculated where its value is read.
class ExpressionStatement : public CMC_Behaviour_Entry {
 public:
  ExpressionStatement(CXString line, Origin origin, Ref<CMC_Expression> expression)
      : CMC_Behaviour_Entry(std::move(line), origin), expression_(std::move(expression)) {}

  Result run(const RunContext& context, bool isResultUsed) const override;
  bool isCall() const override { return true; }
  bool mayDoSomething() const override { return getLine().IsEmpty(); }
  void tellNames(NameUses& uses) const override;

 private:
  Ref<CMC_Expression> expression_;
};

}  // namespace footlight
