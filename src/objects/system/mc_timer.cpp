#include "objects/system/mc_timer.h"

#include "foundation/arithmetic.h"
#include "foundation/xtimer.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/method_tables.h"

namespace footlight {

namespace {
constexpr int kOnTick = 3;
}

CMC_Timer::CMC_Timer(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kTimer),
      window_(container->getWindow()),
      maxTicks_(element->getPropertyIntValue("TICKS")),
      elapse_(element->getPropertyValue("ELAPSE")) {
  if (element->isPropertyAvailable("ENABLED")) enabled_ = element->getPropertyBoolValue("ENABLED");
  start();
  initializeBehaviours(container, element);
}

CMC_Timer::CMC_Timer(const CMC_Timer& other)
    : CMC_Object(other),
      window_(other.window_),
      enabled_(other.enabled_),
      maxTicks_(other.maxTicks_),
      elapse_(other.elapse_) {
  start();
}

CMC_Timer::~CMC_Timer() { CMC_Timer::unlink(); }

std::unique_ptr<CMC_Object> CMC_Timer::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Timer(*this));
}

CXTimer* CMC_Timer::timerList() const { return window_ != nullptr ? window_->GetTimerInterface() : nullptr; }

void CMC_Timer::start() {
  if (elapse_.IsString() && timerList() != nullptr) timerId_ = timerList()->add(elapse_.toNumber(), this);
}

void CMC_Timer::unlink() {
  if (timerId_ != 0 && timerList() != nullptr) timerList()->remove(timerId_);
  timerId_ = 0;
}

void CMC_Timer::enable() {
  if (enabled_) return;
  enabled_ = true;
  setTicks(0);
}

void CMC_Timer::pause() {
  disable();
  if (timerList() != nullptr) timerList()->pause();
}

void CMC_Timer::resume() {
  if (enabled_) return;
  enabled_ = true;
  if (timerList() != nullptr) timerList()->resume();
}

void CMC_Timer::setTicks(int ticks) {
  ticks_ = ticks;
  if (timerList() != nullptr) timerList()->reset(timerId_);
}

void CMC_Timer::setElapse(int milliseconds) {
  CTimerObject* timer = timerList() != nullptr ? timerList()->find(timerId_) : nullptr;
  if (timer != nullptr) {
    timer->interval = milliseconds;
  } else if (diagnose::isOn()) {
    diagnose::reportCall(diagnose::Group::definition, "the timer has no ELAPSE and never ticks");
  }
}

void CMC_Timer::onTimer(TimerId /*id*/) {
  if (!enabled_) return;
  ticks_ = wrap_add(ticks_, 1);
  if (maxTicks_ > 0 && ticks_ == maxTicks_) enabled_ = false;
  if (!isSignalBound(kOnTick)) return;
  const Ref<CMC_Timer> self(this);
  if (!onSignal(CXString("ONTICK^") + CXString::toString(ticks_))) onSignal("ONTICK");
}

// Scripts' methods

namespace {

Result enable(CMC_Timer& timer, Call& /*call*/) {
  timer.enable();
  return {};
}

Result disable(CMC_Timer& timer, Call& /*call*/) {
  timer.disable();
  return {};
}

Result pause(CMC_Timer& timer, Call& /*call*/) {
  timer.pause();
  return {};
}

Result resume(CMC_Timer& timer, Call& /*call*/) {
  timer.resume();
  return {};
}

Result getTicks(CMC_Timer& timer, Call& /*call*/) {
  return CMC_VariableFactory::makeInteger(timer.getTicks());
}

Result reset(CMC_Timer& timer, Call& /*call*/) {
  timer.setTicks(0);
  return {};
}

Result set(CMC_Timer& timer, Call& call) {
  timer.setTicks(call.integer(0));
  return {};
}

Result setElapse(CMC_Timer& timer, Call& call) {
  timer.setElapse(call.integer(0));
  return {};
}

constexpr Method kMethods[] = {
    {1, "ENABLE", 0, 0, method<enable>},     {2, "DISABLE", 0, 0, method<disable>},
    {3, "PAUSE", 0, 0, method<pause>},       {4, "RESUME", 0, 0, method<resume>},
    {5, "GETTICKS", 0, 0, method<getTicks>}, {6, "RESET", 0, 0, method<reset>},
    {7, "SET", 1, 1, method<set>},           {8, "SETELAPSE", 1, 1, method<setElapse>},
};

}  // namespace

std::span<const Method> methods::timer() { return kMethods; }

}  // namespace footlight
