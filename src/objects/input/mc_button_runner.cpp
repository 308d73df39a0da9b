// Scripts' methods of BUTTON.

#include "gfx/graphics_object.h"
#include "objects/input/mc_button.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// An object without a control has methods of no effect.
template <Result (*kMethod)(CButton&, Call&)>
Result onButton(CMC_Button& object, Call& call) {
  const Ref<CButton> button = object.getButton();
  return button ? kMethod(*button, call) : Result();
}

template <void (CButton::*kMethod)()>
Result plain(CButton& button, Call& /*call*/) {
  (button.*kMethod)();
  return {};
}

template <void (CButton::*kMethod)(bool), bool kOn>
Result with(CButton& button, Call& /*call*/) {
  (button.*kMethod)(kOn);
  return {};
}

CGraphicsObject* picture(const Call& call) { return call.scope()->getGraphicsObject(call.text(0)); }

Result setRect(CButton& button, Call& call) {
  if (call.count() == 1) {
    const CGraphicsObject* graphics = picture(call);
    button.SetActiveRect(graphics != nullptr ? graphics->GetBoundingBox() : CXRect());
  } else {
    button.SetActiveRect({call.integer(0), call.integer(1), call.integer(2), call.integer(3)});
  }
  return {};
}

Result accent(CButton& button, Call& call) {
  button.Accent(picture(call));
  return {};
}

Result setStd(CButton& button, Call& call) {
  button.Set(picture(call), !call.has(1) || call.boolean(1));
  return {};
}

Result setOnMove(CButton& button, Call& call) {
  button.SetOnMove(picture(call), button.getSoundOnMove());
  return {};
}

Result setOnClick(CButton& button, Call& call) {
  button.SetOnClick(picture(call), button.getSoundOnClick());
  return {};
}

Result setPriority(CButton& button, Call& call) {
  button.setPriority(call.integer(0));
  return {};
}

Result getPriority(CButton& button, Call& /*call*/) { return Factory::makeInteger(button.getPriority()); }

template <CGraphicsObject* (CButton::*kPicture)() const>
Result name(CMC_Button& object, Call& /*call*/) {
  const CButton* button = object.getButton();
  if (button == nullptr) return {};
  return Factory::makeString(object.getScene()->getGraphicsObjectName((button->*kPicture)(), true));
}

constexpr Method kMethods[] = {
    {1, "SETRECT", 1, 4, method<onButton<setRect>>},
    {2, "ENABLE", 0, 0, method<onButton<with<&CButton::Enable, true>>>},
    {3, "DISABLE", 0, 0, method<onButton<with<&CButton::Enable, false>>>},
    {4, "ENABLEDRAGGING", 0, 0, method<onButton<with<&CButton::EnableDragging, true>>>},
    {5, "DISABLEDRAGGING", 0, 0, method<onButton<with<&CButton::EnableDragging, false>>>},
    {6, "DISABLEBUTVISIBLE", 0, 0, method<onButton<plain<&CButton::DisableButVisible>>>},
    {7, "ACCENT", 1, 1, method<onButton<accent>>},
    {8, "SETSTD", 1, 2, method<onButton<setStd>>},
    {9, "SETONMOVE", 1, 1, method<onButton<setOnMove>>},
    {10, "SETONCLICK", 1, 1, method<onButton<setOnClick>>},
    {11, "SETPRIORITY", 1, 1, method<onButton<setPriority>>},
    {12, "GETPRIORITY", 0, 0, method<onButton<getPriority>>},
    {13, "GETSTD", 0, 0, method<name<&CButton::getStandard>>},
    {14, "GETONMOVE", 0, 0, method<name<&CButton::GetSOOnMove>>},
    {15, "GETONCLICK", 0, 0, method<name<&CButton::GetSOOnClick>>},
    {16, "SYN", 0, 0, method<onButton<plain<&CButton::SYN>>>},
};

}  // namespace

std::span<const Method> methods::button() { return kMethods; }

}  // namespace footlight
