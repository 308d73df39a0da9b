#include "script/value_statement.h"

#include "script/caches.h"
#include "script/code_text.h"
#include "script/mc_structure.h"
#include "script/mc_variable_factory.h"

namespace footlight {

// A name or a literal

NameStatement::NameStatement(CXString line, Origin origin, CMC_Object* bound)
    : CMC_Behaviour_Entry(std::move(line), origin),
      name_(bound != nullptr ? bound->getName() : getLine()),
      isField_(name_.Find('|') >= 0),
      object_(bound) {}

CMC_Object* NameStatement::find(const RunContext& context) const {
  if (!caches::isOn()) return nullptr;
  const bool isRemembered = context.scene != nullptr && !isField_;
  CMC_Object* found =
      isRemembered ? remembered_.find(*context.scene, name_) : CMC_Structure::findNamed(context.scene, name_);
  if (found != nullptr && CMC_Variable::isValueType(found->getType())) return found;
  if (!literal_) {
    const Ref<CMC_Variable> value = CMC_Variable::resolve(getLine());
    literal_.reset(CMC_VariableFactory::makeNamed(value->getType(), value->getName()).release());
    literal_->set(value.get());
  }
  return literal_.get();
}

Result NameStatement::run(const RunContext& context, bool /*isResultUsed*/) const {
  if (CMC_Object* present = peek(context)) return Value(present);
  CMC_Object* found = CMC_Structure::findNamed(context.scene, name_);
  const bool isValue = found != nullptr && CMC_Variable::isValueType(found->getType());
  return isValue ? Value(found) : Value(CMC_Variable::resolve(getLine()));
}

void NameStatement::tellNames(NameUses& uses) const { uses.add(getLine()); }

// A value with marks

Result MarkedStatement::run(const RunContext& context, bool /*isResultUsed*/) const {
  const CXString text = code_text::fillMarks(text_, context.arguments);
  if (text_.startsWith("["))
    return makeRef<CMC_Expression>(context.scene, code_text::withoutEnds(text))->evaluate();
  CMC_Object* variable = context.scene != nullptr ? context.scene->getVariable(text) : nullptr;
  return variable != nullptr ? Value(variable) : Value(CMC_Variable::resolve(text));
}

void MarkedStatement::tellNames(NameUses& uses) const { uses.add(getLine()); }

// Arithmetic

Result ExpressionStatement::run(const RunContext& /*context*/, bool /*isResultUsed*/) const {
  return Result(expression_);
}

void ExpressionStatement::tellNames(NameUses& uses) const { expression_->tellNames(uses); }

}  // namespace footlight
