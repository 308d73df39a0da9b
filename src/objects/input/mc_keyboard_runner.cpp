// Scripts' methods of KEYBOARD.

#include "input/keyboard.h"
#include "objects/input/mc_keyboard.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

Result enable(CMC_Keyboard& keyboard, Call& /*call*/) {
  keyboard.enable(true);
  return {};
}

Result disable(CMC_Keyboard& keyboard, Call& /*call*/) {
  keyboard.enable(false);
  return {};
}

Result setAutoRepeat(CMC_Keyboard& keyboard, Call& call) {
  if (CKeyboard* device = keyboard.getDevice()) device->setAutoRepeat(call.boolean(0));
  return {};
}

// Whether any key is down is answered by a disabled keyboard too.
Result isKeyDown(CMC_Keyboard& keyboard, Call& call) {
  const CKeyboard* device = keyboard.getDevice();
  if (device == nullptr) return Factory::makeBool(false);
  if (!call.has(0)) return Factory::makeBool(device->isAnyKeyPressed());
  return Factory::makeBool(keyboard.isEnabled() && device->isKeyPressed(call.text(0)));
}

Result getLatestKey(CMC_Keyboard& keyboard, Call& /*call*/) {
  return Factory::makeString(keyboard.getLatestKey());
}

Result isEnabled(CMC_Keyboard& keyboard, Call& /*call*/) { return Factory::makeBool(keyboard.isEnabled()); }

// Nothing ever enters the list of keys that this would hand over.
Result getLatestKeys(CMC_Keyboard& /*keyboard*/, Call& /*call*/) { return {}; }

constexpr Method kMethods[] = {
    {1, "ENABLE", 0, 0, method<enable>},
    {2, "DISABLE", 0, 0, method<disable>},
    {3, "SETAUTOREPEAT", 1, 1, method<setAutoRepeat>},
    {4, "ISKEYDOWN", 0, 1, method<isKeyDown>},
    {6, "GETLATESTKEY", 0, 0, method<getLatestKey>},
    {7, "ISENABLED", 0, 0, method<isEnabled>},
    {8, "GETLATESTKEYS", 1, 2, method<getLatestKeys>},
};

}  // namespace

std::span<const Method> methods::keyboard() { return kMethods; }

}  // namespace footlight
