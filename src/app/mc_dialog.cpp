#include "app/mc_dialog.h"

#include "script/method_tables.h"

namespace footlight {

CMC_Dialog::CMC_Dialog(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kDialog) {
  initializeBehaviours(container, element);
}

namespace {

bool isPicture(const CMC_Object& object) {
  return object.getType() == type::kImage || object.getType() == type::kAnimo;
}

void reportRefused(const CMC_Object& object) {
  if (diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object,
                         object.getName().str() + " is of a type that a dialog does not take");
}

Result show(CMC_Dialog& dialog, Call& /*call*/) {
  dialog.dialog().show();
  return {};
}

Result hide(CMC_Dialog& dialog, Call& /*call*/) {
  dialog.dialog().hide();
  return {};
}

Result setBackground(CMC_Dialog& dialog, Call& call) {
  CMC_Object* object = call.namedAny(0);
  if (object == nullptr) return {};
  if (isPicture(*object)) {
    dialog.dialog().setBackground(object);
  } else {
    reportRefused(*object);
  }
  return {};
}

Result add(CMC_Dialog& dialog, Call& call) {
  CMC_Object* object = call.namedAny(0);
  if (object == nullptr) return {};
  if (object->getType() == type::kButton) {
    dialog.dialog().addControl(object);
  } else if (isPicture(*object) || object->getType() == type::kText) {
    dialog.dialog().addGraphics(object);
  } else {
    reportRefused(*object);
  }
  return {};
}

constexpr Method kMethods[] = {
    {1, "SHOW", 0, 0, method<show>},
    {2, "HIDE", 0, 0, method<hide>},
    {3, "SETBACKGROUND", 1, 1, method<setBackground>},
    {4, "ADD", 1, 1, method<add>},
};

}  // namespace

std::span<const Method> methods::dialog() { return kMethods; }

}  // namespace footlight
