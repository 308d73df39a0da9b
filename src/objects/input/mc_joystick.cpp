#include "objects/input/mc_joystick.h"

#include <cstdlib>
#include <utility>

#include "foundation/limits.h"
#include "gfx/window.h"
#include "platform/platform.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

CMC_Joystick::CMC_Joystick(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kJoystick), window_(container->getWindow()) {
  if (element->getPropertyValue("PORT").IsString()) port_ = element->getPropertyIntValue("PORT");
  start();
  initializeBehaviours(container, element);
}

CMC_Joystick::CMC_Joystick(const CMC_Joystick& other)
    : CMC_Object(other), window_(other.window_), port_(other.port_) {
  start();
}

std::unique_ptr<CMC_Object> CMC_Joystick::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Joystick(*this));
}

void CMC_Joystick::start() {
  last_.axes.fill(kNoPosition);
  const bool isThere = platform::current().input().controller(port_).has_value();
  if (isThere && window_ != nullptr) window_->addIPoller(this);
}

CMC_Joystick::~CMC_Joystick() { CMC_Joystick::unlink(); }

void CMC_Joystick::unlink() {
  if (window_ != nullptr) window_->removeIPoller(this);
  queue_.clear();
}

bool CMC_Joystick::getButtonState(int button) const {
  const std::lock_guard lock(stateMutex_);
  const auto index = static_cast<std::size_t>(button);
  return button >= 0 && index < last_.buttons.size() && last_.buttons[index];
}

int CMC_Joystick::getAxis(int axis) const {
  const std::lock_guard lock(stateMutex_);
  return axis == 0 || axis == 1 ? last_.axes[static_cast<std::size_t>(axis)] : kNoPosition;
}

// The poller
void CMC_Joystick::queue(const Record& record) {
  if (queue_.size() < static_cast<std::size_t>(limits::kInputEvents)) queue_.push_back(record);
}

void CMC_Joystick::tick() {
  constexpr Axis kAxes[] = {
      {"X", "LEFT", "RIGHT", 50, 1, 5}, {"Y", "UP", "DOWN", 300, 4, 0}, {"Z", "OUT", "IN", 300, 4, 0}};
  const auto state = platform::current().input().controller(port_);
  if (!state) return;
  const std::lock_guard lock(stateMutex_);
  readButtons(*state);
  for (std::size_t i = 0; i < std::size(kAxes); ++i) readAxis(kAxes[i], i, state->axes[i]);
}

void CMC_Joystick::readButtons(const platform::ControllerState& state) {
  for (std::size_t i = 0; i < state.buttons.size(); ++i) {
    const bool isDown = state.buttons[i];
    if (std::exchange(last_.buttons[i], isDown) != isDown)
      queue({isDown ? Kind::buttonDown : Kind::buttonUp, static_cast<int>(i), "", ""});
  }
}

void CMC_Joystick::readAxis(const Axis& axis, std::size_t number, int value) {
  int& last = last_.axes[number];
  if (std::abs(value - last) <= axis.threshold) {
    counts_[number] = 0;
  } else if (++counts_[number] >= axis.readings) {
    queue({Kind::move, 0, value <= axis.edge ? axis.low : axis.high, axis.name});
    last = value;
  }
}

void CMC_Joystick::flushSignals(bool deliver) {
  const Ref<CMC_Joystick> self(this);
  for (const Record& record : std::exchange(queue_, {})) {
    if (deliver && !isDisposed()) tell(record);
  }
}

void CMC_Joystick::tell(const Record& record) {
  if (record.kind == Kind::move) {
    const CXString head = CXString(signalName(JoystickSignal::onMove)) + "^";
    if (!onSignal(head + record.direction)) raise(JoystickSignal::onMove, record.axis);
    return;
  }
  raise(record.kind == Kind::buttonDown ? JoystickSignal::onButtonDown : JoystickSignal::onButtonUp,
        CXString::toString(record.button));
}

}  // namespace footlight
