#include "script/mc_expression.h"

#include <algorithm>

#include "script/caches.h"
#include "script/evaluation_guard.h"
#include "script/mc_behaviour.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/statement_compiler.h"
#include "script/value_statement.h"

namespace footlight {

namespace {

constexpr std::string_view kOperators = "+-*@%";
constexpr std::string_view kOperatorWords[] = {"ADD", "SUB", "MUL", "DIV", "MOD"};

// The zero of a value's type.
Value zeroLike(const Value& value) {
  if (value.number().isReal()) return Number(0.0);
  const CMC_Object* object = value.present();
  Value zero = object != nullptr ? CMC_VariableFactory::make(object->getType()) : Ref<CMC_Variable>();
  return zero.isNone() ? Value(Number(0)) : zero;
}

Number numberOf(const Value& value) {
  return value.present() != nullptr ? footlight::numberOf(value.present()) : value.number();
}

// Values that are variables or numbers. None where the first has no arithmetic.
Value combine(const Value& a, Operation operation, const Value& b) {
  const Number left = numberOf(a);
  const Number right = numberOf(b);
  if (left && right) return calculate(left, operation, right);
  auto* variable = static_cast<CMC_Variable*>(a.object());
  return variable->calculate(static_cast<CMC_Variable*>(b.object()), operation);
}

}  // namespace

Value asValue(Value value) {
  CMC_Object* object = value.present();
  if (object == nullptr || CMC_Variable::isValueType(object->getType())) return value;
  if (auto* expression = object_cast<CMC_Expression>(object)) return expression->evaluate();
  if (CMC_Variable::isTypeOf(object->getType())) return value;
  return CMC_VariableFactory::makeString(object->getName());
}

Ref<CMC_Variable> asVariable(CMC_Object* object) {
  return Ref<CMC_Variable>(static_cast<CMC_Variable*>(asValue(Value(object)).take().get()));
}

CMC_Expression::CMC_Expression(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Variable(container, element, type::kExpression),
      operand1_(element->getPropertyValue("OPERAND1")),
      operand2_(element->getPropertyValue("OPERAND2")),
      operation_(resolveOp(element->getPropertyValue("OPERATOR"))),
      still_(true),
      holder_(new CMC_Behaviour(container, "temp", "")) {
  const CMProperty* word = element->properties().get("OPERATOR");
  if (word != nullptr && operation_ == Operation::none && diagnose::isOn())
    diagnose::report(diagnose::Group::definition, getName(), "OPERATOR",
                     "no such operator: " + std::string(word->getValue()), word->origin());
  initializeBehaviours(container, element);
}

CMC_Expression::CMC_Expression(CMC_ObjectsContainer* container, const CXString& text)
    : CMC_Variable(CXString(), type::kExpression),
      still_(false),
      holder_(new CMC_Behaviour(container, "temp", "")) {
  setScene(container);
  for (const Operand& operand : cutOperands(text)) {
    items_.push_back({operand.operation, operand.text, nullptr});
  }
  compile();
}

CMC_Expression::CMC_Expression(const CMC_Expression& other)
    : CMC_Variable(other),
      operand1_(other.operand1_),
      operand2_(other.operand2_),
      operation_(other.operation_),
      still_(true),
      holder_(new CMC_Behaviour(other.getScene(), "temp", "")) {
  setScene(other.getScene());
  for (const Item& item : other.items_) items_.push_back({item.operation, item.text, nullptr});
  compile();
}

CMC_Expression::~CMC_Expression() = default;

std::unique_ptr<CMC_Object> CMC_Expression::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Expression(*this));
}

Operation CMC_Expression::resolveOp(std::string_view text) {
  if (text.size() == 1) {
    const auto symbol = kOperators.find(text[0]);
    return symbol == std::string_view::npos ? Operation::none : static_cast<Operation>(symbol + 1);
  }
  const auto* word = std::find(std::begin(kOperatorWords), std::end(kOperatorWords), text);
  return word == std::end(kOperatorWords) ? Operation::none
                                          : static_cast<Operation>(word - std::begin(kOperatorWords) + 1);
}

void CMC_Expression::init() {
  const Ref<CMC_Expression> self(this);
  CMC_Variable::init();
  items_.clear();
  items_.push_back({Operation::none, operand1_, nullptr});
  items_.push_back({operation_, operand2_, nullptr});
  compile();
}

void CMC_Expression::serialize(CXArchive& archive) {
  CMC_Variable::serialize(archive);
  archive.pass(operand1_);
  archive.pass(operand2_);
  int number = static_cast<int>(operation_);
  archive.pass(number);
  const bool fits = number >= 0 && number <= static_cast<int>(std::size(kOperatorWords));
  if (!fits) archive.fail();
  operation_ = fits ? static_cast<Operation>(number) : Operation::none;
}

std::vector<CMC_Expression::Operand> CMC_Expression::cutOperands(std::string_view text) {
  std::vector<Operand> operands;
  Operation operation = Operation::none;
  std::size_t start = 0;
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    depth += text[i] == '[' ? 1 : (text[i] == ']' ? -1 : 0);
    if (depth != 0 || kOperators.find(text[i]) == std::string_view::npos) continue;
    operands.push_back({operation, text.substr(start, i - start)});
    operation = resolveOp(text.substr(i, 1));
    start = i + 1;
  }
  operands.push_back({operation, text.substr(start)});
  return operands;
}

void CMC_Expression::compile() {
  for (Item& item : items_) {
    if (item.text.IsString()) item.entry = compileStatement(holder_.get(), item.text);
  }
  plainItems_.clear();
  for (const Item& item : items_) {
    const bool isPlain = item.entry && item.entry->isPlainValue();
    if (isPlain) plainItems_.push_back({item.operation, static_cast<const NameStatement*>(item.entry.get())});
  }
  if (plainItems_.size() != items_.size()) plainItems_.clear();
}

Number CMC_Expression::plainNumber() const {
  if (plainItems_.empty() || !caches::isOn()) return {};
  const RunContext context{holder_.get(), getScene(), nullptr, nullptr};
  Number result = plainItems_.front().name->number(context);
  if (!result) return {};
  for (const PlainItem& item : std::span(plainItems_).subspan(1)) {
    Number operand = item.name->number(context);
    if (!operand) {
      auto* value = object_cast<CMC_Variable>(item.name->peek(context));
      if (value == nullptr || !isValueType(value->getType())) return {};
      operand = result.isWhole() ? Number(value->asInteger()) : Number(value->asDouble());
    }
    result = footlight::calculate(result, item.operation, operand);
  }
  return result;
}

void CMC_Expression::tellNames(NameUses& uses) const {
  for (const Item& item : items_) {
    if (item.entry) item.entry->tellNames(uses);
  }
}

// A variable stays what it is until it is used: what the next operand runs may change it.
Value CMC_Expression::operand(const Item& item) {
  if (!item.entry) return {};
  const RunContext context{holder_.get(), getScene(), nullptr, nullptr};
  return asValue(item.entry->run(context));
}

Number CMC_Expression::number() const {
  const EvaluationGuard guard;
  return guard ? plainNumber() : Number(0);
}

Value CMC_Expression::evaluate() {
  const EvaluationGuard guard;
  if (!guard) return Number(0);
  if (const Number plain = plainNumber()) return plain;
  const Ref<CMC_Expression> self(this);
  if (items_.empty()) return Number(0);

  Value result = operand(items_.front());
  for (std::size_t i = 1; i < items_.size(); ++i) {
    Value value = operand(items_[i]);
    // A missing operand is 0 of the type beside it.
    if (result.isNone()) result = zeroLike(value);
    if (value.isNone()) value = Number(0);
    if (items_[i].operation != Operation::none) result = combine(result, items_[i].operation, value);
  }
  return result.isNone() ? Value(Number(0)) : result;
}

Ref<CMC_Variable> CMC_Expression::calculate() {
  return Ref<CMC_Variable>(static_cast<CMC_Variable*>(evaluate().take().get()));
}

bool CMC_Expression::equals(CMC_Variable* other) { return calculate()->equals(other); }

int CMC_Expression::compare(CMC_Variable* other) { return calculate()->compare(other); }

Ref<CMC_Variable> CMC_Expression::convert(int type) { return calculate()->convert(type); }

Ref<CMC_Variable> CMC_Expression::calculate(CMC_Variable* other, Operation operation) {
  return calculate()->calculate(other, operation);
}

int CMC_Expression::asInteger() { return calculate()->asInteger(); }

double CMC_Expression::asDouble() { return calculate()->asDouble(); }

bool CMC_Expression::asBool() { return calculate()->asBool(); }

}  // namespace footlight
