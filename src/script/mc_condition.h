#pragma once

// Tests: CONDITION compares two operands, COMPLEXCONDITION joins two conditions by name. The statics of
// CMC_Condition test texts that were not compiled.

#include <memory>

#include "script/mc_object.h"

namespace footlight {

class CMC_Behaviour_Entry;
class CMC_Variable;

enum class Comparison : int {
  none = 0,
  equal = 1,
  notEqual = 2,
  less = 3,
  lessEqual = 4,
  greater = 5,
  greaterEqual = 6,
  instanceOf = 7
};

enum class ConditionSignal { onSuccess = kFirstOwnSignal, onFailure, count };

class CMC_BasicCondition : public CMC_Object {
 public:
  CMC_BasicCondition(CMC_ObjectsContainer* container, const CMElement* element, int type);
  static bool isTypeOf(int type) { return type == type::kCondition || type == type::kComplexCondition; }

  // The outcome now; with `raiseSignals` the behaviour bound to success or failure runs.
  virtual bool valid(bool raiseSignals) = 0;
  void serialize(CXArchive& archive) override;

 protected:
  CMC_BasicCondition(const CMC_BasicCondition& other) = default;
  bool tell(bool outcome, bool raiseSignals);

 private:
  void noteBindings();

  // What the definition bound: later bindings of these signals do not count.
  std::shared_ptr<SignalBinding> onSuccess_;
  std::shared_ptr<SignalBinding> onFailure_;
};

class CMC_Condition : public CMC_BasicCondition {
 public:
  CMC_Condition(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Condition() override;
  static bool isTypeOf(int type) { return type == type::kCondition; }

  void init() override;
  bool done(bool keep) override;
  bool valid(bool raiseSignals) override;
  // The operands, then the number of the comparison.
  void serialize(CXArchive& archive) override;

  // Sides as text and an argument word: `_`, `!_`, `<>`, `<`, `<_`, `>`, `>_`, `?`. Any other word is false.
  static bool valid(CMC_ObjectsContainer* scope, const CXString& left, std::string_view word,
                    const CXString& right);
  static bool valid(CMC_ObjectsContainer* scope, const CXString& left, const CXString& right,
                    Comparison comparison);
  // The number of an argument word; `none`, and a report, for any other.
  static Comparison comparisonOf(std::string_view word);
  // A comparison of whole numbers, 1 to 6 of them.
  static constexpr bool valid(int left, int right, Comparison comparison) {
    constexpr unsigned kBelow = 1;
    constexpr unsigned kSame = 2;
    constexpr unsigned kAbove = 4;
    // The orders in which each holds.
    constexpr unsigned kOrders[] = {0, kSame, kBelow | kAbove, kBelow, kBelow | kSame, kAbove, kAbove | kSame,
                                    0};
    const unsigned order = left < right ? kBelow : (left == right ? kSame : kAbove);
    return (kOrders[static_cast<std::size_t>(comparison)] & order) != 0;
  }
  // The compact form, as A'B, A!'B, A<B, A<'B, A>B, A>'B, A?B.
  static bool valid(CMC_ObjectsContainer* scope, const CXString& text);

  std::unique_ptr<CMC_Object> copy() const override;

 private:
  CMC_Condition(const CMC_Condition& other);

  CXString operand1_;
  CXString operand2_;
  Comparison operator_;
  Owned<CMC_Behaviour> holder_;  // gives the operands a scope
  // Shared with the tests that run: the condition may be finished while an operand is at work.
  std::shared_ptr<CMC_Behaviour_Entry> entry1_;
  std::shared_ptr<CMC_Behaviour_Entry> entry2_;
};

class CMC_ComplexCondition : public CMC_BasicCondition {
 public:
  CMC_ComplexCondition(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kComplexCondition; }

  bool valid(bool raiseSignals) override;
  std::unique_ptr<CMC_Object> copy() const override;
  // The names, then the number of the joint: 0 none, 1 AND, 2 OR.
  void serialize(CXArchive& archive) override;

 private:
  enum class Joint { none, both, either };

  static Joint resolveOperator(std::string_view word);
  bool isInnerValid(const CXString& name);
  void reportMissing() const;

  CXString condition1_;
  CXString condition2_;
  Joint operator_;
};

}  // namespace footlight
