#include "script/call_argument.h"

#include "script/caches.h"
#include "script/code_text.h"
#include "script/mc_expression.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/statement_compiler.h"

namespace footlight {

namespace {

// A variable of the scope by its name, else what the text says as a literal.
Value variableOrLiteral(const CMC_ObjectsContainer* scope, const CXString& text) {
  CMC_Object* variable = scope != nullptr ? scope->getVariable(text) : nullptr;
  return variable != nullptr ? Value(variable) : Value(CMC_Variable::resolve(text));
}

}  // namespace

Value ArgumentReader::valueOf(const CodeArgument& argument) {
  if (!isConstant_) prepare(argument, context_);
  return argument.value;
}

Value ArgumentReader::valueOf(const ReferenceArgument& argument) {
  CMC_Object* variable = argument.variable.get();
  return variable != nullptr ? Value(variable) : variableOrLiteral(context_.scene, argument.name);
}

Value ArgumentReader::valueOf(const StatementArgument& argument) { return argument.statement->run(context_); }

Value ArgumentReader::valueOf(const MarkedArgument& argument) {
  if (const Number number = argument.number(context_)) return number;
  return valueOfFilled(argument, code_text::fillMarks(argument.statement->getLine(), context_.arguments));
}

Value ArgumentReader::valueOfFilled(const MarkedArgument& argument, const CXString& text) {
  if (text.startsWith("[")) return makeRef<CMC_Expression>(context_.scene, code_text::withoutEnds(text));
  if (!text.startsWith("@") && !code_text::hasMark(text) && text.Find('^') < 0)
    return variableOrLiteral(context_.scene, text);
  const bool isCode = code_text::isInlineCode(text) && context_.scene != nullptr;
  return isCode ? makeCode(text) : runFilled(argument, text);
}

// Compiling anew would find what it found before while no name came or went. Inline code and fields of
// structures are not a matter of names alone.
Value ArgumentReader::runFilled(const MarkedArgument& argument, const CXString& text) {
  const std::uint64_t generation = CMC_ObjectsContainer::generation();
  const std::uint64_t scope = context_.scene != nullptr ? context_.scene->serial() : 0;
  std::shared_ptr<const MarkedArgument::Filled> filled = argument.filled;
  const bool isKnown = caches::isOn() && filled && filled->generation == generation &&
                       filled->scope == scope && filled->text == text;
  if (!isKnown) {
    auto made = std::make_shared<MarkedArgument::Filled>();
    made->text = text;
    made->scope = scope;
    made->statement = compileStatement(context_.behaviour, text);
    made->generation = CMC_ObjectsContainer::generation();
    filled = made;
    const bool isLasting = text.Find('{') < 0 && text.Find('|') < 0;
    argument.filled = caches::isOn() && isLasting ? filled : nullptr;
  }
  return filled->statement->run(context_);
}

Value ArgumentReader::makeCode(const CXString& text) {
  throwaways_.push_back(
      CMC_InlineCode::makeBehaviour(context_.scene, "xtemp_", text, context_.behaviour->origin()));
  return makeRef<CMC_InlineCode>(throwaways_.back().get(), "xtemp");
}

}  // namespace footlight
