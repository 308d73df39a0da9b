#pragma once

// Method dispatch. Each type has one stateless runner that knows the type's methods by name and number; the
// object is passed in at each call. A runner is one constant table: number, name, least and most arguments,
// function. Running a method is a bounds check and an indexed call.
//
// A method body is a small function that gets its object already cast and a Call with the scope and the
// argument getters; it knows nothing of its number. Too few arguments are a silent null. While a method runs,
// its object and its arguments are pinned.

#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/xobject.h"
#include "script/mc_object.h"
#include "script/mc_objects_container.h"
#include "script/value.h"

namespace footlight {

class CMC_Variable;

// What a call came to: nothing, a value, or the wish to stop the run that it stands in.
class Result : public Value {
 public:
  using Value::Value;
  Result(Value value) : Value(std::move(value)) {}
  static Result breakRun() { return Result(Stop::breakRun); }
  static Result oneBreak() { return Result(Stop::oneBreak); }
  static Result continueRun() { return Result(Stop::continueRun); }

  bool stops() const { return stop_ != Stop::none; }
  bool isBreak() const { return stop_ == Stop::breakRun; }

 private:
  enum class Stop : std::uint8_t { none, breakRun, oneBreak, continueRun };
  explicit Result(Stop stop) : stop_(stop) {}

  Stop stop_ = Stop::none;
};

// The arguments of a call, and whether anybody looks at what it gives.
class ArgumentList : public std::span<const Value> {
 public:
  using span::span;
  ArgumentList(std::span<const Value> arguments, bool isResultUsed = true)
      : span(arguments), isResultUsed_(isResultUsed) {}
  bool isResultUsed() const { return isResultUsed_; }

 private:
  bool isResultUsed_ = true;
};

// One call as a method sees it. Every getter gives 0, "", false or null past the end of the list. An
// expression is calculated at each reading. An object that is no variable reads as its name, 0 and false.
class Call {
 public:
  Call(CMC_ObjectsContainer* scope, const ArgumentList& arguments) : scope_(scope), arguments_(arguments) {}

  int count() const { return static_cast<int>(arguments_.size()); }
  bool has(int index) const { return index < count(); }
  CMC_ObjectsContainer* scope() const { return scope_; }
  const ArgumentList& arguments() const { return arguments_; }
  // False where the result is thrown away, so that no copy of it needs to be made.
  bool isResultUsed() const { return arguments_.isResultUsed(); }

  int integer(int index) const;
  double real(int index) const;
  bool boolean(int index) const;
  CXString text(int index) const;
  // The same without a copy where there is a text already, else by way of `storage`. Good until
  // a script runs.
  std::string_view textView(int index, CXString* storage) const;
  // The argument as a value: a variable itself, the result of an expression, else null.
  Ref<CMC_Variable> variable(int index) const;
  // The argument as a number; none for every other value. An expression is no number either.
  Number number(int index) const;
  // The argument as it was passed.
  CMC_Object* object(int index) const {
    return index >= 0 && has(index) ? arguments_[static_cast<std::size_t>(index)].object() : nullptr;
  }
  // All arguments from `first` on as text.
  TextList textsFrom(int first) const;

  // The object of that name in the scope, if it is of class T.
  template <class T>
  T* find(std::string_view name) const {
    return scope_ != nullptr ? object_cast<T>(scope_->getObject(name)) : nullptr;
  }
  CMC_Object* findAny(std::string_view name) const;
  // The object of class T that the text of an argument names.
  template <class T>
  T* named(int index) const {
    const CXString name = text(index);
    T* found = find<T>(name);
    if (found == nullptr && diagnose::isOn()) reportMissing(name, &T::isTypeOf);
    return found;
  }
  // The same for an object of whatever class, and for a name that is at hand.
  CMC_Object* namedAny(int index) const { return findReported(text(index)); }
  CMC_Object* findReported(const CXString& name) const;

 private:
  void reportMissing(const CXString& name, bool (*isTypeOf)(int)) const;

  CMC_ObjectsContainer* scope_;
  const ArgumentList& arguments_;
};

// Turns `Result f(T&, Call&)` into a row's function; an object of another class is left alone.
template <auto F>
struct BoundMethod;
template <class T, Result (*F)(T&, Call&)>
struct BoundMethod<F> {
  static Result run(CMC_Object& object, Call& call) {
    if constexpr (std::is_same_v<T, CMC_Object>) {
      return F(object, call);
    } else {
      T* typed = object_cast<T>(&object);
      if (typed == nullptr)
        diagnose::reportCall(diagnose::Group::method, "does nothing on an object of this type");
      return typed != nullptr ? F(*typed, call) : Result();
    }
  }
};
template <auto F>
inline constexpr MethodFunction method = &BoundMethod<F>::run;

// The same for `bool f(T&, Number, Value*)`.
template <auto F>
struct BoundNumberMethod;
template <class T, bool (*F)(T&, Number, Value*)>
struct BoundNumberMethod<F> {
  static bool run(CMC_Object& object, Number argument, Value* result) {
    T* typed = object_cast<T>(&object);
    return typed != nullptr && F(*typed, argument, result);
  }
};
template <auto F>
inline constexpr NumberFunction numberMethod = &BoundNumberMethod<F>::run;

class CMC_Runner : public CXObject {
 public:
  // Base methods have these numbers on every type.
  static constexpr int kFirstBaseMethod = 96;
  static constexpr int kLastBaseMethod = 109;

  explicit CMC_Runner(std::span<const Method> own) : own_(own) {}

  // Fills the lookup from the base table and the runner's own.
  virtual void prepareMthHashSet();
  // By number; one that the runner does not know is a silent null.
  virtual Result run(int methodId, CMC_Object* object, CMC_ObjectsContainer* scope,
                     const ArgumentList& arguments);
  virtual Result run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
                     const ArgumentList& arguments);
  // The number of a method, -1 for a name that is not in the table. Names are compared exactly.
  virtual int resolveMethod(std::string_view name) const;
  // The row of a method, null for a name that is not in the table.
  const Method* findMethod(std::string_view name) const;
  // Runs the row of a table on an object.
  static Result call(const Method& method, CMC_Object& object, CMC_ObjectsContainer* scope,
                     const ArgumentList& arguments) {
    if (arguments.size() < method.least) return refuse(method, object);
    const Ref<CMC_Object> keep(&object);
    Call call(scope, arguments);
    if (diagnose::isOn()) return callWatched(method, object, call);
    return method.function(object, call);
  }
  // True when a name outside the table may mean something all the same.
  virtual bool takesOtherWords() const { return false; }

  std::span<const Method> ownMethods() const { return own_; }
  static std::span<const Method> baseMethods();
  // The statements behind "@".
  static std::span<const Method> statements();

 private:
  void enter(std::span<const Method> methods);
  static Result refuse(const Method& method, const CMC_Object& object);
  static Result callWatched(const Method& method, CMC_Object& object, Call& call);

  std::span<const Method> own_;
  std::vector<const Method*> byNumber_;
  std::unordered_map<std::string_view, int> numbers_;
};

// Holds one runner a type from the engine's start to its end. Each `initialize` has its `done`; the runners,
// which have no state, go with the last one.
class CMC_RunnerFactory {
 public:
  static void initialize();
  static void done();
  // Null for a number without a runner.
  static CMC_Runner* getRunner(int type);
};

}  // namespace footlight
