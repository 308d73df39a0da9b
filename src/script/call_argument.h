#pragma once

// One argument of a call, as it was compiled: an alternative for each way of coming to a value.

#include <memory>
#include <variant>

#include "script/caches.h"
#include "script/inline_code.h"
#include "script/marked_expression.h"
#include "script/mc_behaviour_entry.h"
#include "script/mc_objects_container.h"
#include "script/value_statement.h"

namespace footlight {

// A literal behind "&".
struct FixedArgument {
  Ref<CMC_Object> value;
};

// Arithmetic. The expression itself is passed, and calculated where it is read.
struct ExpressionArgument {
  Ref<CMC_Expression> expression;
};

// A name or a literal.
struct NameArgument {
  std::unique_ptr<NameStatement> statement;
};

// Code in braces.
struct CodeArgument {
  Ref<CMC_InlineCode> value;
  WeakRef<CMC_Behaviour> behaviour;  // behind the value
  bool hasMarks;
};

// A variable behind "&": it is passed itself, so that a method can change it.
struct ReferenceArgument {
  WeakRef<CMC_Object> variable;
  CXString name;
};

// Any other statement, which is run at each call.
struct StatementArgument {
  std::unique_ptr<CMC_Behaviour_Entry> statement;
};

// A text with marks: what it is shows when they are filled.
struct MarkedArgument {
  // What a text came to when it was filled last.
  struct Filled {
    CXString text;
    std::uint64_t generation;  // of names when the statement was compiled
    std::uint64_t scope;
    std::unique_ptr<CMC_Behaviour_Entry> statement;
  };

  std::unique_ptr<CMC_Behaviour_Entry> statement;  // of the text as it stands
  std::unique_ptr<MarkedExpression> arithmetic;    // the text is arithmetic on the marks
  mutable std::shared_ptr<const Filled> filled;

  Number number(const RunContext& context) const {
    return arithmetic && caches::isOn() && !CMC_ObjectsContainer::areNumbersNames()
               ? arithmetic->calculate(context.arguments)
               : Number();
  }
};

using CallArgument = std::variant<NameArgument, ExpressionArgument, MarkedArgument, StatementArgument,
                                  CodeArgument, ReferenceArgument, FixedArgument>;

// The argument as a number, where it is one and nothing need run to know it; else none. Reading it so or in
// full comes to the same. Only for statements that were compiled with caches.
inline Number numberOf(const CallArgument& argument, const RunContext& context) {
  if (const auto* name = std::get_if<NameArgument>(&argument)) return name->statement->number(context);
  if (const auto* marked = std::get_if<MarkedArgument>(&argument)) return marked->number(context);
  const auto* arithmetic = std::get_if<ExpressionArgument>(&argument);
  return arithmetic != nullptr ? arithmetic->expression->number() : Number();
}
// Brings inline code up to date: it sees the arguments of the code around it, and binds its names anew.
inline void prepare(const CodeArgument& argument, const RunContext& context) {
  if (context.arguments != nullptr && argument.behaviour) argument.behaviour->setParams(*context.arguments);
}

// Brings arguments to their values for one call. Code that is made from filled text lives as long as this.
class ArgumentReader {
 public:
  // With `isConstant` the arguments need nothing of the run.
  ArgumentReader(const RunContext& context, bool isConstant) : context_(context), isConstant_(isConstant) {}
  ~ArgumentReader() {
    for (const Ref<CMC_Behaviour>& throwaway : throwaways_) CMC_InlineCode::end(*throwaway);
  }
  ArgumentReader(const ArgumentReader&) = delete;
  ArgumentReader& operator=(const ArgumentReader&) = delete;

  Value read(const CallArgument& argument) {
    if (const auto* name = std::get_if<NameArgument>(&argument)) return valueOf(*name);
    return std::visit([this](const auto& kind) { return valueOf(kind); }, argument);
  }

 private:
  Value valueOf(const FixedArgument& argument) { return argument.value; }
  Value valueOf(const ExpressionArgument& argument) { return argument.expression; }
  Value valueOf(const NameArgument& argument) {
    CMC_Object* present = argument.statement->peek(context_);
    return present != nullptr ? Value(present) : argument.statement->run(context_, true);
  }
  Value valueOf(const CodeArgument& argument);
  Value valueOf(const ReferenceArgument& argument);
  Value valueOf(const StatementArgument& argument);
  Value valueOf(const MarkedArgument& argument);
  Value valueOfFilled(const MarkedArgument& argument, const CXString& text);
  Value runFilled(const MarkedArgument& argument, const CXString& text);
  Value makeCode(const CXString& text);

  const RunContext& context_;
  bool isConstant_;
  std::vector<Ref<CMC_Behaviour>> throwaways_;
};

}  // namespace footlight
