#pragma once

// Statements that call a method, by the way in which they come to their object.

#include <array>
#include <optional>
#include <vector>

#include "script/call_argument.h"
#include "script/mc_behaviour_entry.h"
#include "script/mc_condition.h"
#include "script/mc_expression.h"
#include "script/name_watch.h"

namespace footlight {

// What all calls share: the method, the arguments, and the row that the method was found in last.
class CallStatement : public CMC_Behaviour_Entry {
 public:
  // What the compiler made of the text.
  struct Parts {
    CXString line;
    Origin origin;
    CXString method;
    std::vector<CallArgument> arguments;
    bool isConstant;  // no argument needs anything of the run
  };

  ~CallStatement() override;

  Result run(const RunContext& context, bool isResultUsed) const override;
  bool isCall() const override { return true; }
  void tellNames(NameUses& uses) const override;
  void releaseTempBeh(bool owns) const override { ownsTempBehaviours_ = owns; }

 protected:
  explicit CallStatement(Parts parts);

  // Finds the object and calls its method.
  virtual Result dispatch(const RunContext& context, const ArgumentList& arguments) const = 0;

  Result callMethod(CMC_Object& object, const RunContext& context, const ArgumentList& arguments) const;
  // The method that was looked up last; null for a word that is in no table.
  const Method* row() const { return row_; }
  CMC_Runner* runner() const { return runner_; }
  // Looks the method up in the table of a runner, which may be null.
  void lookUp(CMC_Runner* runner) const;
  const CXString& method() const { return method_; }
  const std::vector<CallArgument>& arguments() const { return arguments_; }
  void reportMissing(const CXString& name) const;
  void reportUncallable(const CXString& name, const char* why) const;

 private:
  CXString method_;
  std::vector<CallArgument> arguments_;
  bool isConstant_;
  mutable bool ownsTempBehaviours_ = true;
  mutable CMC_Runner* runner_ = nullptr;  // the one that `row_` belongs to
  mutable const Method* row_ = nullptr;
};

// @WORD(...): the object is the behaviour that the statement stands in.
class BuiltInCall : public CallStatement {
 public:
  explicit BuiltInCall(Parts parts);

 protected:
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const override;
};

// @IF(left, "_", right, {...}, {...}): whole numbers are compared where they stand. Everything else takes the
// way of all calls.
class ComparisonCall : public BuiltInCall {
 public:
  // Whether a call has that form; it is known where caches are on.
  static bool isFormOf(const Parts& parts);
  explicit ComparisonCall(Parts parts);

  Result run(const RunContext& context, bool isResultUsed) const override;

 private:
  static constexpr std::size_t kThen = 3;  // the place of the first branch

  // None where the sides are no whole numbers.
  std::optional<bool> holds(const RunContext& context) const;
  Comparison comparison(const RunContext& context) const;

  std::array<const CodeArgument*, 2> branches_{};
  mutable const CMC_Object* word_ = nullptr;  // the literal that `comparison_` was read from
  mutable Comparison comparison_ = Comparison::none;
};

// THIS^METHOD(...): the instance, in the code of a class; else who called.
class CallerCall : public CallStatement {
 public:
  explicit CallerCall(Parts parts) : CallStatement(std::move(parts)) {}

 protected:
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const override;
};

// NAME^METHOD(...) and STRUCT|FIELD^METHOD(...).
class ObjectCall : public CallStatement {
 public:
  // `bound` is what the name meant at compile time, or null.
  ObjectCall(Parts parts, CXString name, CMC_Object* bound);

  Result run(const RunContext& context, bool isResultUsed) const override;
  void tellNames(NameUses& uses) const override;

 protected:
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const override;
  // The object that the name means now, or null.
  CMC_Object* find(const RunContext& context) const {
    CMC_Object* bound = object_.get();
    return bound != nullptr ? bound : findUnbound(context);
  }
  const Method* rowFor(const CMC_Object& object) const;

 private:
  CMC_Object* findUnbound(const RunContext& context) const;
  Result callBound(CMC_Object& object, const RunContext& context, const ArgumentList& arguments) const;

  CXString name_;
  bool isField_;
  bool isBare_;  // a known method of an object that was found, without arguments
  WeakRef<CMC_Object> object_;
  mutable RememberedName remembered_;  // what the name means, where it named nothing then
};

// NAME^METHOD(argument): where the argument is a number, a method that has a function for that gets it
// without a list of arguments.
class NumberCall : public ObjectCall {
 public:
  using ObjectCall::ObjectCall;

  Result run(const RunContext& context, bool isResultUsed) const override;
};

// BEHAVIOUR^RUN(...): arguments that are whole numbers go to the behaviour as they are.
class ProcedureCall : public ObjectCall {
 public:
  using ObjectCall::ObjectCall;

  Result run(const RunContext& context, bool isResultUsed) const override;

 private:
  // False where one is something else.
  bool readNumbers(const RunContext& context, TextList& texts) const;
};

// NA$1ME^METHOD(...)
class DynamicCall : public CallStatement {
 public:
  DynamicCall(Parts parts, CXString name) : CallStatement(std::move(parts)), name_(std::move(name)) {}

 protected:
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const override;

 private:
  CXString name_;
};

// *NAME^METHOD(...) and *[...]^METHOD(...): the text of a value is the name of the object.
class IndirectCall : public CallStatement {
 public:
  // The source is the expression; without one, what the name means. `bound` is what it meant at compile time.
  IndirectCall(Parts parts, CXString name, CMC_Object* bound, Ref<CMC_Expression> expression);

  void tellNames(NameUses& uses) const override;

 protected:
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const override;

 private:
  Ref<CMC_Variable> source(const CMC_ObjectsContainer& scope) const;

  CXString name_;
  WeakRef<CMC_Object> object_;
  Ref<CMC_Expression> expression_;
};

}  // namespace footlight
