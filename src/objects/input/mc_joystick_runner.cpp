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
    {1, "GETBUTTONSTATE", "button:int -> int", method<getButtonState>, "1 while the button is down, else 0."},
    {2, "GETPOSITION", "axis:text -> int", method<getPosition>,
     "Of the axis X, Y or Z, from about -12 to 12."},
    {3, "ISLEFT", "-> bool", method<isLeft>, "Whether it leans to the left."},
    {4, "ISRIGHT", "-> bool", method<isRight>, "Whether it leans to the right."},
};

constexpr auto kSignals = signalTable<JoystickSignal>({
    {JoystickSignal::onButtonUp, "ONBUTTONUP", "A button was released; as ONBUTTONUP^NUMBER."},
    {JoystickSignal::onButtonDown, "ONBUTTONDOWN", "A button was pressed; as ONBUTTONDOWN^NUMBER."},
    {JoystickSignal::onMove, "ONMOVE",
     "It was moved; as ONMOVE^LEFT and the like, or ONMOVE^X and the like."},
});

constexpr Property kProperties[] = {
    {"PORT", PropertyKind::integer, "1", "Which controller it is; 0 is the first."},
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
