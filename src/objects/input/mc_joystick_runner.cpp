// Scripts' methods of JOYSTICK.

#include "objects/input/mc_joystick.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// Of 1000 the whole part is 12.
constexpr double kPositionScale = 0.012207217517357137;

Result getButtonState(CMC_Joystick& joystick, Call& call) {
  return Factory::makeInteger(joystick.getButtonState(call.integer(0)) ? 1 : 0);
}

Result getPosition(CMC_Joystick& joystick, Call& call) {
  constexpr const char* kAxes[] = {"X", "Y", "Z"};
  const CXString word = call.text(0);
  for (int axis = 0; axis < 3; ++axis) {
    if (word == kAxes[axis])
      return Factory::makeInteger(static_cast<int>(joystick.getAxis(axis) * kPositionScale));
  }
  return {};
}

Result isLeft(CMC_Joystick& joystick, Call& /*call*/) { return Factory::makeBool(joystick.getAxis(0) < 0); }

Result isRight(CMC_Joystick& joystick, Call& /*call*/) { return Factory::makeBool(joystick.getAxis(0) > 0); }

constexpr Method kMethods[] = {
    {1, "GETBUTTONSTATE", "button:int -> int", method<getButtonState>,
     "1 while the button of that number, from 0, is down, else 0."},
    {2, "GETPOSITION", "axis:text -> int", method<getPosition>,
     "The lean of the axis X or Y, -12 to 12; always 0 for Z."},
    {3, "ISLEFT", "-> bool", method<isLeft>, "Whether it leans to the left."},
    {4, "ISRIGHT", "-> bool", method<isRight>, "Whether it leans to the right."},
};

constexpr auto kSignals = signalTable<JoystickSignal>({
    {JoystickSignal::onButtonUp, "ONBUTTONUP",
     "A button was released; as ONBUTTONUP^NUMBER, from 0, if that is bound."},
    {JoystickSignal::onButtonDown, "ONBUTTONDOWN",
     "A button was pressed; as ONBUTTONDOWN^NUMBER, from 0, if that is bound."},
    {JoystickSignal::onMove, "ONMOVE",
     "It was moved; as ONMOVE^LEFT, ^RIGHT, ^UP, ^DOWN, ^IN or ^OUT if that is bound, else as ONMOVE^X, ^Y "
     "or ^Z."},
});

constexpr Property kProperties[] = {
    {"PORT", PropertyKind::integer, "1",
     "The number of the controller among those that are plugged in; 0 is the first."},
};

}  // namespace

extern constinit const ScriptType kJoystickType = {
    .number = type::kJoystick,
    .definitionWord = "JOYSTICK",
    .meaning = "A game controller.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Joystick>,
};

}  // namespace footlight
