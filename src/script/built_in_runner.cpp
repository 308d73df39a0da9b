// The statements behind "@": control flow, local variables, timers. Their object is the behaviour that
// they stand in.

#include <algorithm>
#include <optional>

#include "foundation/random.h"
#include "gfx/window.h"
#include "script/behaviour_rounds.h"
#include "script/caches.h"
#include "script/mc_behaviour.h"
#include "script/mc_condition.h"
#include "script/mc_expression.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// Code passed to a statement: a behaviour of the scope by name, or one made from the text for this use.
struct Code {
  Ref<CMC_Behaviour> behaviour;
  Owned<CMC_Behaviour> throwaway;
};

Code codeOf(const Call& call, int index) {
  if (CMC_Behaviour* inlineCode = inlineBehaviourOf(call.object(index)))
    return {Ref<CMC_Behaviour>(inlineCode), nullptr};
  const CXString text = call.text(index);
  if (text.IsEmpty() || call.scope() == nullptr) return {};
  if (auto* named = call.find<CMC_Behaviour>(text)) return {Ref<CMC_Behaviour>(named), nullptr};
  Owned<CMC_Behaviour> made(new CMC_Behaviour(call.scope(), "temp", text));
  made->init();
  return {Ref<CMC_Behaviour>(made.get()), std::move(made)};
}

// Control flow

bool isTestTrue(const Call& call, const CXString& test) {
  const bool isAnd = test.FindSubString("&&") >= 0;
  const char* mark = isAnd ? "&&" : "||";
  int start = 0;
  for (;;) {
    const int end = test.FindSubString(mark, start);
    const bool piece = CMC_Condition::valid(call.scope(), test.Mid(start, end < 0 ? test.Length() : end));
    if (piece != isAnd) return piece;
    if (end < 0) return piece;
    start = end + 2;
  }
}

// A side of a test as it was when it was read: what the other side runs does not change it any more.
struct Side {
  Side(const Call& call, int index) {
    if (const auto* variable = object_cast<CMC_Integer>(call.object(index))) {
      whole = variable->getValue();
      return;
    }
    const Ref<CMC_Variable> value = call.variable(index);
    if (const auto* integer = object_cast<CMC_Integer>(value.get())) {
      whole = integer->getValue();
    } else {
      other = value ? value->asText() : call.text(index);
    }
  }
  CXString text() const { return whole ? CXString::toString(*whole) : other; }

  std::optional<int> whole;
  CXString other;
};

// Whole numbers come out of their texts as they went in, so they are compared as they are. The usual case,
// where nothing need run to read the three, comes first.
bool isComparisonTrue(const Call& call) {
  const auto* first = object_cast<CMC_Integer>(call.object(0));
  const auto* second = object_cast<CMC_Integer>(call.object(2));
  const auto* between = object_cast<CMC_String>(call.object(1));
  if (first != nullptr && second != nullptr && between != nullptr && caches::isOn()) {
    const Comparison comparison = CMC_Condition::comparisonOf(between->getValue());
    if (comparison != Comparison::instanceOf)
      return CMC_Condition::valid(first->getValue(), second->getValue(), comparison);
  }
  const Side left(call, 0);
  CXString storage;
  const Comparison comparison = CMC_Condition::comparisonOf(call.textView(1, &storage));
  const Side right(call, 2);
  if (left.whole && right.whole && comparison != Comparison::instanceOf && caches::isOn()) {
    return CMC_Condition::valid(*left.whole, *right.whole, comparison);
  }
  return comparison != Comparison::none &&
         CMC_Condition::valid(call.scope(), left.text(), right.text(), comparison);
}

Result ifStatement(CMC_Behaviour& /*behaviour*/, Call& call) {
  const bool isLongForm = call.count() > 3;
  const bool holds = isLongForm ? isComparisonTrue(call) : isTestTrue(call, call.text(0));
  const int then = isLongForm ? 3 : 1;
  const Code code = codeOf(call, holds ? then : then + 1);
  if (!code.behaviour) return {};
  return code.behaviour->run(code.behaviour.get(), nullptr, false) ? Result::breakRun() : Result();
}

Result whileStatement(CMC_Behaviour& /*behaviour*/, Call& call) {
  const Code code = codeOf(call, 3);
  const CXString left = call.text(0);
  const CXString word = call.text(1);
  const CXString right = call.text(2);
  std::optional<BehaviourRounds> rounds;
  if (code.behaviour) rounds.emplace(*code.behaviour, nullptr);
  while (watchdog::mayContinue() && CMC_Condition::valid(call.scope(), left, word.view(), right)) {
    if (rounds) rounds->run(nullptr, false);
  }
  return {};
}

// The counter of a loop, in the scope while the loop lasts; the one of an outer loop comes back afterwards.
class LoopCounter {
 public:
  explicit LoopCounter(CMC_ObjectsContainer* scope)
      : scope_(scope),
        outer_(scope->getOwnObject(kName)),
        counter_(new CMC_Integer(kName, CMC_Variable::kNoPool)) {
    if (outer_) scope_->removeObject(outer_.get());
    counter_->setScene(scope);
    counter_->setAsTemporary();  // never bound at compile time: the innermost counter is the one that counts
    scope_->addObject(counter_.get());
  }
  ~LoopCounter() {
    if (scope_->getOwnObject(kName) == counter_.get()) scope_->removeObject(counter_.get());
    CMC_Object::destroy(counter_.get());
    if (!outer_ || outer_->isDisposed()) return;
    if (scope_->getOwnObject(kName) == nullptr) {
      scope_->addObject(outer_.get());
    } else {
      CMC_Object::destroy(outer_.get());
    }
  }
  LoopCounter(const LoopCounter&) = delete;
  LoopCounter& operator=(const LoopCounter&) = delete;

  void set(int value) { counter_->setValue(value); }

 private:
  static constexpr const char* kName = "_I_";

  Ref<CMC_ObjectsContainer> scope_;
  Ref<CMC_Object> outer_;
  Ref<CMC_Integer> counter_;
};

Result loop(CMC_Behaviour& /*behaviour*/, Call& call) {
  if (call.scope() == nullptr) return {};
  const std::int64_t start = call.integer(1);
  const std::int64_t end = start + call.integer(2);
  const std::int64_t step = call.integer(3);
  const Code code = codeOf(call, 0);
  const bool isUpward = start < end;
  LoopCounter counter(call.scope());
  std::optional<BehaviourRounds> rounds;
  if (code.behaviour) rounds.emplace(*code.behaviour, nullptr);
  for (std::int64_t i = start; isUpward ? i < end : i > end; i += step) {
    if (!watchdog::mayContinue()) return {};
    counter.set(static_cast<int>(i));
    if (rounds && rounds->run(nullptr, true)) return Result::breakRun();
  }
  return {};
}

Result breakStatement(CMC_Behaviour& /*behaviour*/, Call& /*call*/) { return Result::breakRun(); }

Result oneBreak(CMC_Behaviour& /*behaviour*/, Call& /*call*/) { return Result::oneBreak(); }

Result continueStatement(CMC_Behaviour& /*behaviour*/, Call& /*call*/) { return Result::continueRun(); }

// Values

// An object that is none of the four values leaves nothing behind.
Result returnStatement(CMC_Behaviour& /*behaviour*/, Call& call) {
  constexpr const char* kName = "__RETURN__";
  // The value is taken before the earlier result goes: they may be one.
  const Ref<CMC_Variable> copy = Factory::copyVariable(call.variable(0).get());
  CMC_ObjectsContainer* scope = call.scope();
  if (scope == nullptr) return {};
  if (const Ref<CMC_Object> earlier{scope->getOwnObject(kName)}) {
    scope->removeObject(earlier.get());
    CMC_Object::destroy(earlier.get());
  }
  if (!copy) return {};
  std::unique_ptr<CMC_Variable> result = Factory::makeNamed(copy->getType(), kName);
  result->set(copy.get());
  result->setScene(scope);
  scope->addObject(result.release());
  return Result(copy);
}

Result conv(CMC_Behaviour& /*behaviour*/, Call& call) {
  const int wanted = CMC_Object::getTypeId(call.text(1));
  const Ref<CMC_Variable> value = asVariable(call.object(0));
  const Ref<CMC_Variable> converted = Factory::make(wanted);
  if (!converted) diagnose::reportCall(diagnose::Group::arguments, "no value has the type of that word");
  if (converted && value) converted->set(value.get());
  return Result(converted);
}

Result declare(CMC_Behaviour& behaviour, const Call& call, int type) {
  CMC_ObjectsContainer* scope = call.scope();
  const CXString name = call.text(0);
  if (scope == nullptr) return {};
  if (scope->getObject(name) != nullptr) {
    if (diagnose::isOn())
      diagnose::reportCall(diagnose::Group::object, name.str() + " is there already: nothing is declared");
    return {};
  }
  const Ref<CMC_Variable> value = asVariable(call.object(1));
  Ref<CMC_Variable> made(Factory::makeNamed(type, name).release());
  if (value) made->set(value.get());
  made->setScene(scope);
  made->setAsTemporary();
  if (!scope->addObject(made.get())) return {};
  behaviour.addTempObject(made.get());
  return Result(Factory::copyVariable(made.get()));
}

Result declareBool(CMC_Behaviour& behaviour, Call& call) { return declare(behaviour, call, type::kBool); }

Result declareDouble(CMC_Behaviour& behaviour, Call& call) { return declare(behaviour, call, type::kDouble); }

Result declareInt(CMC_Behaviour& behaviour, Call& call) { return declare(behaviour, call, type::kInteger); }

Result declareString(CMC_Behaviour& behaviour, Call& call) { return declare(behaviour, call, type::kString); }

Result value(CMC_Behaviour& /*behaviour*/, Call& call) { return Result(Ref<CMC_Object>(call.namedAny(0))); }

// Objects, timers, names

CMC_Behaviour* addTimerBehaviour(CMC_ObjectsContainer* scope, CXString code) {
  code.Replace('&', '$');
  CXString name;
  do {
    name = CXString("timer_") + std::to_string(CXRandom::next());
  } while (scope->getObject(name) != nullptr);
  auto* behaviour = new CMC_Behaviour(scope, name, code);
  const Ref<CMC_Behaviour> keep(behaviour);
  behaviour->init();
  return scope->addObject(behaviour) ? behaviour : nullptr;
}

CXString bodyText(const Call& call, int index) {
  if (const CMC_Behaviour* behaviour = inlineBehaviourOf(call.object(index))) return behaviour->getCode();
  const CXString text = call.text(index);
  const auto* named = call.find<CMC_Behaviour>(text);
  return named != nullptr ? named->getCode() : text;
}

Result runOnTimer(CMC_Behaviour& /*behaviour*/, Call& call) {
  CMC_ObjectsContainer* scope = call.scope();
  if (scope == nullptr || CMC_Behaviour::areTimersFull(*scope)) return {};
  const Ref<CMC_Behaviour> made(addTimerBehaviour(scope, bodyText(call, 2)));
  if (!made) return {};
  TextList arguments{"0"};
  const TextList further = call.textsFrom(4);
  arguments.insert(arguments.end(), further.begin(), further.end());

  const CXString endCode = call.text(3);
  CMC_Behaviour* next = endCode.IsString() ? call.find<CMC_Behaviour>(endCode) : nullptr;
  const bool isInline = inlineBehaviourOf(call.object(3)) != nullptr;
  if (endCode.IsString() && (next == nullptr || isInline)) {
    next = addTimerBehaviour(scope, bodyText(call, 3));
    made->ownTimerNext();
  }
  made->runOnTimer(call.integer(0), call.integer(1), std::move(arguments), next);
  return Result(Factory::makeString(made->getName()));
}

Result create(CMC_Behaviour& /*behaviour*/, Call& call) {
  if (call.scope() == nullptr) return {};
  const CXString name = call.text(1);
  if (CMC_Object* made = makeBareObject(call.scope(), call.text(0), name)) call.scope()->addObject(made);
  return {};
}

Result getApplicationName(CMC_Behaviour& /*behaviour*/, Call& call) {
  const CMC_ObjectsContainer* scope = call.scope();
  while (scope != nullptr && scope->getType() != type::kApplication) scope = scope->getParent();
  return Result(Factory::makeString(scope != nullptr ? scope->getName() : CXString()));
}

Result getCurrentScene(CMC_Behaviour& /*behaviour*/, Call& call) {
  return Result(Factory::makeString(call.scope() != nullptr ? call.scope()->getName() : CXString()));
}

Result msgBox(CMC_Behaviour& /*behaviour*/, Call& /*call*/) { return {}; }

constexpr Method kMethods[] = {
    {1, "IF", "left:value, [sign:text], [right:value], [then:code], [else:code]", method<ifStatement>,
     "Compares left and right by a sign, _ !_ < <_ > >_ or ?, and runs then or else. With three arguments or "
     "fewer tests a text such as \"A'1&&B>2\" and runs the second or the third."},
    {2, "WHILE", "left:text, sign:text, right:text, body:code", method<whileStatement>,
     "Runs the body as long as left and right compare by the sign as in IF; BREAK in the body does not end "
     "the loop."},
    {3, "RETURN", "value:value -> value", method<returnStatement>,
     "Leaves the value for whoever called this code; the code goes on."},
    {4, "BREAK", "", method<breakStatement>, "Ends this code and all code that called it, up to a LOOP."},
    {5, "CONV", "value:value, type:type -> value", method<conv>,
     "The value as an INTEGER, DOUBLE, BOOL or STRING."},
    {6, "MSGBOX", "[texts:text...]", method<msgBox>, "Does nothing."},
    {7, "BOOL", "name:text, value:value -> bool", method<declareBool>,
     "Declares a BOOL that lives until this code ends, and gives its value; does nothing if the name is "
     "taken."},
    {8, "DOUBLE", "name:text, value:value -> real", method<declareDouble>,
     "Declares a DOUBLE that lives until this code ends, and gives its value; does nothing if the name is "
     "taken."},
    {9, "INT", "name:text, value:value -> int", method<declareInt>,
     "Declares an INTEGER that lives until this code ends, and gives its value; does nothing if the name is "
     "taken."},
    {10, "STRING", "name:text, value:value -> text", method<declareString>,
     "Declares a STRING that lives until this code ends, and gives its value; does nothing if the name is "
     "taken."},
    {11, "LOOP", "body:code, start:int, count:int, step:int", method<loop>,
     "Runs the body with _I_ from the start on in steps, as long as it is below start + count, or above it "
     "for a negative count; BREAK in the body ends the loop."},
    {12, "VALUE", "object:name -> value", method<value>, "The object that bears that name."},
    {13, "RUNONTIMER", "interval:int, count:int, body:code, [end:code], [arguments:text...] -> text",
     method<runOnTimer>,
     "Runs the body every interval milliseconds, count times or with 0 for ever, then the end; in the body "
     "&1 is the number of the tick, &2 and so on are the arguments. Gives the name of the timer's "
     "BEHAVIOUR."},
    {14, "CREATE", "type:type, name:text", method<create>,
     "Makes an ANIMO, IMAGE, SOUND or BUTTON of that name without a definition."},
    {15, "GETAPPLICATIONNAME", "-> text", method<getApplicationName>, "The name of the game's APPLICATION."},
    {16, "GETCURRENTSCENE", "-> text", method<getCurrentScene>,
     "The name of the scope in which the code runs."},
    {17, "ONEBREAK", "", method<oneBreak>, "Ends this code alone; the code that called it goes on."},
    {18, "CONTINUE", "", method<continueStatement>, "Ends this code alone, and so one turn of a loop."},
};

}  // namespace

std::span<const Method> CMC_Runner::statements() { return kMethods; }

}  // namespace footlight
