#include "script/object_factory.h"

#include <algorithm>

#include "objects/data/mc_array.h"
#include "objects/gfx/mc_animo.h"
#include "objects/gfx/mc_canvas_observer.h"
#include "objects/gfx/mc_image.h"
#include "objects/input/mc_button.h"
#include "objects/input/mc_dialog.h"
#include "objects/input/mc_joystick.h"
#include "objects/input/mc_keyboard.h"
#include "objects/input/mc_mouse.h"
#include "objects/sound/mc_sound.h"
#include "objects/system/mc_timer.h"
#include "script/mc_behaviour.h"
#include "script/mc_class.h"
#include "script/mc_condition.h"
#include "script/mc_expression.h"
#include "script/mc_groupped.h"
#include "script/mc_objects_container.h"
#include "script/mc_structure.h"
#include "script/mc_variable.h"
#include "script/melement.h"

namespace footlight {

namespace {

using Maker = CMC_Object* (*)(CMC_ObjectsContainer*, const CMElement*);

template <class T>
CMC_Object* make(CMC_ObjectsContainer* container, const CMElement* element) {
  return new T(container, element);
}

struct MakerRow {
  int type;
  Maker maker;
};
constexpr MakerRow kMakers[] = {
    {type::kBehaviour, make<CMC_Behaviour>},
    {type::kBool, make<CMC_Bool>},
    {type::kDouble, make<CMC_Double>},
    {type::kInteger, make<CMC_Integer>},
    {type::kString, make<CMC_String>},
    {type::kCondition, make<CMC_Condition>},
    {type::kComplexCondition, make<CMC_ComplexCondition>},
    {type::kExpression, make<CMC_Expression>},
    {type::kStructure, make<CMC_Structure>},
    {type::kClass, make<CMC_Class>},
    {type::kAnimo, make<CMC_Animo>},
    {type::kImage, make<CMC_Image>},
    {type::kCanvasObserver, make<CMC_CanvasObserver>},
    {type::kButton, make<CMC_Button>},
    {type::kSound, make<CMC_Sound>},
    {type::kJoystick, make<CMC_Joystick>},
    {type::kMouse, make<CMC_Mouse>},
    {type::kKeyboard, make<CMC_Keyboard>},
    {type::kArray, make<CMC_Array>},
    {type::kTimer, make<CMC_Timer>},
    {type::kGroup, make<CMC_Groupped>},
    {type::kDialog, make<CMC_Dialog>},
};

// Properties that the type does not read. A type whose properties the table does not hold may have any.
void reportProperties(const CMElement& element, const TypeDescription& description) {
  for (const CMProperty* property : element.properties()) {
    const std::string_view name = property->getName();
    const auto isName = [&name](const char* known) { return name == known; };
    const auto begins = [&name](const char* signal) { return name.starts_with(signal); };
    const auto& signals = description.signals;
    const auto& properties = description.properties;
    const bool isKnown = name == "TYPE" || std::any_of(signals.begin(), signals.end(), begins) ||
                         (properties.empty() && !name.starts_with("ON")) ||
                         std::any_of(properties.begin(), properties.end(), isName);
    if (isKnown) continue;
    diagnose::report(diagnose::Group::definition, element.getName(), name,
                     std::string("no such property of ") + description.definitionWord, property->origin());
  }
}

}  // namespace

CMC_PlainObject::CMC_PlainObject(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type) {
  initializeBehaviours(container, element);
}

CMC_Object* makeObject(CMC_ObjectsContainer* container, const CMElement* element,
                       const TypeDescription& description) {
  const diagnose::PlaceGuard place(element->origin());
  if (diagnose::isOn()) reportProperties(*element, description);
  for (const MakerRow& row : kMakers) {
    if (row.type == description.number) return row.maker(container, element);
  }
  return new CMC_PlainObject(container, element, description.number);
}

void createBareObject(CMC_ObjectsContainer* scope, const CXString& word, const CXString& name) {
  if (scope == nullptr) return;
  std::unique_ptr<CMC_Object> made;
  if (word == "IMAGE") made = std::make_unique<CMC_Image>(scope);
  if (word == "ANIMO") made = std::make_unique<CMC_Animo>(scope);
  if (word == "BUTTON" && scope->getWindow() != nullptr) made = CMC_Button::makeBare(scope, name);
  if (word == "SOUND") made = std::make_unique<CMC_Sound>(scope);
  if (!made) {
    if (diagnose::isOn())
      diagnose::reportCall(diagnose::Group::arguments, "no object is made of the word " + word.str());
    return;
  }
  made->setName(name);
  scope->addObject(made.release());
}

}  // namespace footlight
