#include "script/call_statement.h"

#include <algorithm>
#include <span>

#include "script/argument_buffer.h"
#include "script/code_lines.h"
#include "script/code_text.h"
#include "script/lent_texts.h"
#include "script/mc_structure.h"

namespace footlight {

namespace {

// Tells what an argument's compiling asked for.
struct NameTeller {
  NameUses& uses;

  void operator()(const FixedArgument& /*argument*/) const {}
  void operator()(const ExpressionArgument& argument) const { argument.expression->tellNames(uses); }
  void operator()(const NameArgument& argument) const { argument.statement->tellNames(uses); }
  void operator()(const CodeArgument& argument) const {
    CMC_Behaviour* behaviour = argument.behaviour.get();
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
    CMC_Behaviour* behaviour = code != nullptr ? code->behaviour.get() : nullptr;
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

// @IF(left, "_", right, {...}, {...})

bool ComparisonCall::isFormOf(const Parts& parts) {
  const auto& arguments = parts.arguments;
  return parts.method == "IF" && arguments.size() > kThen && arguments.size() <= kThen + 2 &&
         std::holds_alternative<NameArgument>(arguments[1]) &&
         std::all_of(arguments.begin() + kThen, arguments.end(), [](const CallArgument& argument) {
           return std::holds_alternative<CodeArgument>(argument);
         });
}

ComparisonCall::ComparisonCall(Parts parts) : BuiltInCall(std::move(parts)) {
  for (std::size_t i = kThen; i < arguments().size(); ++i)
    branches_[i - kThen] = &std::get<CodeArgument>(arguments()[i]);
}

Comparison ComparisonCall::comparison(const RunContext& context) const {
  const NameStatement& statement = *std::get<NameArgument>(arguments()[1]).statement;
  CMC_Object* word = statement.peek(context);
  if (word != statement.literal()) return Comparison::none;
  if (word != word_) {
    const auto* text = object_cast<CMC_String>(word);
    comparison_ = text != nullptr ? CMC_Condition::comparisonOf(text->getValue()) : Comparison::none;
    if (comparison_ == Comparison::instanceOf) comparison_ = Comparison::none;
    word_ = word;
  }
  return comparison_;
}

std::optional<bool> ComparisonCall::holds(const RunContext& context) const {
  const Number left = numberOf(arguments()[0], context);
  if (!left.isWhole()) return std::nullopt;
  const Comparison word = comparison(context);
  const Number right = word != Comparison::none ? numberOf(arguments()[2], context) : Number();
  if (!right.isWhole()) return std::nullopt;
  return CMC_Condition::valid(left.whole(), right.whole(), word);
}

Result ComparisonCall::run(const RunContext& context, bool isResultUsed) const {
  std::optional<bool> outcome = diagnose::isOn() ? std::nullopt : holds(context);
  if (outcome && context.arguments != nullptr) {
    // Both branches see the arguments before the sides are read.
    for (const CodeArgument* branch : branches_) {
      if (branch != nullptr) prepare(*branch, context);
    }
    outcome = holds(context);
  }
  if (!outcome) return BuiltInCall::run(context, isResultUsed);
  const CodeArgument* branch = branches_[*outcome ? 0 : 1];
  if (branch == nullptr) return {};
  CMC_Behaviour* behaviour = branch->behaviour.get();
  if (behaviour == nullptr) return BuiltInCall::run(context, isResultUsed);
  return behaviour->run(behaviour, nullptr, false) ? Result::breakRun() : Result();
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
  isBare_ = row() != nullptr && arguments().empty();
}

Result ObjectCall::run(const RunContext& context, bool isResultUsed) const {
  CMC_Object* bound = isBare_ ? object_.get() : nullptr;
  if (bound == nullptr) return CallStatement::run(context, isResultUsed);
  if (diagnose::isOn()) diagnose::place = origin();
  return CMC_Runner::call(*row(), *bound, context.scene, ArgumentList({}, isResultUsed));
}

Result ObjectCall::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  if (CMC_Object* bound = object_.get()) return callBound(*bound, context, arguments);
  if (CMC_Object* found = findUnbound(context)) return callMethod(*found, context, arguments);
  reportMissing(name_);
  return {};
}

// The row of the method for the object that was found.
const Method* ObjectCall::rowFor(const CMC_Object& object) const {
  if (&object != object_.get() && object.getRunner() != runner()) lookUp(object.getRunner());
  return row();
}

CMC_Object* ObjectCall::findUnbound(const RunContext& context) const {
  const bool isRemembered = context.scene != nullptr && !isField_;
  return isRemembered ? remembered_.find(*context.scene, name_)
                      : CMC_Structure::findNamed(context.scene, name_);
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

// NAME^METHOD(number)

// The argument is read once: as a number where nothing need run for it, else by running it.
Result NumberCall::run(const RunContext& context, bool isResultUsed) const {
  const CallArgument& argument = arguments().front();
  if (diagnose::isOn()) return ObjectCall::run(context, isResultUsed);
  Number number = numberOf(argument, context);
  const auto* computed = number ? nullptr : std::get_if<StatementArgument>(&argument);
  if (!number && computed == nullptr) return ObjectCall::run(context, isResultUsed);
  Value value(number);
  if (computed != nullptr) {
    value = computed->statement->run(context);
    number = value.present() != nullptr ? numberOf(value.present()) : value.number();
  }
  CMC_Object* object = number ? find(context) : nullptr;
  const Method* known = object != nullptr ? rowFor(*object) : nullptr;
  const NumberFunction function = known != nullptr ? known->numberFunction : nullptr;
  Value result;
  if (function != nullptr && function(*object, number, isResultUsed ? &result : nullptr)) return result;
  return dispatch(context, ArgumentList(std::span(&value, 1), isResultUsed));
}

// BEHAVIOUR^RUN(...)

Result ProcedureCall::run(const RunContext& context, bool isResultUsed) const {
  const LentTexts texts;
  auto* behaviour = isResultUsed || diagnose::isOn() ? nullptr : object_cast<CMC_Behaviour>(find(context));
  if (behaviour == nullptr || !readNumbers(context, texts.list()))
    return ObjectCall::run(context, isResultUsed);
  return behaviour->run(nullptr, &texts.list(), false) ? Result::breakRun() : Result();
}

bool ProcedureCall::readNumbers(const RunContext& context, TextList& texts) const {
  if (CMC_ObjectsContainer::areNumbersNames()) return false;
  for (const CallArgument& argument : arguments()) {
    const Number number = numberOf(argument, context);
    if (!number.isWhole()) return false;
    texts.emplace_back(number.whole());
  }
  return true;
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
