#include "script/mc_behaviour_entry.h"

#include <algorithm>
#include <array>

#include "foundation/limits.h"
#include "script/argument_buffer.h"
#include "script/caches.h"
#include "script/mc_expression.h"
#include "script/mc_structure.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

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

bool hasMark(std::string_view text) { return text.find('$') != std::string_view::npos; }

CXString withoutEnds(const CXString& text) { return text.Mid(1, text.Length() - 1); }

}  // namespace

// Cutting

std::vector<CXString> CMC_Behaviour_Entry::cutStatements(const CXString& code, CXString* rest) {
  std::vector<CXString> statements;
  CXString statement;
  int depth = 0;
  for (const char c : code.view()) {
    if (c == ' ') continue;
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c == ';' && depth == 0) {
      statements.push_back(std::move(statement));
      statement = CXString();
    } else {
      statement += c;
    }
  }
  if (rest != nullptr) *rest = std::move(statement);
  return statements;
}

std::vector<std::string_view> CMC_Behaviour_Entry::cutArguments(std::string_view text) {
  std::vector<std::string_view> pieces;
  int depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const bool isEnd = i == text.size();
    if (!isEnd && text[i] == '(') ++depth;
    if (!isEnd && text[i] == ')') --depth;
    if (!isEnd && (text[i] != ',' || depth != 0)) continue;
    if (i > start) pieces.push_back(text.substr(start, i - start));
    start = i + 1;
  }
  return pieces;
}

CXString CMC_Behaviour_Entry::fillParams(const CXString& text, const TextList* arguments) {
  CXString filled;
  int start = 0;
  for (int mark = text.Find('$'); mark >= 0; mark = text.Find('$', mark + 1)) {
    const int index = text.GetAt(mark + 1) - '1';
    const bool isFilled = mark + 1 < text.Length() && index >= 0 && index < 9 && arguments != nullptr &&
                          index < static_cast<int>(arguments->size());
    if (!isFilled) continue;
    const CXString& argument = (*arguments)[static_cast<std::size_t>(index)];
    filled += text.slice(start, mark);
    if (filled.Length() + argument.Length() > limits::kFilledTextBytes) {
      limitHit("filled text too long");
      return text;
    }
    filled += argument;
    start = mark + 2;
    ++mark;
  }
  filled += text.slice(start, text.Length());
  return filled;
}

CXString CMC_Behaviour_Entry::stripBraces(CXString code) {
  code.AllTrim();
  if (code.startsWith("{")) {
    code.right(1);
    if (code.endsWith("}")) code.left(code.Length() - 1);
  }
  return code.AllTrim();
}

bool CMC_Behaviour_Entry::isInlineCode(std::string_view text) {
  return text.starts_with("{") || text.starts_with("\"{");
}

CXString CMC_Behaviour_Entry::inlineCodeOf(CXString text) {
  if (text.startsWith("\"")) {
    text.right(1);
    if (text.endsWith("\"")) text.left(text.Length() - 1);
  }
  return stripBraces(std::move(text));
}

CXString CMC_Behaviour_Entry::uniqueName(const CMC_ObjectsContainer* scene, const char* prefix) {
  CXString name;
  do {
    name = CXString(prefix) + std::to_string(++nameNumber_);
  } while (scene->getObject(name) != nullptr);
  return name;
}

// Compiling

CMC_InlineCode::CMC_InlineCode(CMC_Behaviour* behaviour)
    : CMC_String(behaviour->getName()), behaviour_(behaviour) {
  setName("temp");
}

CMC_Behaviour_Entry::CMC_Behaviour_Entry(CMC_Behaviour* behaviour, CXString line)
    : line_(std::move(line)), origin_(behaviour->origin()) {
  const diagnose::PlaceGuard place(origin_);
  const CompileDepth depth;
  if (line_.endsWith(";")) line_.left(line_.Length() - 1);
  if (CompileDepth::isTooDeep()) {
    valueText_ = line_;
  } else {
    compile(behaviour);
  }
}

CMC_Behaviour_Entry::~CMC_Behaviour_Entry() {
  if (!ownsTempBehaviours_) return;
  for (const Slot& slot : slots_) {
    CMC_Behaviour* behaviour = inlineBehaviourOf(slot.fixed.get());
    if (behaviour == nullptr) continue;
    const Ref<CMC_Behaviour> keep(behaviour);
    if (behaviour->getScene() != nullptr) behaviour->getScene()->removeObject(behaviour);
    CMC_Object::destroy(behaviour);
  }
}

void CMC_Behaviour_Entry::compile(CMC_Behaviour* behaviour) {
  CMC_ObjectsContainer* scene = behaviour->getScene();
  const int open = line_.Find('(');
  const char first = line_.GetAt(0);
  if (first == '@') {
    kind_ = Kind::builtIn;
    method_ = line_.Mid(1, open);
    runner_ = CMC_RunnerFactory::getRunner(type::kBuiltIns);
    row_ = runner_ != nullptr ? runner_->findMethod(method_) : nullptr;
    compileArguments(behaviour, open);
  } else if (first == '*') {
    compileIndirect(behaviour, open);
  } else if (line_.startsWith("THIS")) {
    kind_ = Kind::callerCall;
    method_ = line_.Mid(5, open);
    compileArguments(behaviour, open);
  } else if (first == '[') {
    compileExpression(behaviour);
  } else if (const int caret = line_.Find('^'); first == '"' || caret < 0) {
    compileValue(scene);
  } else {
    compileCall(behaviour, caret, open);
  }
}

void CMC_Behaviour_Entry::compileIndirect(CMC_Behaviour* behaviour, int open) {
  kind_ = Kind::indirectCall;
  const int close = line_.Find(']') + 1;
  int caret = line_.Find('^');
  if (close < open) {
    caret = line_.Find('^', close);
    open = line_.Find('(', std::max(caret, 0));
  }
  objectName_ = line_.Mid(1, caret);
  if (objectName_.startsWith("[")) {
    auto expression = std::make_unique<CMC_Expression>(behaviour->getScene(), withoutEnds(objectName_));
    expression_ = Ref<CMC_Object>(expression.get());
    expression.release()->dispose();
  } else if (behaviour->getScene() != nullptr) {
    object_ = WeakRef<CMC_Object>(behaviour->getScene()->getObject(objectName_));
  }
  method_ = line_.Mid(caret + 1, open);
  compileArguments(behaviour, open);
}

void CMC_Behaviour_Entry::compileExpression(CMC_Behaviour* behaviour) {
  const CXString inside = withoutEnds(line_);
  if (hasMark(inside)) {
    valueText_ = CXString("[") + inside + "]";
    hasMarks_ = true;
    return;
  }
  kind_ = Kind::expression;
  // The statement's Ref is the expression's only owner.
  auto expression = std::make_unique<CMC_Expression>(behaviour->getScene(), inside);
  expression_ = Ref<CMC_Object>(expression.get());
  expression.release()->dispose();
}

void CMC_Behaviour_Entry::compileValue(CMC_ObjectsContainer* scene) {
  valueText_ = line_;
  hasMarks_ = hasMark(line_);
  CMC_Object* named = scene != nullptr ? scene->getObject(line_) : nullptr;
  if (named != nullptr && !named->isTemporary()) {
    object_ = WeakRef<CMC_Object>(named);
    valueText_ = named->getName();
  }
  isField_ = valueText_.Find('|') >= 0;
}

void CMC_Behaviour_Entry::compileCall(CMC_Behaviour* behaviour, int caret, int open) {
  CMC_ObjectsContainer* scene = behaviour->getScene();
  objectName_ = line_.Left(caret);
  isField_ = objectName_.Find('|') >= 0;
  method_ = line_.Mid(caret + 1, open);
  if (hasMark(objectName_)) {
    kind_ = Kind::dynamicCall;
  } else {
    kind_ = Kind::objectCall;
    CMC_Object* found = findByName(scene, objectName_);
    if (found != nullptr && !found->isTemporary()) {
      object_ = WeakRef<CMC_Object>(found);
      runner_ = found->getRunner();
      row_ = runner_ != nullptr ? runner_->findMethod(method_) : nullptr;
    }
  }
  compileArguments(behaviour, open);
  isBareCall_ = object_ && row_ != nullptr && slots_.empty();
}

void CMC_Behaviour_Entry::tellNames(NameUses& uses) const {
  const bool isNamed = kind_ == Kind::objectCall || (kind_ == Kind::indirectCall && !expression_);
  if (kind_ == Kind::value) uses.add(line_);
  if (isNamed) uses.add(objectName_);
  if (const auto* expression = object_cast<CMC_Expression>(expression_.get())) expression->tellNames(uses);
  for (const Slot& slot : slots_) {
    if (slot.entry) slot.entry->tellNames(uses);
    if (slot.referredName.IsString()) uses.add(slot.referredName);
    if (const auto* expression = object_cast<CMC_Expression>(slot.fixed.get())) expression->tellNames(uses);
    CMC_Behaviour* behaviour = inlineBehaviourOf(slot.fixed.get());
    if (behaviour == nullptr) continue;
    uses.add(behaviour);
    if (const CodeLines* lines = behaviour->getLines()) lines->tellNames(uses);
  }
}

CMC_Object* CMC_Behaviour_Entry::findRemembered(const CMC_ObjectsContainer* scene,
                                                const CXString& name) const {
  return scene == nullptr || isField_ ? findByName(scene, name) : name_.find(*scene, name);
}

CMC_Object* CMC_Behaviour_Entry::findByName(const CMC_ObjectsContainer* scene, const CXString& name) {
  if (scene == nullptr) return nullptr;
  const int bar = name.Find('|');
  if (bar < 0) return scene->getObject(name);
  auto* structure = scene->find<CMC_Structure>(name.slice(0, bar));
  return structure != nullptr ? structure->getField(name.Right(bar + 1)) : nullptr;
}

void CMC_Behaviour_Entry::compileArguments(CMC_Behaviour* behaviour, int open) {
  if (open < 0 && diagnose::isOn())
    diagnose::report(diagnose::Group::statement, line_, "", "a call needs its round brackets", origin_);
  if (open < 0) return;
  params_ = line_.Mid(open + 1, line_.Length() - 1);
  for (const std::string_view piece : cutArguments(params_)) {
    slots_.push_back(compileArgument(behaviour, piece));
  }
  bool callsSomething = false;
  for (const Slot& slot : slots_) {
    if (slot.entry || slot.hasMarks) constParams_ = false;
    if (slot.entry && slot.entry->kind_ != Kind::value) callsSomething = true;
  }
  if (callsSomething) return;
  for (Slot& slot : slots_) {
    if (slot.entry && slot.hasMarks) slot.marked = MarkedExpression::compile(slot.entry->line_);
  }
}

CMC_Behaviour_Entry::Slot CMC_Behaviour_Entry::compileArgument(CMC_Behaviour* behaviour, CXString piece) {
  Slot slot;
  slot.hasMarks = hasMark(piece);
  CMC_ObjectsContainer* scene = behaviour->getScene();
  if (piece.startsWith("[") && !slot.hasMarks && !CompileDepth::isTooDeep()) {
    auto expression = std::make_unique<CMC_Expression>(scene, withoutEnds(piece));
    slot.fixed = Ref<CMC_Object>(expression.get());
    expression.release()->dispose();
    return slot;
  }
  const bool mayBeCode = piece.startsWith("@") || slot.hasMarks || piece.Find('^') >= 0;
  if (mayBeCode && isInlineCode(piece) && scene != nullptr) {
    slot.fixed = makeInlineArgument(behaviour, piece);
    return slot;
  }
  if (!mayBeCode && piece.startsWith("&")) {
    const CXString name = piece.Right(1);
    CMC_Object* referred = scene != nullptr ? scene->getVariable(name) : nullptr;
    if (referred != nullptr) {
      slot.referred = WeakRef<CMC_Object>(referred);
      slot.referredName = name;
    } else {
      slot.fixed = Ref<CMC_Object>(CMC_Variable::resolve(name));
    }
    return slot;
  }
  slot.entry = std::make_unique<CMC_Behaviour_Entry>(behaviour, std::move(piece));
  if (slot.entry->isPlainValue()) slot.bound = &slot.entry->object_;
  return slot;
}

Ref<CMC_Object> CMC_Behaviour_Entry::makeInlineArgument(CMC_Behaviour* behaviour, const CXString& piece) {
  CMC_ObjectsContainer* scene = behaviour->getScene();
  const CXString code = inlineCodeOf(piece);
  auto* made = new CMC_Behaviour(scene, uniqueName(scene, "temp_"), code, behaviour->origin());
  const Ref<CMC_Behaviour> keep(made);
  made->init();
  scene->addObject(made);
  auto* argument = new CMC_InlineCode(made);
  Ref<CMC_Object> value(argument);
  argument->dispose();
  return value;
}

// Running

Result CMC_Behaviour_Entry::runAny(const RunContext& context, bool isResultUsed) const {
  if (kind_ == Kind::expression) return Result(expression_);
  if (kind_ == Kind::value) return runValue(context);
  if (!slots_.empty()) return runCall(context, isResultUsed);
  if (diagnose::isOn()) diagnose::place = origin_;
  return dispatch(context, ArgumentList({}, isResultUsed));
}

Result CMC_Behaviour_Entry::runCall(const RunContext& context, bool isResultUsed) const {
  ArgumentBuffer values(slots_.size());
  Throwaways throwaways;
  for (const Slot& slot : slots_) {
    CMC_Object* bound = slot.bound != nullptr ? slot.bound->get() : nullptr;
    values.add(bound != nullptr ? Ref<CMC_Object>(bound) : argumentOf(slot, context, &throwaways));
  }

  if (diagnose::isOn()) diagnose::place = origin_;
  Result result = dispatch(context, ArgumentList(values.all(), isResultUsed));

  for (const Ref<CMC_Behaviour>& throwaway : throwaways) {
    if (throwaway->getScene() != nullptr) throwaway->getScene()->removeObject(throwaway.get());
    CMC_Object::destroy(throwaway.get());
  }
  return result;
}

CMC_Object* CMC_Behaviour_Entry::peek(const RunContext& context) const {
  if (!isPlainValue()) return nullptr;
  if (CMC_Object* bound = object_.get()) return bound;
  if (!caches::isOn()) return nullptr;
  CMC_Object* found = findRemembered(context.scene, valueText_);
  if (found != nullptr && CMC_Variable::isValueType(found->getType())) return found;
  if (!literal_) {
    const Ref<CMC_Variable> value = CMC_Variable::resolve(line_);
    literal_.reset(CMC_VariableFactory::makeNamed(value->getType(), value->getName()).release());
    literal_->set(value.get());
  }
  return literal_.get();
}

Result CMC_Behaviour_Entry::runValue(const RunContext& context) const {
  if (CMC_Object* present = peek(context)) return Result(Ref<CMC_Object>(present));
  Result value = valueOfText(context);
  if (value.value()) return value;
  return Result(CMC_Variable::resolve(line_));
}

Result CMC_Behaviour_Entry::valueOfText(const RunContext& context) const {
  if (!hasMarks_) {
    CMC_Object* found = findByName(context.scene, valueText_);
    const bool isValue = found != nullptr && CMC_Variable::isValueType(found->getType());
    return Result(Ref<CMC_Object>(isValue ? found : nullptr));
  }
  const CXString text = fillParams(valueText_, context.arguments);
  if (valueText_.startsWith("[")) {
    auto* expression = new CMC_Expression(context.scene, withoutEnds(text));
    const Ref<CMC_Expression> keep(expression);
    expression->dispose();
    return Result(expression->calculate());
  }
  CMC_Object* variable = context.scene != nullptr ? context.scene->getVariable(text) : nullptr;
  return variable != nullptr ? Result(Ref<CMC_Object>(variable)) : Result(CMC_Variable::resolve(text));
}

Ref<CMC_Object> CMC_Behaviour_Entry::argumentOf(const Slot& slot, const RunContext& context,
                                                Throwaways* throwaways) const {
  if (slot.entry) {
    if (slot.hasMarks) return markedArgument(slot, context, throwaways);
    if (CMC_Object* present = slot.entry->peek(context)) return Ref<CMC_Object>(present);
    return slot.entry->run(context).take();
  }
  if (slot.referredName.IsString()) {
    if (CMC_Object* referred = slot.referred.get()) return Ref<CMC_Object>(referred);
    CMC_Object* found = context.scene != nullptr ? context.scene->getVariable(slot.referredName) : nullptr;
    return found != nullptr ? Ref<CMC_Object>(found)
                            : Ref<CMC_Object>(CMC_Variable::resolve(slot.referredName));
  }
  if (!constParams_ && context.arguments != nullptr) {
    // Inline code sees the arguments of the code around it, and binds its names anew.
    CMC_Behaviour* behaviour = inlineBehaviourOf(slot.fixed.get());
    if (behaviour != nullptr) behaviour->setParams(*context.arguments);
  }
  return slot.fixed;
}

Ref<CMC_Object> CMC_Behaviour_Entry::markedArgument(const Slot& slot, const RunContext& context,
                                                    Throwaways* throwaways) const {
  if (slot.marked && caches::isOn() && !CMC_ObjectsContainer::areNumbersNames()) {
    const std::optional<int> value = slot.marked->calculate(context.arguments);
    if (value) return CMC_VariableFactory::makeInteger(*value);
  }
  return runFilled(slot, fillParams(slot.entry->line_, context.arguments), context, throwaways);
}

Ref<CMC_Object> CMC_Behaviour_Entry::runFilled(const Slot& slot, const CXString& text,
                                               const RunContext& context, Throwaways* throwaways) {
  CMC_ObjectsContainer* scene = context.scene;
  if (text.startsWith("[")) {
    auto* expression = new CMC_Expression(scene, withoutEnds(text));
    Ref<CMC_Object> value(expression);
    expression->dispose();
    return value;
  }
  if (text.startsWith("@") || hasMark(text) || text.Find('^') >= 0) {
    if (isInlineCode(text) && scene != nullptr) return makeFilledCode(text, context, throwaways);
    return runFilledCall(slot, text, context);
  }
  CMC_Object* variable = scene != nullptr ? scene->getVariable(text) : nullptr;
  return variable != nullptr ? Ref<CMC_Object>(variable) : Ref<CMC_Object>(CMC_Variable::resolve(text));
}

// Compiling anew would find what it found before while no name came or went. Inline code and fields of
// structures are not a matter of names alone.
Ref<CMC_Object> CMC_Behaviour_Entry::runFilledCall(const Slot& slot, const CXString& text,
                                                   const RunContext& context) {
  const std::uint64_t generation = CMC_ObjectsContainer::generation();
  const std::uint64_t scope = context.scene != nullptr ? context.scene->serial() : 0;
  std::shared_ptr<const FilledText> filled = slot.filled;
  const bool isKnown = caches::isOn() && filled && filled->generation == generation &&
                       filled->scope == scope && filled->text == text;
  if (!isKnown) {
    auto made = std::make_shared<FilledText>();
    made->text = text;
    made->scope = scope;
    made->entry = std::make_unique<CMC_Behaviour_Entry>(context.behaviour, text);
    made->generation = CMC_ObjectsContainer::generation();
    filled = made;
    const bool isLasting = text.Find('{') < 0 && text.Find('|') < 0;
    slot.filled = caches::isOn() && isLasting ? filled : nullptr;
  }
  return filled->entry->run(context).take();
}

Ref<CMC_Object> CMC_Behaviour_Entry::makeFilledCode(const CXString& text, const RunContext& context,
                                                    Throwaways* throwaways) {
  auto* made = new CMC_Behaviour(context.scene, uniqueName(context.scene, "xtemp_"), inlineCodeOf(text),
                                 context.behaviour->origin());
  throwaways->emplace_back(made);
  made->init();
  context.scene->addObject(made);
  auto* argument = new CMC_InlineCode(made);
  argument->setName("xtemp");
  Ref<CMC_Object> value(argument);
  argument->dispose();
  return value;
}

Result CMC_Behaviour_Entry::dispatch(const RunContext& context, const ArgumentList& arguments) const {
  switch (kind_) {
    case Kind::builtIn:
      if (row_ != nullptr) return CMC_Runner::call(*row_, *context.behaviour, context.scene, arguments);
      if (runner_ == nullptr) return {};
      return runner_->run(method_.view(), context.behaviour, context.scene, arguments);
    case Kind::dynamicCall:
      return dispatchDynamic(context, arguments);
    case Kind::callerCall: {
      const bool inClass = context.scene != nullptr && context.scene->getType() == type::kClass;
      return callMethod(inClass ? context.scene : context.caller, context, arguments);
    }
    case Kind::indirectCall:
      return callMethod(findIndirect(context), context, arguments);
    default:
      if (CMC_Object* bound = object_.get()) return callBound(*bound, context, arguments);
      return callMethod(findObject(context), context, arguments);
  }
}

Result CMC_Behaviour_Entry::dispatchDynamic(const RunContext& context, const ArgumentList& arguments) const {
  const CXString name = fillParams(objectName_, context.arguments);
  CMC_Object* object = context.scene != nullptr ? context.scene->getObject(name) : nullptr;
  if (object == nullptr) {
    reportMissing(name);
    return {};
  }
  return callMethod(object, context, arguments);
}

// The method of an object that was known when the statement was compiled is taken as it was written then.
Result CMC_Behaviour_Entry::callBound(CMC_Object& object, const RunContext& context,
                                      const ArgumentList& arguments) const {
  if (row_ != nullptr) return CMC_Runner::call(*row_, object, context.scene, arguments);
  CMC_Runner* runner = object.getRunner();
  return runner != nullptr ? runner->run(method_.view(), &object, context.scene, arguments) : Result();
}

CMC_Object* CMC_Behaviour_Entry::findObject(const RunContext& context) const {
  CMC_Object* found = findRemembered(context.scene, objectName_);
  if (found == nullptr) reportMissing(objectName_);
  return found;
}

CMC_Object* CMC_Behaviour_Entry::findIndirect(const RunContext& context) const {
  if (context.scene == nullptr) return nullptr;
  Ref<CMC_Variable> source;
  if (auto* expression = object_cast<CMC_Expression>(expression_.get())) {
    source = expression->calculate();
  } else {
    CMC_Object* named = object_.get();
    if (named == nullptr) named = context.scene->getVariable(objectName_);
    source = asVariable(named);
  }
  if (!source) reportMissing(objectName_);
  if (!source) return nullptr;
  const CXString name = getStringValue(source.get());
  CMC_Object* found = context.scene->getObject(name);
  if (found == nullptr) reportMissing(name);
  return found;
}

Result CMC_Behaviour_Entry::callMethod(CMC_Object* object, const RunContext& context,
                                       const ArgumentList& arguments) const {
  CMC_Runner* runner = object != nullptr ? object->getRunner() : nullptr;
  if (runner == nullptr) reportUncallable(object);
  if (runner == nullptr) return {};
  if (hasMark(method_)) {
    return runner->run(fillParams(method_, context.arguments).view(), object, context.scene, arguments);
  }
  if (runner != runner_) {
    runner_ = runner;
    row_ = runner->findMethod(method_);
  }
  if (row_ != nullptr) return CMC_Runner::call(*row_, *object, context.scene, arguments);
  return runner->run(method_.view(), object, context.scene, arguments);
}

void CMC_Behaviour_Entry::reportMissing(const CXString& name) const {
  if (diagnose::isOn()) diagnose::report(diagnose::Group::object, name, method_, "no such object", origin_);
}

// A missing object is reported where it was looked for, but for a caller that there never was.
void CMC_Behaviour_Entry::reportUncallable(const CMC_Object* object) const {
  if (!diagnose::isOn() || (object == nullptr && kind_ != Kind::callerCall)) return;
  diagnose::report(diagnose::Group::object, object != nullptr ? object->getName() : CXString("THIS"), method_,
                   object != nullptr ? "has no methods" : "nobody called", origin_);
}

// A whole text

Ref<const CodeLines> CodeLines::make(CMC_Behaviour* behaviour, CXString text, bool isWatched) {
  auto* lines = new CodeLines(behaviour, std::move(text));
  Ref<const CodeLines> made(lines);
  lines->dispose();
  lines->generation_ = CMC_ObjectsContainer::generation();
  if (isWatched) {
    lines->uses_ = std::make_unique<NameUses>();
    lines->tellNames(*lines->uses_);
    lines->uses_->mark();
  }
  return made;
}

bool CodeLines::isCurrent() const {
  if (!uses_ || !uses_->areBehavioursUntouched()) return false;
  const std::uint64_t generation = CMC_ObjectsContainer::generation();
  if (generation_ != generation && uses_->haveChanged()) return false;
  generation_ = generation;
  return true;
}

void CodeLines::tellNames(NameUses& uses) const {
  for (const auto& entry : entries_) entry->tellNames(uses);
}

CodeLines::CodeLines(CMC_Behaviour* behaviour, CXString text) : text_(std::move(text)) {
  CXString rest;
  for (CXString& statement : CMC_Behaviour_Entry::cutStatements(text_, &rest)) {
    entries_.push_back(std::make_unique<CMC_Behaviour_Entry>(behaviour, std::move(statement)));
    if (diagnose::isOn() && !entries_.back()->mayDoSomething())
      diagnose::report(diagnose::Group::statement, behaviour->getName(), "",
                       "calls nothing: " + entries_.back()->getLine().str(), behaviour->origin());
  }
  // A bare name or number is as often a text that only might have been code.
  const bool isStatement = rest.startsWith("@") || rest.Find('^') >= 0;
  if (isStatement && diagnose::isOn()) {
    diagnose::report(diagnose::Group::statement, behaviour->getName(), "",
                     "the last statement has no semicolon and is dropped: " + rest.str(),
                     behaviour->origin());
  }
}

void CodeLines::releaseTempBeh(bool owns) const {
  for (const auto& entry : entries_) entry->releaseTempBeh(owns);
}

}  // namespace footlight
