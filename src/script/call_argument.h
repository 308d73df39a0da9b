#pragma once

// One argument of a call, as it was compiled: an alternative for each way of coming to a value.

#include <memory>
#include <variant>

#include "script/inline_code.h"
#include "script/marked_expression.h"
#include "script/mc_behaviour_entry.h"

namespace footlight {

// A value that stays: arithmetic, which is calculated where it is read, or a literal behind "&".
struct FixedArgument {
  Ref<CMC_Object> value;
};

// Code in braces.
struct CodeArgument {
  Ref<CMC_InlineCode> value;
  bool hasMarks;
};

// A variable behind "&": it is passed itself, so that a method can change it.
struct ReferenceArgument {
  WeakRef<CMC_Object> variable;
  CXString name;
};

// A statement that is run at each call.
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
};

using CallArgument =
    std::variant<FixedArgument, CodeArgument, ReferenceArgument, StatementArgument, MarkedArgument>;

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
    return std::visit([this](const auto& kind) { return valueOf(kind); }, argument);
  }

 private:
  Value valueOf(const FixedArgument& argument) { return argument.value; }
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
