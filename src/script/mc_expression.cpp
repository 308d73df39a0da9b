#include "script/mc_expression.h"

#include <algorithm>

#include "foundation/depth.h"
#include "script/caches.h"
#include "script/mc_behaviour.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/statement_compiler.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

constexpr std::string_view kOperators = "+-*@%";
constexpr std::string_view kOperatorWords[] = {"ADD", "SUB", "MUL", "DIV", "MOD"};

}  // namespace

Ref<CMC_Variable> asVariable(CMC_Object* object) {
  if (object == nullptr) return nullptr;
  if (auto* expression = object_cast<CMC_Expression>(object)) return expression->calculate();
  if (auto* variable = object_cast<CMC_Variable>(object)) return Ref<CMC_Variable>(variable);
  return CMC_VariableFactory::makeString(object->getName());
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
  isPlain_ = !items_.empty() && std::all_of(items_.begin(), items_.end(), [](const Item& item) {
    return item.entry && item.entry->isPlainValue();
  });
}

// Numbers are calculated without a value for each step. Null where the first operand is none, or another is
// no value in place.
Ref<CMC_Variable> CMC_Expression::calculatePlain() const {
  const RunContext context{holder_.get(), getScene(), nullptr, nullptr};
  int whole = 0;
  double real = 0.0;
  bool isWhole = true;
  for (const Item& item : items_) {
    CMC_Object* object = item.entry->peek(context);
    if (object == nullptr || !CMC_Variable::isValueType(object->getType())) return nullptr;
    auto* value = static_cast<CMC_Variable*>(object);
    const bool isFirst = &item == &items_.front();
    if (isFirst && value->getType() != type::kInteger && value->getType() != type::kDouble) return nullptr;
    if (isFirst) isWhole = value->getType() == type::kInteger;
    if (isWhole) {
      const bool isInteger = value->getType() == type::kInteger;
      const int operand = isInteger ? static_cast<CMC_Integer*>(value)->getValue() : value->asInteger();
      whole = isFirst ? operand : CMC_Integer::apply(whole, item.operation, operand);
    } else {
      const double operand = value->asDouble();
      real = isFirst ? operand : CMC_Double::apply(real, item.operation, operand);
    }
  }
  return isWhole ? CMC_VariableFactory::makeInteger(whole) : CMC_VariableFactory::makeDouble(real);
}

void CMC_Expression::tellNames(NameUses& uses) const {
  for (const Item& item : items_) {
    if (item.entry) item.entry->tellNames(uses);
  }
}

Ref<CMC_Variable> CMC_Expression::operand(const Item& item) {
  if (!item.entry) return nullptr;
  const RunContext context{holder_.get(), getScene(), nullptr, nullptr};
  const Ref<CMC_Object> value = item.entry->run(context).take();
  return asVariable(value.get());
}

Ref<CMC_Variable> CMC_Expression::calculate() {
  const DepthGuard depth;
  if (!depth || !watchdog::mayContinue()) return CMC_VariableFactory::makeInteger(0);
  if (isPlain_ && caches::isOn()) {
    if (Ref<CMC_Variable> result = calculatePlain()) return result;
  }
  const Ref<CMC_Expression> self(this);
  if (items_.empty()) return CMC_VariableFactory::makeInteger(0);

  Ref<CMC_Variable> result = operand(items_.front());
  for (std::size_t i = 1; i < items_.size(); ++i) {
    Ref<CMC_Variable> value = operand(items_[i]);
    // A missing operand is 0 of the type beside it.
    if (!result) result = CMC_VariableFactory::make(value ? value->getType() : type::kInteger);
    if (!result) result = CMC_VariableFactory::makeInteger(0);
    if (!value) value = CMC_VariableFactory::makeInteger(0);
    if (items_[i].operation != Operation::none) result = result->calculate(value.get(), items_[i].operation);
  }
  return result ? result : CMC_VariableFactory::makeInteger(0);
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
