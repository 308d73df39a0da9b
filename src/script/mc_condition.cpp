#include "script/mc_condition.h"

#include <algorithm>

#include "files/archive.h"
#include "script/evaluation_guard.h"
#include "script/mc_behaviour.h"
#include "script/mc_expression.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"
#include "script/statement_compiler.h"

namespace footlight {

namespace {

struct ComparisonWord {
  Comparison comparison;
  std::string_view property;  // in OPERATOR
  std::string_view argument;  // in @IF and @WHILE
};
constexpr ComparisonWord kWords[] = {
    {Comparison::equal, "EQUAL", "_"},
    {Comparison::notEqual, "NOTEQUAL", "!_"},
    {Comparison::notEqual, "", "<>"},
    {Comparison::less, "LESS", "<"},
    {Comparison::lessEqual, "LESSEQUAL", "<_"},
    {Comparison::greater, "GREATER", ">"},
    {Comparison::greaterEqual, "GREATEREQUAL", ">_"},
    {Comparison::instanceOf, "INSTANCEOF", "?"},
};

// One that is not given is no mistake.
void reportOperator(const CMElement* element) {
  const CMProperty* property = element->properties().get("OPERATOR");
  if (property == nullptr || !diagnose::isOn()) return;
  diagnose::report(diagnose::Group::definition, element->getName(), "OPERATOR",
                   "no such operator: " + std::string(property->getValue()), property->origin());
}

// A word that is not in the table counts as EQUAL.
Comparison comparisonOfProperty(const CMElement* element) {
  const CXString word = element->getPropertyValue("OPERATOR");
  for (const ComparisonWord& row : kWords) {
    if (!row.property.empty() && row.property == word.view()) return row.comparison;
  }
  reportOperator(element);
  return Comparison::equal;
}

// Whether a comparison holds: `equal` tells whether the sides are equal, `order` is below, at or above 0 as
// the left one is. Only the one that is needed is asked.
template <class Equal, class Order>
bool holds(Comparison comparison, Equal equal, Order order) {
  switch (comparison) {
    case Comparison::equal:
      return equal();
    case Comparison::notEqual:
      return !equal();
    case Comparison::less:
      return order() < 0;
    case Comparison::lessEqual:
      return order() <= 0;
    case Comparison::greater:
      return order() > 0;
    case Comparison::greaterEqual:
      return order() >= 0;
    default:
      return false;
  }
}

// The number of a word; one above the last does not fit.
template <class Word>
void passNumber(CXArchive& archive, Word& word, Word last) {
  int number = static_cast<int>(word);
  archive.pass(number);
  const bool fits = number >= 0 && number <= static_cast<int>(last);
  if (fits) {
    word = static_cast<Word>(number);
  } else {
    archive.fail();
  }
}

bool test(CMC_Variable* left, CMC_Variable* right, Comparison comparison) {
  return holds(
      comparison, [&] { return left->equals(right); }, [&] { return left->compare(right); });
}

}  // namespace

// What both conditions share

CMC_BasicCondition::CMC_BasicCondition(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type) {
  initializeBehaviours(container, element);
  noteBindings();
}

void CMC_BasicCondition::noteBindings() {
  onSuccess_ = getSingleBehaviour(signalName(ConditionSignal::onSuccess), 0);
  onFailure_ = getSingleBehaviour(signalName(ConditionSignal::onFailure), 0);
}

void CMC_BasicCondition::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  if (!archive.isStoring()) noteBindings();
}

bool CMC_BasicCondition::tell(bool outcome, bool raiseSignals) {
  if (!raiseSignals || isDisposed()) return outcome;
  const std::shared_ptr<SignalBinding> binding = outcome ? onSuccess_ : onFailure_;
  if (!binding || binding->removed) return outcome;
  const Ref<CMC_BasicCondition> self(this);
  const Ref<CMC_Behaviour> behaviour(binding->behaviour.get());
  const std::shared_ptr<const TextList> arguments = binding->arguments;
  if (behaviour) behaviour->run(this, arguments.get(), true);
  return outcome;
}

// CONDITION

CMC_Condition::CMC_Condition(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_BasicCondition(container, element, type::kCondition),
      operand1_(element->getPropertyValue("OPERAND1")),
      operand2_(element->getPropertyValue("OPERAND2")),
      operator_(comparisonOfProperty(element)),
      holder_(new CMC_Behaviour(container, "temp", "")) {}

CMC_Condition::CMC_Condition(const CMC_Condition& other)
    : CMC_BasicCondition(other),
      operand1_(other.operand1_),
      operand2_(other.operand2_),
      operator_(other.operator_),
      holder_(new CMC_Behaviour(other.getScene(), "temp", "")),
      entry1_(compileStatement(holder_.get(), operand1_)),
      entry2_(compileStatement(holder_.get(), operand2_)) {}

CMC_Condition::~CMC_Condition() = default;

std::unique_ptr<CMC_Object> CMC_Condition::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Condition(*this));
}

void CMC_Condition::init() {
  const Ref<CMC_Condition> self(this);
  CMC_Object::init();
  entry1_ = compileStatement(holder_.get(), operand1_);
  entry2_ = compileStatement(holder_.get(), operand2_);
}

void CMC_Condition::serialize(CXArchive& archive) {
  CMC_BasicCondition::serialize(archive);
  archive.pass(operand1_);
  archive.pass(operand2_);
  passNumber(archive, operator_, Comparison::instanceOf);
}

bool CMC_Condition::done(bool keep) {
  const Ref<CMC_Condition> self(this);
  entry1_.reset();
  entry2_.reset();
  return CMC_Object::done(keep);
}

bool CMC_Condition::valid(bool raiseSignals) {
  const EvaluationGuard guard;
  if (!guard || !entry1_ || !entry2_) return false;
  const Ref<CMC_Condition> self(this);
  const Ref<CMC_ObjectsContainer> scope(getScene());
  const RunContext context{holder_.get(), scope.get(), nullptr, nullptr};
  const auto entry1 = entry1_;
  const auto entry2 = entry2_;
  const Ref<CMC_Object> first = entry1->run(context).take();
  const Ref<CMC_Object> second = entry2->run(context).take();
  if (!first || !second) return tell(false, raiseSignals);
  const Ref<CMC_Variable> left = asVariable(first.get());
  Ref<CMC_Variable> right = asVariable(second.get());
  if (!left || !right) return tell(false, raiseSignals);
  const bool eitherIsExpression =
      CMC_Expression::isTypeOf(first->getType()) || CMC_Expression::isTypeOf(second->getType());
  if (!eitherIsExpression && left->getType() != right->getType()) {
    right = right->convert(left->getType());
    if (!right && diagnose::isOn())
      diagnose::report(diagnose::Group::arguments, getName(), "", "the sides cannot be compared", origin());
    if (!right) return false;
  }
  return tell(test(left.get(), right.get(), operator_), raiseSignals);
}

Comparison CMC_Condition::comparisonOf(std::string_view word) {
  for (const ComparisonWord& row : kWords) {
    if (row.argument.size() == word.size() && row.argument.front() == word.front() &&
        row.argument.back() == word.back())
      return row.comparison;
  }
  diagnose::reportCall(diagnose::Group::arguments, "there is no such comparison");
  return Comparison::none;
}

bool CMC_Condition::valid(CMC_ObjectsContainer* scope, const CXString& left, std::string_view word,
                          const CXString& right) {
  const Comparison comparison = comparisonOf(word);
  return comparison != Comparison::none && valid(scope, left, right, comparison);
}

bool CMC_Condition::valid(CMC_ObjectsContainer* scope, const CXString& left, const CXString& right,
                          Comparison comparison) {
  if (scope == nullptr) return false;
  if (comparison == Comparison::instanceOf) {
    const CMC_Object* object = scope->getObject(left);
    return object != nullptr && CMC_Object::typeToString(object->getType()) == right;
  }
  const Ref<CMC_Object> first = CMC_Behaviour::resolveParameter(scope, nullptr, left, nullptr).take();
  const Ref<CMC_Object> second = CMC_Behaviour::resolveParameter(scope, nullptr, right, nullptr).take();
  const Ref<CMC_Variable> leftValue = asVariable(first.get());
  const Ref<CMC_Variable> rightValue = asVariable(second.get());
  return leftValue && rightValue && test(leftValue.get(), rightValue.get(), comparison);
}

bool CMC_Condition::valid(CMC_ObjectsContainer* scope, const CXString& text) {
  struct Mark {
    char character;
    Comparison comparison;
  };
  constexpr Mark kBefore[] = {
      {'!', Comparison::notEqual}, {'<', Comparison::lessEqual}, {'>', Comparison::greaterEqual}};
  constexpr Mark kAlone[] = {
      {'<', Comparison::less}, {'>', Comparison::greater}, {'?', Comparison::instanceOf}};

  if (const int quote = text.Find('\''); quote >= 0) {
    const char before = quote > 0 ? text.GetAt(quote - 1) : '\0';
    for (const Mark& mark : kBefore) {
      if (mark.character == before)
        return valid(scope, text.Left(quote - 1), text.Right(quote + 1), mark.comparison);
    }
    return valid(scope, text.Left(quote), text.Right(quote + 1), Comparison::equal);
  }
  for (const Mark& mark : kAlone) {
    const int position = text.Find(mark.character);
    if (position >= 0) return valid(scope, text.Left(position), text.Right(position + 1), mark.comparison);
  }
  return valid(scope, CXString(), text, Comparison::equal);
}

// COMPLEXCONDITION

CMC_ComplexCondition::CMC_ComplexCondition(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_BasicCondition(container, element, type::kComplexCondition),
      condition1_(element->getPropertyValue("CONDITION1")),
      condition2_(element->getPropertyValue("CONDITION2")),
      operator_(resolveOperator(element->getPropertyValue("OPERATOR"))) {
  if (operator_ == Joint::none) reportOperator(element);
}

void CMC_ComplexCondition::serialize(CXArchive& archive) {
  CMC_BasicCondition::serialize(archive);
  archive.pass(condition1_);
  archive.pass(condition2_);
  passNumber(archive, operator_, Joint::either);
}

std::unique_ptr<CMC_Object> CMC_ComplexCondition::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_ComplexCondition(*this));
}

CMC_ComplexCondition::Joint CMC_ComplexCondition::resolveOperator(std::string_view word) {
  if (word == "AND") return Joint::both;
  return word == "OR" ? Joint::either : Joint::none;
}

bool CMC_ComplexCondition::isInnerValid(const CXString& name) {
  CMC_ObjectsContainer* scope = getScene();
  const Ref<CMC_BasicCondition> inner(scope != nullptr ? scope->find<CMC_BasicCondition>(name) : nullptr);
  return inner && inner->valid(true);
}

void CMC_ComplexCondition::reportMissing() const {
  if (!diagnose::isOn()) return;
  for (const CXString* name : {&condition1_, &condition2_}) {
    if (getScene()->find<CMC_BasicCondition>(*name) != nullptr) continue;
    diagnose::report(diagnose::Group::object, getName(), "", "no condition of the name " + name->str(),
                     origin());
  }
}

bool CMC_ComplexCondition::valid(bool raiseSignals) {
  const EvaluationGuard guard;
  if (!guard || getScene() == nullptr) return false;
  const Ref<CMC_ComplexCondition> self(this);
  if (getScene()->find<CMC_BasicCondition>(condition1_) == nullptr ||
      getScene()->find<CMC_BasicCondition>(condition2_) == nullptr) {
    reportMissing();
    return false;
  }
  bool outcome = false;
  if (operator_ == Joint::both) outcome = isInnerValid(condition1_) && isInnerValid(condition2_);
  if (operator_ == Joint::either) outcome = isInnerValid(condition1_) || isInnerValid(condition2_);
  return tell(outcome, raiseSignals);
}

}  // namespace footlight
