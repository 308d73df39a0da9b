#include "objects/system/mc_timer.h"

#include "files/archive.h"
#include "foundation/arithmetic.h"
#include "foundation/xtimer.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

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

void CMC_Timer::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  archive.pass(elapse_);
  archive.pass(maxTicks_);
  if (archive.isStoring()) return;
  CMC_Timer::unlink();
  start();
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
  raise(TimerSignal::onTick, CXString::toString(ticks_));
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
    {1, "ENABLE", "", method<enable>, "Lets it tick again, from 0 on; does nothing while it is enabled."},
    {2, "DISABLE", "", method<disable>, "Lets it tick no more."},
    {3, "PAUSE", "", method<pause>, "Disables it, and notes for all timers how far they are for RESUME."},
    {4, "RESUME", "", method<resume>,
     "Enables it and lets all timers go on from PAUSE; does nothing while it is enabled."},
    {5, "GETTICKS", "-> int", method<getTicks>, "How often it has ticked."},
    {6, "RESET", "", method<reset>, "Counts from 0 again; the next tick is a whole ELAPSE away."},
    {7, "SET", "ticks:int", method<set>,
     "Goes on counting from this number; the next tick is a whole ELAPSE away."},
    {8, "SETELAPSE", "milliseconds:int", method<setElapse>,
     "Sets the milliseconds between two ticks, for a timer that has an ELAPSE."},
};

constexpr auto kSignals = signalTable<TimerSignal>({
    {TimerSignal::onTick, "ONTICK", "Its time has come; as ONTICK^NUMBER, from 1, if that is bound."},
});

constexpr Property kProperties[] = {
    {"ELAPSE", PropertyKind::integer, "", "Milliseconds between two ticks; without it there are none."},
    {"TICKS", PropertyKind::integer, "0", "After so many ticks it is disabled; 0 or less for never."},
    {"ENABLED", PropertyKind::boolean, "TRUE", "FALSE waits for ENABLE."},
};

}  // namespace

extern constinit const ScriptType kTimerType = {
    .number = type::kTimer,
    .idWord = "TIMER",
    .stringWord = "TIMER",
    .definitionWord = "TIMER",
    .meaning = "Raises a signal every so many milliseconds.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Timer>,
};

}  // namespace footlight
