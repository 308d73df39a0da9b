// Scripts' methods of KEYBOARD.

#include "input/keyboard.h"
#include "objects/input/mc_keyboard.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

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
    {1, "ENABLE", "", method<enable>, "Lets its signals come again."},
    {2, "DISABLE", "", method<disable>, "Lets its signals come no more; ISKEYDOWN of a key gives FALSE."},
    {3, "SETAUTOREPEAT", "on:bool", method<setAutoRepeat>,
     "With TRUE a key that is held is reported again and again, with FALSE once."},
    {4, "ISKEYDOWN", "[key:text] -> bool", method<isKeyDown>,
     "Whether the key of that name is down; without one whether any is, also while it is disabled."},
    {6, "GETLATESTKEY", "-> text", method<getLatestKey>,
     "The last key or character of which a signal came; empty for a key without a name."},
    {7, "ISENABLED", "-> bool", method<isEnabled>, "Whether its signals come."},
    {8, "GETLATESTKEYS", "array:name, [unused:bool]", method<getLatestKeys>,
     "Adds nothing to the ARRAY: no list of keys is kept."},
};

constexpr auto kSignals = signalTable<KeyboardSignal>({
    {KeyboardSignal::onChar, "ONCHAR",
     "A character was typed; as ONCHAR^X, with the character, if that is bound."},
    {KeyboardSignal::onKeyDown, "ONKEYDOWN",
     "A key was pressed; as ONKEYDOWN^KEY by its name, such as ENTER, if that is bound."},
    {KeyboardSignal::onKeyUp, "ONKEYUP", "A key was released; as ONKEYUP^KEY by its name if that is bound."},
});

}  // namespace

extern constinit const ScriptType kKeyboardType = {
    .number = type::kKeyboard,
    .idWord = "KEYBOARD",
    .stringWord = "KEYBOARD",
    .definitionWord = "KEYBOARD",
    .meaning = "The keyboard.",
    .pass = 6,
    .isOnceAChain = true,
    .signals = kSignals,
    .methods = kMethods,
    .make = makeFrom<CMC_Keyboard>,
};

}  // namespace footlight
