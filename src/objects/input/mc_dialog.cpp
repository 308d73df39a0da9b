#include "objects/input/mc_dialog.h"

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/input/mc_button.h"
#include "objects/text/mc_text.h"
#include "script/mc_runner.h"

namespace footlight {

CMC_Dialog::CMC_Dialog(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kDialog) {
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (container->getWindow() != nullptr) dialog_.reset(new CXDialog(container->getWindow(), unit, unit));
  initializeBehaviours(container, element);
}

CMC_Dialog::CMC_Dialog(const CMC_Dialog& other) : CMC_Object(other) {
  if (other.dialog_) dialog_.reset(static_cast<CXDialog*>(other.dialog_->clone().release()));
}

std::unique_ptr<CMC_Object> CMC_Dialog::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Dialog(*this));
}

namespace {

void reportRefused(const CMC_Object& object) {
  if (diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object,
                         object.getName().str() + " is of a type that a dialog does not take");
}

// A dialog without a window has methods of no effect.
template <auto F>
Result onDialog(CMC_Dialog& object, Call& call) {
  const Ref<CXDialog> dialog = object.getDialog();
  if (dialog) F(*dialog, call);
  return {};
}

void show(CXDialog& dialog, Call& /*call*/) { dialog.show(); }
void hide(CXDialog& dialog, Call& /*call*/) { dialog.hide(); }

void setBackground(CXDialog& dialog, Call& call) {
  CMC_Object* object = call.namedAny(0);
  if (object == nullptr) return;
  if (const auto* graphic = object_cast<CMC_Graphic>(object)) {
    dialog.setBackground(graphic->getGraphic());
  } else {
    reportRefused(*object);
  }
}

void add(CXDialog& dialog, Call& call) {
  CMC_Object* object = call.namedAny(0);
  if (object == nullptr) return;
  if (const auto* button = object_cast<CMC_Button>(object)) {
    dialog.add(button->getButton());
  } else if (const auto* graphic = object_cast<CMC_Graphic>(object)) {
    dialog.add(graphic->getGraphic());
  } else if (const auto* text = object_cast<CMC_Text>(object)) {
    dialog.add(text->getGraphic());
  } else {
    reportRefused(*object);
  }
}

constexpr Method kMethods[] = {
    {1, "SHOW", "", method<onDialog<show>>, "Shows the pictures and enables the buttons that it holds."},
    {2, "HIDE", "", method<onDialog<hide>>,
     "Hides the pictures that it holds and its background, and disables its buttons."},
    {3, "SETBACKGROUND", "picture:name", method<onDialog<setBackground>>,
     "Sets the IMAGE or ANIMO behind all; its upper 30 pixels drag the dialog."},
    {4, "ADD", "object:name", method<onDialog<add>>,
     "Takes a BUTTON, IMAGE, ANIMO or TEXT in and lifts it above everything that is in no dialog."},
};

}  // namespace

extern constinit const ScriptType kDialogType = {
    .number = type::kDialog,
    .idWord = "DIALOG",
    .stringWord = "DIALOG",
    .definitionWord = "DIALOG",
    .meaning = "Pictures and buttons that are shown, hidden and dragged together.",
    .pass = 6,
    .signals = kSignalsOfAll,
    .methods = kMethods,
    .make = makeFrom<CMC_Dialog>,
};

}  // namespace footlight
