#pragma once

// One statement of a behaviour, compiled. There is no lexer and no syntax tree: a statement is classified by
// its first character and by a few marks, and its arguments are compiled recursively as statements of their
// own. Nothing reports a syntax error: what cannot be understood compiles to something that does nothing at
// run time.
//
// An entry never changes after compiling but for its bindings: objects that it found are held weakly; one
// that has gone is looked up again by name at the next run, as a name that was missing from the start.

#include <memory>
#include <span>
#include <vector>

#include "script/marked_expression.h"
#include "script/mc_behaviour.h"
#include "script/mc_variable.h"
#include "script/name_watch.h"

namespace footlight {

class CMC_Expression;

// Where and for whom a statement runs.
struct RunContext {
  CMC_Behaviour* behaviour;     // the statement's owner
  CMC_ObjectsContainer* scene;  // its scope
  CMC_Object* caller;           // THIS, or null
  const TextList* arguments;    // $1 to $9, or null
};

// An argument that is code: a text with the name of the behaviour that was made from it.
class CMC_InlineCode : public CMC_String {
 public:
  explicit CMC_InlineCode(CMC_Behaviour* behaviour);
  CMC_Behaviour* inlineBehaviour() const override { return behaviour_.get(); }

 private:
  WeakRef<CMC_Behaviour> behaviour_;
};

class CMC_Behaviour_Entry {
 public:
  // Compiles one statement in the scope of the behaviour.
  CMC_Behaviour_Entry(CMC_Behaviour* behaviour, CXString line);
  ~CMC_Behaviour_Entry();
  CMC_Behaviour_Entry(const CMC_Behaviour_Entry&) = delete;
  CMC_Behaviour_Entry& operator=(const CMC_Behaviour_Entry&) = delete;

  Result run(const RunContext& context, bool isResultUsed = true) const {
    CMC_Object* bound = isBareCall_ ? object_.get() : nullptr;
    if (bound == nullptr) return runAny(context, isResultUsed);
    if (diagnose::isOn()) diagnose::place = origin_;
    return CMC_Runner::call(*row_, *bound, context.scene, ArgumentList({}, isResultUsed));
  }
  // The object that the statement stands for, where no code need run and no value be made for that; else
  // null. Good until a script runs.
  CMC_Object* peek(const RunContext& context) const;
  // Whether `peek` may give something.
  bool isPlainValue() const { return kind_ == Kind::value && !hasMarks_; }
  // False for a value that stands where a call should: nothing is done with it.
  bool mayDoSomething() const {
    return (kind_ != Kind::value && kind_ != Kind::expression) || hasMarks_ || line_.IsEmpty();
  }

  const CXString& getMethod() const { return method_; }
  const CXString& getLine() const { return line_; }
  CMC_Object* getObject() const { return object_.get(); }
  bool isReference() const { return kind_ == Kind::indirectCall; }
  // The names that compiling the statement asked for, those of its inline code among them.
  void tellNames(NameUses& uses) const;
  // Whether the inline behaviours of this statement go with it.
  void releaseTempBeh(bool owns) const { ownsTempBehaviours_ = owns; }

  // Cuts code into statements. The last one needs its semicolon, or it is only
  // `rest`; blanks vanish everywhere.
  static std::vector<CXString> cutStatements(const CXString& code, CXString* rest = nullptr);
  // Cuts arguments at commas outside of round brackets; empty pieces take no place.
  static std::vector<std::string_view> cutArguments(std::string_view text);
  // The text with each `$n` that has an argument replaced by it.
  static CXString fillParams(const CXString& text, const TextList* arguments);
  // A variable as text.
  static CXString getStringValue(CMC_Variable* variable) { return variable->asText(); }
  // The code without one pair of outer braces.
  static CXString stripBraces(CXString code);
  // Whether a piece of text is inline code: a brace at its start or behind an opening quote.
  static bool isInlineCode(std::string_view text);
  // The code inside the braces, and inside the quotes around them.
  static CXString inlineCodeOf(CXString text);
  // A name that no object of the scope has: the prefix and a number that is never used again.
  static CXString uniqueName(const CMC_ObjectsContainer* scene, const char* prefix);
  // Those numbers start anew: only while no game is there.
  static void restartNames() { nameNumber_ = 0; }

 private:
  enum class Kind { value, expression, builtIn, indirectCall, callerCall, objectCall, dynamicCall };

  // What a text with marks came to when it was filled last.
  struct FilledText {
    CXString text;
    std::uint64_t generation;  // of names when the statement was compiled
    std::uint64_t scope;
    std::unique_ptr<CMC_Behaviour_Entry> entry;
  };

  // One argument: a value that stays, or a statement to run at each call.
  struct Slot {
    Ref<CMC_Object> fixed;
    std::unique_ptr<CMC_Behaviour_Entry> entry;
    const WeakRef<CMC_Object>* bound = nullptr;  // of the entry, where that is a mere name
    WeakRef<CMC_Object> referred;                // a variable that is passed itself
    CXString referredName;
    bool hasMarks = false;                     // its text holds a `$`
    std::unique_ptr<MarkedExpression> marked;  // the text is arithmetic on the marks
    mutable std::shared_ptr<const FilledText> filled;
  };
  // Behaviours made from filled text for one call.
  using Throwaways = std::vector<Ref<CMC_Behaviour>>;

  void compile(CMC_Behaviour* behaviour);
  void compileIndirect(CMC_Behaviour* behaviour, int open);
  void compileExpression(CMC_Behaviour* behaviour);
  void compileValue(CMC_ObjectsContainer* scene);
  void compileCall(CMC_Behaviour* behaviour, int caret, int open);
  void compileArguments(CMC_Behaviour* behaviour, int open);
  Slot compileArgument(CMC_Behaviour* behaviour, CXString piece);
  static Ref<CMC_Object> makeInlineArgument(CMC_Behaviour* behaviour, const CXString& piece);

  Result runValue(const RunContext& context) const;
  Result valueOfText(const RunContext& context) const;
  Ref<CMC_Object> argumentOf(const Slot& slot, const RunContext& context, Throwaways* throwaways) const;
  Ref<CMC_Object> markedArgument(const Slot& slot, const RunContext& context, Throwaways* throwaways) const;
  static Ref<CMC_Object> runFilled(const Slot& slot, const CXString& text, const RunContext& context,
                                   Throwaways* throwaways);
  static Ref<CMC_Object> runFilledCall(const Slot& slot, const CXString& text, const RunContext& context);
  static Ref<CMC_Object> makeFilledCode(const CXString& text, const RunContext& context,
                                        Throwaways* throwaways);
  Result runAny(const RunContext& context, bool isResultUsed) const;
  Result runCall(const RunContext& context, bool isResultUsed) const;
  Result dispatch(const RunContext& context, const ArgumentList& arguments) const;
  Result dispatchDynamic(const RunContext& context, const ArgumentList& arguments) const;
  static CMC_Object* findByName(const CMC_ObjectsContainer* scene, const CXString& name);
  CMC_Object* findRemembered(const CMC_ObjectsContainer* scene, const CXString& name) const;
  CMC_Object* findObject(const RunContext& context) const;
  CMC_Object* findIndirect(const RunContext& context) const;
  Result callBound(CMC_Object& object, const RunContext& context, const ArgumentList& arguments) const;
  Result callMethod(CMC_Object* object, const RunContext& context, const ArgumentList& arguments) const;
  void reportMissing(const CXString& name) const;
  void reportUncallable(const CMC_Object* object) const;

  static inline std::int64_t nameNumber_ = 0;  // the last one in a unique name

  CXString line_;
  Origin origin_;
  Kind kind_ = Kind::value;
  bool constParams_ = true;
  mutable bool ownsTempBehaviours_ = true;
  CXString objectName_;
  CXString method_;
  CXString params_;
  CXString valueText_;
  bool hasMarks_ = false;                 // the text of a value holds a `$`
  bool isBareCall_ = false;               // a known method of an object that was found, without arguments
  bool isField_ = false;                  // the name stands for a field of a structure
  WeakRef<CMC_Object> object_;            // found by name at compile time
  mutable RememberedName name_;           // the name of a value or of an object that was not found then
  mutable Owned<CMC_Variable> literal_;   // a value that names nothing
  mutable CMC_Runner* runner_ = nullptr;  // the runner that `row_` belongs to
  mutable const Method* row_ = nullptr;   // null for a word that is in no table
  Ref<CMC_Object> expression_;            // a value or source that is an expression of this statement
  std::vector<Slot> slots_;
};

// The statements of one text. Whoever runs or keeps them holds a Ref; the last one ends them and their inline
// behaviours.
class CodeLines : public CXObject {
 public:
  // Watched lines can tell whether compiling their text anew would come to the same.
  static Ref<const CodeLines> make(CMC_Behaviour* behaviour, CXString text, bool isWatched = false);

  const CXString& text() const { return text_; }
  const std::vector<std::unique_ptr<CMC_Behaviour_Entry>>& entries() const { return entries_; }
  void releaseTempBeh(bool owns) const;
  // True where compiling the text anew would come to the same; lines that are not watched cannot tell.
  bool isCurrent() const;
  void tellNames(NameUses& uses) const;

 private:
  CodeLines(CMC_Behaviour* behaviour, CXString text);

  CXString text_;
  std::vector<std::unique_ptr<CMC_Behaviour_Entry>> entries_;
  mutable std::uint64_t generation_;  // of names, when the lines were last known to be current
  std::unique_ptr<NameUses> uses_;
};

}  // namespace footlight
