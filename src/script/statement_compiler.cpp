#include "script/statement_compiler.h"

#include <algorithm>

#include "foundation/limits.h"
#include "script/caches.h"
#include "script/call_statement.h"
#include "script/code_text.h"
#include "script/mc_structure.h"
#include "script/value_statement.h"

namespace footlight {

namespace {

using code_text::hasMark;
using code_text::Shape;
using code_text::withoutEnds;
using Statement = std::unique_ptr<CMC_Behaviour_Entry>;

// Compiling nests with the brackets of the text; past the limit a piece is a plain value.
class CompileDepth {
 public:
  CompileDepth() { ++depth; }
  ~CompileDepth() { --depth; }
  CompileDepth(const CompileDepth&) = delete;
  CompileDepth& operator=(const CompileDepth&) = delete;
  static bool isTooDeep() {
    if (depth <= limits::kBracketDepth) return false;
    limitHit("brackets in one statement");
    return true;
  }

 private:
  static inline int depth = 0;
};

// Locals come and go: they are looked up at each run.
CMC_Object* unlessTemporary(CMC_Object* found) {
  return found != nullptr && found->isTemporary() ? nullptr : found;
}

// Whether an argument needs nothing of the run.
bool isConstant(const CallArgument& argument) {
  if (const auto* code = std::get_if<CodeArgument>(&argument)) return !code->hasMarks;
  return std::holds_alternative<FixedArgument>(argument) ||
         std::holds_alternative<ExpressionArgument>(argument) ||
         std::holds_alternative<ReferenceArgument>(argument);
}

class StatementCompiler {
 public:
  StatementCompiler(CMC_Behaviour* behaviour, CXString line)
      : behaviour_(behaviour),
        scene_(behaviour->getScene()),
        line_(std::move(line)),
        shape_(code_text::readStatement(line_)) {}

  Statement compile();
  Statement literal() { return std::make_unique<NameStatement>(line(), origin(), nullptr); }

 private:
  Statement compileValue();
  Statement compileExpression();
  Statement compileBuiltIn();
  Statement compileIndirect();
  Statement compileObjectCall();
  CallStatement::Parts compileCall();
  std::vector<CallArgument> compileArguments();
  CallArgument compileArgument(std::string_view piece);
  CallArgument compileReference(std::string_view piece);

  CXString line() const { return CXString(shape_.text); }
  Origin origin() const { return behaviour_->origin(); }

  CMC_Behaviour* behaviour_;
  CMC_ObjectsContainer* scene_;
  const CXString line_;
  Shape shape_;
};

Statement StatementCompiler::compile() {
  switch (shape_.kind) {
    case Shape::Kind::builtIn:
      return compileBuiltIn();
    case Shape::Kind::indirect:
      return compileIndirect();
    case Shape::Kind::caller:
      return std::make_unique<CallerCall>(compileCall());
    case Shape::Kind::expression:
      return compileExpression();
    case Shape::Kind::call:
      return compileObjectCall();
    case Shape::Kind::value:
      break;
  }
  return compileValue();
}

// Values

Statement StatementCompiler::compileValue() {
  CMC_Object* bound = unlessTemporary(scene_ != nullptr ? scene_->getObject(shape_.text) : nullptr);
  if (!hasMark(shape_.text)) return std::make_unique<NameStatement>(line(), origin(), bound);
  return std::make_unique<MarkedStatement>(line(), origin(), bound != nullptr ? bound->getName() : line());
}

Statement StatementCompiler::compileExpression() {
  const CXString inside = withoutEnds(shape_.text);
  if (hasMark(inside))
    return std::make_unique<MarkedStatement>(line(), origin(), CXString("[") + inside + "]");
  return std::make_unique<ExpressionStatement>(line(), origin(), makeRef<CMC_Expression>(scene_, inside));
}

// Calls

CallStatement::Parts StatementCompiler::compileCall() {
  CallStatement::Parts parts{line(), origin(), {}, {}, true};
  if (!shape_.parameters) {
    if (diagnose::isOn())
      diagnose::report(diagnose::Group::statement, shape_.text, "", "a call needs its round brackets",
                       origin());
    return parts;
  }
  parts.method = CXString(shape_.method);
  parts.arguments = compileArguments();
  parts.isConstant = std::all_of(parts.arguments.begin(), parts.arguments.end(), isConstant);
  return parts;
}

// Without caches all calls take the same way.
Statement StatementCompiler::compileBuiltIn() {
  CallStatement::Parts parts = compileCall();
  if (caches::isOn() && ComparisonCall::isFormOf(parts))
    return std::make_unique<ComparisonCall>(std::move(parts));
  return std::make_unique<BuiltInCall>(std::move(parts));
}

Statement StatementCompiler::compileIndirect() {
  CMC_Object* bound = nullptr;
  Ref<CMC_Expression> expression;
  if (shape_.object.starts_with('[')) {
    expression = makeRef<CMC_Expression>(scene_, withoutEnds(shape_.object));
  } else if (scene_ != nullptr) {
    bound = scene_->getObject(shape_.object);
  }
  return std::make_unique<IndirectCall>(compileCall(), CXString(shape_.object), bound, std::move(expression));
}

Statement StatementCompiler::compileObjectCall() {
  const CXString name = shape_.object;
  if (hasMark(name)) return std::make_unique<DynamicCall>(compileCall(), name);
  const WeakRef<CMC_Object> bound = unlessTemporary(CMC_Structure::findNamed(scene_, name));
  CallStatement::Parts parts = compileCall();
  const bool isProcedure =
      caches::isOn() && parts.method == "RUN" && bound && bound->getType() == type::kBehaviour;
  if (isProcedure) return std::make_unique<ProcedureCall>(std::move(parts), name, bound.get());
  if (caches::isOn() && parts.arguments.size() == 1 && !hasMark(parts.method))
    return std::make_unique<NumberCall>(std::move(parts), name, bound.get());
  return std::make_unique<ObjectCall>(std::move(parts), name, bound.get());
}

// Arguments

std::vector<CallArgument> StatementCompiler::compileArguments() {
  std::vector<CallArgument> arguments;
  bool callsSomething = false;
  for (const std::string_view piece : code_text::cutArguments(*shape_.parameters)) {
    arguments.push_back(compileArgument(piece));
    const auto* computed = std::get_if<StatementArgument>(&arguments.back());
    const auto* marked = std::get_if<MarkedArgument>(&arguments.back());
    callsSomething = callsSomething || (computed != nullptr && computed->statement->isCall()) ||
                     (marked != nullptr && marked->statement->isCall());
  }
  // What an argument calls may make names of numbers.
  for (CallArgument& argument : arguments) {
    auto* marked = callsSomething ? nullptr : std::get_if<MarkedArgument>(&argument);
    if (marked != nullptr) marked->arithmetic = MarkedExpression::compile(marked->statement->getLine());
  }
  return arguments;
}

CallArgument StatementCompiler::compileArgument(std::string_view piece) {
  const bool isMarked = hasMark(piece);
  if (piece.starts_with('[') && !isMarked && !CompileDepth::isTooDeep())
    return ExpressionArgument{makeRef<CMC_Expression>(scene_, withoutEnds(piece))};
  const bool mayBeCode = piece.starts_with('@') || isMarked || piece.find('^') != std::string_view::npos;
  if (mayBeCode && code_text::isInlineCode(piece) && scene_ != nullptr) {
    const Ref<CMC_Behaviour> made = CMC_InlineCode::makeBehaviour(scene_, "temp_", piece, origin());
    return CodeArgument{makeRef<CMC_InlineCode>(made.get(), "temp"), made.get(), isMarked};
  }
  if (!mayBeCode && piece.starts_with('&')) return compileReference(piece.substr(1));
  Statement statement = compileStatement(behaviour_, piece);
  if (isMarked) return MarkedArgument{std::move(statement), nullptr, nullptr};
  if (!statement->isPlainValue()) return StatementArgument{std::move(statement)};
  return NameArgument{std::unique_ptr<NameStatement>(static_cast<NameStatement*>(statement.release()))};
}

CallArgument StatementCompiler::compileReference(std::string_view name) {
  CMC_Object* variable = scene_ != nullptr ? scene_->getVariable(name) : nullptr;
  if (variable != nullptr) return ReferenceArgument{variable, name};
  return FixedArgument{CMC_Variable::resolve(name)};
}

}  // namespace

std::unique_ptr<CMC_Behaviour_Entry> compileStatement(CMC_Behaviour* behaviour, CXString line) {
  const diagnose::PlaceGuard place(behaviour->origin());
  const CompileDepth depth;
  StatementCompiler compiler(behaviour, std::move(line));
  return CompileDepth::isTooDeep() ? compiler.literal() : compiler.compile();
}

}  // namespace footlight
