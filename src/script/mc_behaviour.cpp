#include "script/mc_behaviour.h"

#include <algorithm>

#include "files/archive.h"
#include "foundation/depth.h"
#include "foundation/xtimer.h"
#include "gfx/window.h"
#include "script/caches.h"
#include "script/code_lines.h"
#include "script/code_text.h"
#include "script/mc_condition.h"
#include "script/mc_expression.h"
#include "script/mc_structure.h"
#include "script/melement.h"
#include "script/public_trash.h"
#include "script/statement_compiler.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

std::vector<Owned<CXObject>>& globalTrash() {
  static std::vector<Owned<CXObject>> trash;
  return trash;
}

CXTimer* timerOf(const CMC_ObjectsContainer* scope) {
  CWindow* window = scope != nullptr ? scope->getWindow() : nullptr;
  return window != nullptr ? window->GetTimerInterface() : nullptr;
}

}  // namespace

CMC_Behaviour::CMC_Behaviour(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kBehaviour),
      code_(code_text::trimmedCode(element->getPropertyValue("CODE"))),
      conditionName_(element->getPropertyValue("CONDITION")) {
  if (const CMProperty* code = element->properties().get("CODE")) setOrigin(code->origin());
  initializeBehaviours(container, element);
}

CMC_Behaviour::CMC_Behaviour(CMC_ObjectsContainer* container, CXString name, const CXString& code,
                             Origin origin)
    : CMC_Object(std::move(name), type::kBehaviour), code_(code_text::trimmedCode(code)) {
  setScene(container);
  // Code that a statement makes stands where the statement does.
  setOrigin(origin.line == 0 && diagnose::isOn() ? diagnose::place : origin);
}

// A copy has the code and the lines; it stands on no timer and has declared nothing.
CMC_Behaviour::CMC_Behaviour(const CMC_Behaviour& other)
    : CMC_Object(other),
      code_(other.code_),
      conditionName_(other.conditionName_),
      condition_(other.condition_),
      lines_(other.lines_),
      hasMarks_(other.hasMarks_),
      enabled_(other.enabled_) {}

CMC_Behaviour::~CMC_Behaviour() { CMC_Behaviour::unlink(); }

std::unique_ptr<CMC_Object> CMC_Behaviour::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Behaviour(*this));
}

void CMC_Behaviour::init() {
  const Ref<CMC_Behaviour> self(this);
  CMC_Object::init();
  if (code_.startsWith("{")) code_ = code_.Mid(1, code_.Length() - 1);
  hasMarks_ = code_text::hasMark(code_);
  lines_ = nullptr;
  if (code_.IsString()) compile(code_);
}

void CMC_Behaviour::compile(const CXString& text, bool isWatched) {
  lines_ = CodeLines::make(this, text, isWatched);
}

void CMC_Behaviour::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  archive.pass(code_);
  archive.pass(conditionName_);
}

bool CMC_Behaviour::done(bool keepTempBehaviours) {
  const Ref<CMC_Behaviour> self(this);
  if (lines_) lines_->releaseTempBeh(!keepTempBehaviours);
  lines_ = nullptr;
  return CMC_Object::done(keepTempBehaviours);
}

void CMC_Behaviour::resolveCondition() {
  if (conditionName_.IsEmpty() || getScene() == nullptr) return;
  condition_ = WeakRef<CMC_BasicCondition>(getScene()->find<CMC_BasicCondition>(conditionName_));
  if (!condition_ && diagnose::isOn())
    diagnose::report(diagnose::Group::object, getName(), "CONDITION",
                     "no condition of the name " + conditionName_.str(), origin());
}

bool CMC_Behaviour::doesConditionHold() const {
  const Ref<CMC_BasicCondition> condition(condition_.get());
  return !condition || condition->valid(true);
}

void CMC_Behaviour::addTempObject(CMC_Object* object) { tempObjects_.emplace_back(object); }

void CMC_Behaviour::removeTemporaries(CMC_ObjectsContainer* scope) {
  const std::vector<WeakRef<CMC_Object>> temporaries = std::move(tempObjects_);
  tempObjects_.clear();
  for (const WeakRef<CMC_Object>& temporary : temporaries) {
    const Ref<CMC_Object> object(temporary.get());
    if (!object) continue;
    if (scope != nullptr) scope->removeObject(object.get());
    CMC_Object::destroy(object.get());
  }
}

bool CMC_Behaviour::isAsMade() const {
  const CMC_ObjectsContainer* scope = getScene();
  return enabled_ && breakpoint_ < 0 && timerId_ == 0 && !isAnySignalBound() && getClonesNo() == 0 &&
         scope != nullptr && isOwnedBy(*scope);
}

void CMC_Behaviour::setParams(const TextList& arguments) {
  // The lines end with ONDONE before they are made anew, so what was bound here is a matter too.
  const bool mayStay = caches::isOn() && lines_ && isAsMade();
  if (mayStay && !hasMarks_ && lines_->text() == code_ && lines_->isCurrent()) return;
  CXString text = code_text::fillMarks(code_, &arguments);
  if (mayStay && lines_->text() == text && lines_->isCurrent()) return;
  done(false);
  if (!isDisposed() && text.IsString()) compile(text, caches::isOn());
}

// Timers

void CMC_Behaviour::runOnTimer(int interval, int count, TextList arguments, CMC_Behaviour* next) {
  CXTimer* timer = timerOf(getScene());
  if (timer == nullptr) return;
  endTimer();
  timerLimit_ = count;
  timerCount_ = 0;
  timerArguments_ = std::make_shared<TextList>(std::move(arguments));
  if (timerArguments_->empty()) timerArguments_->emplace_back("0");
  timerNext_ = WeakRef<CMC_Behaviour>(next);
  timerId_ = timer->add(interval, this);
  if (CPublicTrash* trash = getScene()->getWindow()->getPublicTrashInterface()) trash->add(this);
}

bool CMC_Behaviour::areTimersFull(const CMC_ObjectsContainer& scope) {
  const CXTimer* timer = timerOf(&scope);
  if (timer == nullptr || !timer->isFull()) return false;
  limitHit("timers");
  return true;
}

void CMC_Behaviour::onTimer(TimerId /*id*/) {
  const Ref<CMC_Behaviour> self(this);
  const std::shared_ptr<TextList> arguments = timerArguments_;
  if (!arguments) return;
  ++timerCount_;
  arguments->front() = ArgumentText(timerCount_);
  const bool broke = run(this, arguments.get(), false);
  if (isDisposed() || timerArguments_ != arguments) return;  // ended or started anew by its own code
  if (!broke && !(timerLimit_ > 0 && timerCount_ == timerLimit_)) return;

  const Ref<CMC_Behaviour> next(timerNext_.get());
  endTimer();
  if (next) {
    next->run(this, arguments.get(), true);
    if (ownsTimerNext_) {
      if (next->getScene() != nullptr) next->getScene()->removeObject(next.get());
      destroy(next.get());
    }
  }
  leaveScope();
}

void CMC_Behaviour::_break() {
  endTimer();
  leaveScope();
}

void CMC_Behaviour::endTimer() {
  CXTimer* timer = timerId_ != 0 ? timerOf(getScene()) : nullptr;
  if (timer != nullptr) timer->remove(timerId_);
  timerId_ = 0;
  timerArguments_.reset();
}

void CMC_Behaviour::leaveScope() {
  if (isDisposed()) return;
  setToDelete();
  CMC_ObjectsContainer* scope = getScene();
  if (scope != nullptr && scope->removeObject(this)) scope->keepUntilUnload(this);
}

void CMC_Behaviour::unlink() {
  endTimer();
  if (tempObjects_.empty()) return;
  const Ref<CMC_ObjectsContainer> scope(getScene());
  removeTemporaries(scope.get());
}

// Reading text that is not compiled

Result CMC_Behaviour::resolveParameter(CMC_ObjectsContainer* scope, CMC_Object* caller, const CXString& text,
                                       CMC_Behaviour* behaviour) {
  CXString piece = text;
  piece.AllTrim();
  if (piece.startsWith("[")) return makeRef<CMC_Expression>(scope, code_text::withoutEnds(piece))->evaluate();
  if (piece.startsWith("CONV")) return runLine(scope, caller, CXString("@") + piece, behaviour);
  if (piece.Find('(') >= 0 && !piece.startsWith("\"")) return runLine(scope, caller, piece, behaviour);
  if (CMC_Variable::beginsLikeNumber(piece)) return Result(CMC_Variable::resolve(piece));
  if (const int bar = piece.Find('|'); bar >= 0) {
    auto* structure = scope->find<CMC_Structure>(piece.slice(0, bar));
    if (structure != nullptr) {
      if (CMC_Variable* field = structure->getField(piece.Right(bar + 1))) return Value(field);
    }
  }
  if (CMC_Object* variable = scope->getVariable(piece)) return Value(variable);
  return Result(CMC_Variable::resolve(piece));
}

Result CMC_Behaviour::runLine(CMC_ObjectsContainer* scope, CMC_Object* caller, const CXString& text,
                              CMC_Behaviour* behaviour) {
  const DepthGuard depth;
  const bool isCall = text.startsWith("@") || text.Find('^') >= 0;
  if (!isCall && diagnose::isOn())
    diagnose::report(diagnose::Group::statement, text, "", "is no call: there is no ^ in it");
  if (!depth || !isCall) return {};
  const Ref<CMC_Behaviour> owner =
      behaviour != nullptr ? Ref<CMC_Behaviour>(behaviour) : makeRef<CMC_Behaviour>(scope, "temp", "");
  const std::unique_ptr<CMC_Behaviour_Entry> statement = compileStatement(owner.get(), text);
  const Result result = statement->run({owner.get(), scope, caller, nullptr});
  return result.stops() ? Result() : result;
}

// Trash

void CMC_Behaviour::initTrash() { globalTrash().clear(); }

void CMC_Behaviour::doneTrash() { globalTrash().clear(); }

void CMC_Behaviour::addToTrash(CXObject* object) {
  auto& trash = globalTrash();
  const bool known =
      std::any_of(trash.begin(), trash.end(), [object](const auto& item) { return item.get() == object; });
  if (!known) trash.emplace_back(object);
}

void CMC_Behaviour::flushTrash() {
  const std::vector<Owned<CXObject>> dying = std::move(globalTrash());
  globalTrash().clear();
}

}  // namespace footlight
