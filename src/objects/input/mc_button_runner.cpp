// Scripts' methods of BUTTON.

#include "gfx/graphics_object.h"
#include "objects/input/mc_button.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

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
    {1, "SETRECT", "left:value, [top:int], [right:int], [bottom:int]", method<onButton<setRect>>,
     "The place that hears the mouse: four numbers, or the box of a picture by its name."},
    {2, "ENABLE", "", method<onButton<with<&CButton::Enable, true>>>, "Shows it and lets it hear the mouse."},
    {3, "DISABLE", "", method<onButton<with<&CButton::Enable, false>>>, "Hides it; it hears nothing."},
    {4, "ENABLEDRAGGING", "", method<onButton<with<&CButton::EnableDragging, true>>>, "It can be dragged."},
    {5, "DISABLEDRAGGING", "", method<onButton<with<&CButton::EnableDragging, false>>>,
     "It cannot be dragged."},
    {6, "DISABLEBUTVISIBLE", "", method<onButton<plain<&CButton::DisableButVisible>>>,
     "It hears nothing but stays on the screen."},
    {7, "ACCENT", "picture:name", method<onButton<accent>>, "Shows this picture with the button."},
    {8, "SETSTD", "picture:name, [shows:bool]", method<onButton<setStd>>,
     "The picture while nothing happens; with FALSE it is not shown at once."},
    {9, "SETONMOVE", "picture:name", method<onButton<setOnMove>>,
     "The picture while the pointer is over it."},
    {10, "SETONCLICK", "picture:name", method<onButton<setOnClick>>, "The picture while it is pressed."},
    {11, "SETPRIORITY", "priority:int", method<onButton<setPriority>>, "Higher ones are asked first."},
    {12, "GETPRIORITY", "-> int", method<onButton<getPriority>>, "Its priority."},
    {13, "GETSTD", "-> text", method<name<&CButton::getStandard>>,
     "The name of the picture while nothing happens."},
    {14, "GETONMOVE", "-> text", method<name<&CButton::GetSOOnMove>>,
     "The name of the picture while the pointer is over it."},
    {15, "GETONCLICK", "-> text", method<name<&CButton::GetSOOnClick>>,
     "The name of the picture while it is pressed."},
    {16, "SYN", "", method<onButton<plain<&CButton::SYN>>>,
     "Puts its pictures where the one that is shown stands."},
};

constexpr auto kSignals = signalTable<ButtonSignal>({
    {ButtonSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it."},
    {ButtonSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it."},
    {ButtonSignal::onPaused, "ONPAUSED", "Nothing raises it."},
    {ButtonSignal::onClicked, "ONCLICKED", "It was pressed."},
    {ButtonSignal::onReleased, "ONRELEASED", "It was released."},
    {ButtonSignal::onAction, "ONACTION", "It was pressed and released over itself."},
    {ButtonSignal::onStartDragging, "ONSTARTDRAGGING", "It begins to be dragged."},
    {ButtonSignal::onDragging, "ONDRAGGING", "It is dragged further."},
    {ButtonSignal::onEndDragging, "ONENDDRAGGING", "It was let go."},
});

constexpr Property kProperties[] = {
    {"ACCENT", PropertyKind::name, "", "A picture that is shown with the button."},
    {"GFXSTANDARD", PropertyKind::name, "", "The picture while nothing happens."},
    {"GFXONMOVE", PropertyKind::name, "", "The picture while the pointer is over it."},
    {"GFXONCLICK", PropertyKind::name, "", "The picture while it is pressed."},
    {"SNDSTANDARD", PropertyKind::name, "", "The sound while nothing happens."},
    {"SNDONMOVE", PropertyKind::name, "", "The sound when the pointer comes over it."},
    {"SNDONCLICK", PropertyKind::name, "", "The sound when it is pressed."},
    {"DRAG", PropertyKind::name, "", "The picture that is dragged; without it the one that is shown."},
    {"RECT", PropertyKind::rectangle, "",
     "The place that hears the mouse: four numbers, or the name of a picture."},
    {"ENABLE", PropertyKind::boolean, "FALSE", "TRUE shows it and lets it hear the mouse."},
    {"DRAGGABLE", PropertyKind::boolean, "FALSE", "TRUE lets it be dragged."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are asked first."},
};

CMC_Object* makeBare(CMC_ObjectsContainer* container, const CXString& name) {
  return CMC_Button::makeBare(container, name).release();
}

}  // namespace

extern constinit const ScriptType kButtonType = {
    .number = type::kButton,
    .idWord = "BUTTON",
    .stringWord = "BUTTON",
    .definitionWord = "BUTTON",
    .meaning = "A place that can be clicked, with pictures and sounds for what the pointer does.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Button>,
    .makeBare = makeBare,
};

}  // namespace footlight
