// Scripts' methods of JOYSTICK.

#include "objects/input/mc_joystick.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

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
    {1, "GETBUTTONSTATE", 1, 1, method<getButtonState>},
    {2, "GETPOSITION", 1, 1, method<getPosition>},
    {3, "ISLEFT", 0, 0, method<isLeft>},
    {4, "ISRIGHT", 0, 0, method<isRight>},
};

}  // namespace

std::span<const Method> methods::joystick() { return kMethods; }

}  // namespace footlight
