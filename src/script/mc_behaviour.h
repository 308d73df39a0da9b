#pragma once

// CMC_Behaviour is the script procedure: a named object with compiled code lines, an optional guard condition
// and a timer face. A run is a plain recursion on the main thread; it is never suspended.
//
// The compiled program is immutable and shared: a run holds the lines that it executes, so a rebuild in the
// middle installs a new program for the next run and leaves the running one alone. While a behaviour runs,
// it, its scope and its caller are pinned; a behaviour that ends itself still finishes its statements.

#include <memory>
#include <vector>

#include "foundation/timer_notificator.h"
#include "script/mc_object.h"
#include "script/mc_runner.h"

namespace footlight {

class CMC_BasicCondition;
class CMC_Behaviour_Entry;
class CMC_Variable;
class CodeLines;

class CMC_Behaviour : public CMC_Object, public CTimerNotificator {
  friend class BehaviourRounds;

 public:
  CMC_Behaviour(CMC_ObjectsContainer* container, const CMElement* element);
  // Inline code.
  CMC_Behaviour(CMC_ObjectsContainer* container, CXString name, const CXString& code, Origin origin = {});
  ~CMC_Behaviour() override;
  static bool isTypeOf(int type) { return type == type::kBehaviour; }

  // Compiles the code.
  void init() override;
  // Finished last, so that the ONDONE handlers of all others still have their code.
  bool doneFirst() const override { return false; }
  // Drops the lines; unless told to keep them, the inline behaviours that the lines made go too.
  bool done(bool keepTempBehaviours) override;
  // The code, then the name of the condition.
  void serialize(CXArchive& archive) override;
  std::unique_ptr<CMC_Object> copy() const override;

  // Runs the lines. The answer tells that a break came out of them and is to go on through the callers.
  // `caller` is what THIS means; `arguments` are the texts behind $1 to $9; both may be null.
  virtual bool run(CMC_Object* caller, const TextList* arguments, bool checkCondition);
  // The object lives until the present run ends.
  virtual void addTempObject(CMC_Object* object);
  // Runs every `interval` milliseconds, `count` times or without limit for 0 or less. The first text of the
  // arguments becomes the number of the tick. At the end `next` runs, if it is still there. A second call
  // replaces the first.
  virtual void runOnTimer(int interval, int count, TextList arguments, CMC_Behaviour* next);
  // Whether the scope's window takes no more timers.
  static bool areTimersFull(const CMC_ObjectsContainer& scope);
  // Ends the timer and takes the behaviour out of its scope.
  virtual void _break();

  void onTimer(TimerId id) override;

  const CXString& getCode() const { return code_; }
  const CXString& getCodition() const { return conditionName_; }
  // Null before `init`, after `done`, and for empty code.
  const CodeLines* getLines() const { return lines_.get(); }
  bool isEnabled() const { return enabled_; }
  // Statements made it of a piece of their code, and make it anew when they are compiled.
  bool isMadeByCode() const { return madeByCode_; }
  void setMadeByCode() { madeByCode_ = true; }
  // True while nothing but runs happened to the behaviour since it was made: what one made anew
  // would be like.
  bool isAsMade() const;
  void enable(bool on) { enabled_ = on; }
  int getBreakpoint() const { return breakpoint_; }
  void setBreakpoint(int line) { breakpoint_ = line; }
  void resetBreakpoint() { breakpoint_ = -1; }

  // Code that was bound to a signal where it stands is ready before the scope's objects begin.
  bool isBoundInline() const { return getName().startsWith(kInlinePrefix); }
  static constexpr const char* kInlinePrefix = "beh_";
  // Finds the guard by its name; called when all objects of the container exist.
  void resolveCondition();
  // Rebuilds the lines with each `$n` that has an argument replaced; the stored code stays as it is.
  void setParams(const TextList& arguments);

  // A slower reader for text that is not compiled: conditions work with it.
  static Result resolveParameter(CMC_ObjectsContainer* scope, CMC_Object* caller, const CXString& text,
                                 CMC_Behaviour* behaviour);
  static Result runLine(CMC_ObjectsContainer* scope, CMC_Object* caller, const CXString& text,
                        CMC_Behaviour* behaviour);

  // Objects that must outlive the present frame.
  static void initTrash();
  static void doneTrash();
  static void addToTrash(CXObject* object);
  static void flushTrash();

 protected:
  void unlink() override;

 private:
  CMC_Behaviour(const CMC_Behaviour& other);

  bool mayRun() const { return enabled_ && lines_ && !isDisposed(); }
  bool doesConditionHold() const;
  void compile(const CXString& text, bool isWatched = false);
  void removeTemporaries(CMC_ObjectsContainer* scope);
  void endTimer();
  void leaveScope();

  CXString code_;
  CXString conditionName_;
  WeakRef<CMC_BasicCondition> condition_;
  Ref<const CodeLines> lines_;
  bool hasMarks_ = true;  // in the code; known from `init` on
  int timerCount_ = 0;
  int timerLimit_ = 0;
  TimerId timerId_ = 0;
  std::shared_ptr<TextList> timerArguments_;
  WeakRef<CMC_Behaviour> timerNext_;
  std::vector<WeakRef<CMC_Object>> tempObjects_;
  bool enabled_ = true;
  bool ownsTimerNext_ = false;
  bool madeByCode_ = false;
  int breakpoint_ = -1;

 public:
  // The end behaviour was made for the timer alone and goes with it.
  void ownTimerNext() { ownsTimerNext_ = true; }
};

}  // namespace footlight
