#include "script/call_statement.h"

#include "script/argument_buffer.h"
#include "script/code_lines.h"
#include "script/code_text.h"
#include "script/mc_structure.h"

namespace footlight {

namespace {

// Tells what an argument's compiling asked for.
struct NameTeller {
  NameUses& uses;

  void operator()(const FixedArgument& argument) const {
    if (const auto* expression = object_cast<CMC_Expression>(argument.value.get()))
      expression->tellNames(uses);
  }
  void operator()(const CodeArgument& argument) const {
    CMC_Behaviour* behaviour = argument.value->inlineBehaviour();
    if (behaviour == nullptr) return;
    uses.add(behaviour);
    if (const CodeLines* lines = behaviour->getLines()) lines->tellNames(uses);
  }
  void operator()(const ReferenceArgument& argument) const { uses.add(argument.name); }
  void operator()(const StatementArgument& argument) const { argument.statement->tellNames(uses); }
  void operator()(const MarkedArgument& argument) const { argument.statement->tellNames(uses); }
};

}  // namespace

// What all calls share

CallStatement::CallStatement(Parts parts)
    : CMC_Behaviour_Entry(std::move(parts.line), parts.origin),
      method_(std::move(parts.method)),
      arguments_(std::move(parts.arguments)),
      isConstant_(parts.isConstant) {}

CallStatement::~CallStatement() {
  if (!ownsTempBehaviours_) return;
  for (const CallArgument& argument : arguments_) {
    const auto* code = std::get_if<CodeArgument>(&argument);
    CMC_Behaviour* behaviour = code != nullptr ? code->value->inlineBehaviour() : nullptr;
    if (behaviour != nullptr) CMC_InlineCode::end(*behaviour);
  }
}

Result CallStatement::run(const RunContext& context, bool isResultUsed) const {
  ArgumentReader reader(context, isConstant_);
  ArgumentBuffer values(arguments_.size());
  for (const CallArgument& argument : arguments_) values.add(reader.read(argument));
  if (diagnose::isOn()) diagnose::place = origin();
  return dispatch(context, ArgumentList(values.all(), isResultUsed));
}

void CallStatement::tellNames(NameUses& uses) const {
  for (const CallArgument& argument : arguments_) std::visit(NameTeller{uses}, argument);
}

void CallStatement::lookUp(CMC_Runner* runner) const {
  runner_ = runner;
  row_ = runner != nullptr ? runner->findMethod(method_) : nullptr;
}

Result CallStatement::callMethod(CMC_Object& object, const RunContext& context,
                                 const ArgumentList& arguments) const {
  CMC_Runner* runner = object.getRunner();
  if (runner == nullptr) {
    reportUncallable(object.getName(), "has no methods");
    return {};
  }
  if (code_text::hasMark(method_)) {
    const CXString method = code_text::fillMarks(method_, context.arguments);
    return runner->run(method.view(), &object, context.scene, arguments);
  }
  if (runner != runner_) lookUp(runner);
  if (row_ != nullptr) return CMC_Runner::call(*row_, object, context.scene, arguments);
  return runner->run(method_.view(), &object, context.scene, arguments);
}

void CallStatement::reportMissing(const CXString& name) const { reportUncallable(name, "no such object"); }

void CallStatement::reportUncallable(const CXString& name, const char* why) const {
  if (diagnose::isOn()) diagnose::report(diagnose::Group::object, name, method_, why, origin());
}

// @WORD(...)

BuiltInCall::BuiltInCall(Parts parts) : CallStatement(std::move(parts)) {
  lookUp(CMC_RunnerFactory::getRunner(type::kBuiltIns));
}

Result BuiltInCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  if (row() != nullptr) return CMC_Runner::call(*row(), *context.behaviour, context.scene, arguments);
  if (runner() == nullptr) return {};
  return runner()->run(method().view(), context.behaviour, context.scene, arguments);
}

// THIS^METHOD(...)

Result CallerCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  const bool inClass = context.scene != nullptr && context.scene->getType() == type::kClass;
  CMC_Object* object = inClass ? context.scene : context.caller;
  if (object != nullptr) return callMethod(*object, context, arguments);
  reportUncallable("THIS", "nobody called");
  return {};
}

// NAME^METHOD(...)

ObjectCall::ObjectCall(Parts parts, CXString name, CMC_Object* bound)
    : CallStatement(std::move(parts)),
      name_(std::move(name)),
      isField_(name_.Find('|') >= 0),
      object_(bound) {
  if (bound != nullptr) lookUp(bound->getRunner());
  isBare_ = row() != nullptr && !hasArguments();
}

Result ObjectCall::run(const RunContext& context, bool isResultUsed) const {
  CMC_Object* bound = isBare_ ? object_.get() : nullptr;
  if (bound == nullptr) return CallStatement::run(context, isResultUsed);
  if (diagnose::isOn()) diagnose::place = origin();
  return CMC_Runner::call(*row(), *bound, context.scene, ArgumentList({}, isResultUsed));
}

Result ObjectCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  if (CMC_Object* bound = object_.get()) return callBound(*bound, context, arguments);
  const bool isRemembered = context.scene != nullptr && !isField_;
  CMC_Object* found =
      isRemembered ? remembered_.find(*context.scene, name_) : CMC_Structure::findNamed(context.scene, name_);
  if (found != nullptr) return callMethod(*found, context, arguments);
  reportMissing(name_);
  return {};
}

// The method of an object that was known when the statement was compiled is taken as it was written then.
Result ObjectCall::callBound(CMC_Object& object, const RunContext& context,
                             const ArgumentList& arguments) const {
  if (row() != nullptr) return CMC_Runner::call(*row(), object, context.scene, arguments);
  CMC_Runner* runner = object.getRunner();
  return runner != nullptr ? runner->run(method().view(), &object, context.scene, arguments) : Result();
}

void ObjectCall::tellNames(NameUses& uses) const {
  uses.add(name_);
  CallStatement::tellNames(uses);
}

// NA$1ME^METHOD(...)

Result DynamicCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  const CXString name = code_text::fillMarks(name_, context.arguments);
  CMC_Object* object = context.scene != nullptr ? context.scene->getObject(name) : nullptr;
  if (object != nullptr) return callMethod(*object, context, arguments);
  reportMissing(name);
  return {};
}

// *NAME^METHOD(...)

IndirectCall::IndirectCall(Parts parts, CXString name, CMC_Object* bound, Ref<CMC_Expression> expression)
    : CallStatement(std::move(parts)),
      name_(std::move(name)),
      object_(bound),
      expression_(std::move(expression)) {}

Ref<CMC_Variable> IndirectCall::source(const CMC_ObjectsContainer& scope) const {
  if (expression_) return expression_->calculate();
  CMC_Object* named = object_.get();
  return asVariable(named != nullptr ? named : scope.getVariable(name_));
}

Result IndirectCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  if (context.scene == nullptr) return {};
  const Ref<CMC_Variable> value = source(*context.scene);
  const CXString name = value ? value->asText() : name_;
  CMC_Object* object = value ? context.scene->getObject(name) : nullptr;
  if (object != nullptr) return callMethod(*object, context, arguments);
  reportMissing(name);
  return {};
}

void IndirectCall::tellNames(NameUses& uses) const {
  if (expression_) {
    expression_->tellNames(uses);
  } else {
    uses.add(name_);
  }
  CallStatement::tellNames(uses);
}

}  // namespace footlight
