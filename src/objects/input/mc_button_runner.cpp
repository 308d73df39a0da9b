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
     "Sets the place that hears the mouse: four numbers in pixels, or the box of a picture by its name."},
    {2, "ENABLE", "", method<onButton<with<&CButton::Enable, true>>>,
     "Shows its standard picture and lets it hear the mouse."},
    {3, "DISABLE", "", method<onButton<with<&CButton::Enable, false>>>,
     "Hides its pictures; it hears nothing."},
    {4, "ENABLEDRAGGING", "", method<onButton<with<&CButton::EnableDragging, true>>>, "Lets it be dragged."},
    {5, "DISABLEDRAGGING", "", method<onButton<with<&CButton::EnableDragging, false>>>,
     "Lets it be dragged no more."},
    {6, "DISABLEBUTVISIBLE", "", method<onButton<plain<&CButton::DisableButVisible>>>,
     "Lets it hear nothing; its standard picture stays on the screen."},
    {7, "ACCENT", "picture:name", method<onButton<accent>>,
     "Makes this the current picture and the one that is dragged; the mouse counts over it."},
    {8, "SETSTD", "picture:name, [replaces:bool]", method<onButton<setStd>>,
     "Sets the picture while nothing happens; with FALSE the old one stays on the screen, without it as with "
     "TRUE it goes."},
    {9, "SETONMOVE", "picture:name", method<onButton<setOnMove>>,
     "Sets the picture while the pointer is over it; the sound stays."},
    {10, "SETONCLICK", "picture:name", method<onButton<setOnClick>>,
     "Sets the picture while it is pressed; the sound stays."},
    {11, "SETPRIORITY", "priority:int", method<onButton<setPriority>>,
     "Of those under the pointer the highest hears the mouse; below 0 none does."},
    {12, "GETPRIORITY", "-> int", method<onButton<getPriority>>,
     "Its priority; that of its picture on the screen if the mouse counts over a picture."},
    {13, "GETSTD", "-> text", method<name<&CButton::getStandard>>,
     "The name of the picture while nothing happens."},
    {14, "GETONMOVE", "-> text", method<name<&CButton::GetSOOnMove>>,
     "The name of the picture while the pointer is over it."},
    {15, "GETONCLICK", "-> text", method<name<&CButton::GetSOOnClick>>,
     "The name of the picture while it is pressed."},
    {16, "SYN", "", method<onButton<plain<&CButton::SYN>>>,
     "Looks again whether the pointer, where it stands now, is over it."},
};

constexpr auto kSignals = signalTable<ButtonSignal>({
    {ButtonSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it."},
    {ButtonSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it."},
    {ButtonSignal::onPaused, "ONPAUSED", "Nothing raises it."},
    {ButtonSignal::onClicked, "ONCLICKED", "The left button was pressed over it."},
    {ButtonSignal::onReleased, "ONRELEASED", "The left button was released over it."},
    {ButtonSignal::onAction, "ONACTION", "The left button was released over it, right after ONRELEASED."},
    {ButtonSignal::onStartDragging, "ONSTARTDRAGGING",
     "It begins to be dragged; GETDRAGGEDNAME of the scene knows the picture."},
    {ButtonSignal::onDragging, "ONDRAGGING", "It is dragged further."},
    {ButtonSignal::onEndDragging, "ONENDDRAGGING",
     "It was let go; GETDRAGGEDNAME of the scene still knows the picture."},
});

constexpr Property kProperties[] = {
    {"ACCENT", PropertyKind::name, "", "The picture that takes the place of the current one at the start."},
    {"GFXSTANDARD", PropertyKind::name, "", "The picture while nothing happens."},
    {"GFXONMOVE", PropertyKind::name, "", "The picture while the pointer is over it."},
    {"GFXONCLICK", PropertyKind::name, "", "The picture while it is pressed."},
    {"SNDSTANDARD", PropertyKind::name, "", "A sound that is never played."},
    {"SNDONMOVE", PropertyKind::name, "", "The SOUND that is played when the pointer comes over it."},
    {"SNDONCLICK", PropertyKind::name, "", "The SOUND that is played when it is pressed."},
    {"DRAG", PropertyKind::name, "", "The picture that is dragged; without it the standard one."},
    {"RECT", PropertyKind::rectangle, "",
     "The place that hears the mouse: four numbers in pixels, or the box of a picture by its name; without "
     "it that of the standard picture."},
    {"ENABLE", PropertyKind::boolean, "FALSE", "TRUE shows it and lets it hear the mouse from the start."},
    {"DRAGGABLE", PropertyKind::boolean, "FALSE", "TRUE lets it be dragged from the start."},
    {"PRIORITY", PropertyKind::integer, "0",
     "Of those under the pointer the highest hears the mouse; below 0 none does. A picture in RECT brings "
     "its own."},
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
