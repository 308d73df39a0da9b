#pragma once

// One statement of a behaviour, compiled. Its kinds are classes of their own: values (value_statement.h) and
// calls (call_statement.h); `StatementCompiler` chooses between them by the text. Nothing reports a syntax
// error: what cannot be understood compiles to something that does nothing at run time.
//
// A statement never changes after compiling but for its bindings and what it remembers: objects that it found
// are held weakly; one that has gone is looked up again by name at the next run, as a name that was missing
// from the start.

#include "script/mc_runner.h"

namespace footlight {

class CMC_Behaviour;
class NameUses;

// Where and for whom a statement runs.
struct RunContext {
  CMC_Behaviour* behaviour;     // the statement's owner
  CMC_ObjectsContainer* scene;  // its scope
  CMC_Object* caller;           // THIS, or null
  const TextList* arguments;    // $1 to $9, or null
};

class CMC_Behaviour_Entry {
 public:
  virtual ~CMC_Behaviour_Entry() = default;
  CMC_Behaviour_Entry(const CMC_Behaviour_Entry&) = delete;
  CMC_Behaviour_Entry& operator=(const CMC_Behaviour_Entry&) = delete;

  virtual Result run(const RunContext& context, bool isResultUsed = true) const = 0;
  // The object that the statement stands for, where no code need run and no value be made for that; else
  // null. Good until a script runs.
  virtual CMC_Object* peek(const RunContext& /*context*/) const { return nullptr; }
  // Whether the statement is a name or a literal, so that `peek` may give something.
  virtual bool isPlainValue() const { return false; }
  // Whether running it may run other code.
  virtual bool isCall() const { return false; }
  // False for a value that stands where a call should: nothing is done with it.
  virtual bool mayDoSomething() const { return true; }
  // The names that compiling the statement asked for, those of its inline code among them.
  virtual void tellNames(NameUses& /*uses*/) const {}
  // Whether the inline behaviours of this statement go with it.
  virtual void releaseTempBeh(bool /*owns*/) const {}

  // Without its semicolon.
  const CXString& getLine() const { return line_; }

 protected:
  CMC_Behaviour_Entry(CXString line, Origin origin) : line_(std::move(line)), origin_(origin) {}
  Origin origin() const { return origin_; }

 private:
  CXString line_;
  Origin origin_;
};

}  // namespace footlight
