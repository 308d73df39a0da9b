#include "objects/text/mc_edit_box.h"

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "files/archive.h"
#include "gfx/graphics_object.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/text/color_arguments.h"
#include "objects/text/mc_font.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

CMC_EditBox::CMC_EditBox(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kEditBox),
      fontName_(element->getPropertyValue("FONT")),
      cursorName_(element->getPropertyValue("CURSOR")),
      priority_(element->getPropertyIntValue("PRIORITY")) {
  const CGraphicsObject* area = container->getGraphicsObject(element->getPropertyValue("RECT"));
  makeBox(container, area != nullptr ? area->GetBoundingBox() : element->getPropertyRectValue("RECT"),
          priority_, element->getPropertyValue("TEXT"));
  initializeBehaviours(container, element);
}

CMC_EditBox::CMC_EditBox(const CMC_EditBox& other)
    : CMC_Object(other),
      fontName_(other.fontName_),
      cursorName_(other.cursorName_),
      priority_(other.priority_) {
  const CEditBox6* box = other.getEditBox();
  if (box != nullptr) makeBox(other.getScene(), box->getBoundingRect(), priority_, box->getText());
}

void CMC_EditBox::makeBox(const CMC_ObjectsContainer* scope, const CXRect& rect, int priority,
                          const CXString& text) {
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (scope == nullptr || unit == nullptr || unit->getWindow() == nullptr) return;
  CEditBox6* box = unit->addEditBox(CMC_Font::fontOf(scope, fontName_), rect, priority, text);
  editBox_ = box;
  box->addNotifier(this);
  if (CGraphicsObject* cursor = scope->getGraphicsObject(cursorName_)) box->setCursor(cursor);
}

void CMC_EditBox::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  const CEditBox6* box = getEditBox();
  CXRect rect = box != nullptr ? box->getBoundingRect() : CXRect();
  CXString text = box != nullptr ? box->getText() : CXString();
  archive.pass(fontName_);
  archive.pass(rect);
  archive.pass(text);
  archive.pass(cursorName_);
  if (archive.isStoring() || archive.hasFailed()) return;
  CMC_EditBox::unlink();
  makeBox(getScene(), rect, priority_, text);
}

// The end of the box itself raises nothing.
void CMC_EditBox::unlink() {
  CEditBox6* box = editBox_.get();
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (box == nullptr || unit == nullptr) return;
  box->removeNotifier(this);
  unit->removeEditBox(box);
}

std::unique_ptr<CMC_Object> CMC_EditBox::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_EditBox(*this));
}

namespace {

using Factory = CMC_VariableFactory;

// A box that has gone has methods of no effect.
template <auto F>
Result onBox(CMC_EditBox& object, Call& call) {
  const Ref<CEditBox6> box = object.getEditBox();
  if (box) F(*box, call);
  return {};
}

CXPoint pointOf(const Call& call) { return {call.integer(0), call.integer(1)}; }

void setText(CEditBox6& box, Call& call) { box.setText(call.text(0)); }
void activate(CEditBox6& box, Call& /*call*/) { box.activate(true); }
void deactivate(CEditBox6& box, Call& /*call*/) { box.activate(false); }
void enable(CEditBox6& box, Call& /*call*/) { box.enable(true); }
void disable(CEditBox6& box, Call& /*call*/) { box.enable(false); }
void addText(CEditBox6& box, Call& call) { box.setText(box.getText() + call.text(0)); }
void move(CEditBox6& box, Call& call) { box.move(pointOf(call)); }
void setPosition(CEditBox6& box, Call& call) { box.setPosition(pointOf(call)); }
void setPriority(CEditBox6& box, Call& call) { box.setPriority(call.integer(0)); }
void setCursorPos(CEditBox6& box, Call& call) { box.setCursorPos(call.integer(0)); }
void setRect(CEditBox6& box, Call& call) { box.setRect(rectangleArgument(call, 0)); }
void setColor(CEditBox6& box, Call& call) {
  box.setColor(colorArgument(call, 0, CMC_Scene::getDefUnit()->getWindow()));
}
void setReadOnly(CEditBox6& box, Call& call) { box.setReadOnly(call.boolean(0)); }
void enableNewLine(CEditBox6& box, Call& call) { box.setNoNewLine(!call.boolean(0)); }

Result getText(CMC_EditBox& object, Call& /*call*/) {
  const CEditBox6* box = object.getEditBox();
  return Factory::makeString(box != nullptr ? box->getText() : CXString());
}

constexpr auto kSignals = signalTable<EditBoxSignal>({
    {EditBoxSignal::onFocusOn, "ONFOCUSON", "What is typed goes here."},
    {EditBoxSignal::onFocusOff, "ONFOCUSOFF", "What is typed goes here no more."},
    {EditBoxSignal::onChanged, "ONCHANGED", "A character was typed into it; not for what is deleted."},
    {EditBoxSignal::onEnter, "ONENTER", "Enter was pressed and has begun a new line."},
    {EditBoxSignal::onEsc, "ONESC", "Escape was pressed."},
});

constexpr Property kProperties[] = {
    {"RECT", PropertyKind::rectangle, "0,0,0,0",
     "The area of the text, in pixels of the screen; or the name of a picture whose area it takes."},
    {"PRIORITY", PropertyKind::integer, "0", "Of the text on the screen: higher ones lie above."},
    {"TEXT", PropertyKind::text, "", "The text at first; | begins a new line."},
    {"FONT", PropertyKind::name, "", "The FONT of its letters."},
    {"CURSOR", PropertyKind::name, "", "The picture that blinks where the next letter goes."},
};

constexpr Method kMethods[] = {
    {1, "SETTEXT", "text:text", method<onBox<setText>>, "Replaces the text; the caret stays."},
    {2, "GETTEXT", "-> text", method<getText>,
     "The text, with | for the ends of lines, @ for < and $ for >."},
    {3, "ACTIVE", "", method<onBox<activate>>,
     "What is typed goes here from now on, at the end of the text."},
    {4, "DEACTIVE", "", method<onBox<deactivate>>, "What is typed goes here no more."},
    {5, "ENABLE", "", method<onBox<enable>>, "Takes clicks and keys again."},
    {6, "DISABLE", "", method<onBox<disable>>, "Takes neither clicks nor keys."},
    {7, "ADDTEXT", "text:text", method<onBox<addText>>, "Adds to the end of the text; the caret stays."},
    {8, "MOVE", "x:int, y:int", method<onBox<move>>, "Moves it by so many pixels."},
    {9, "SETPOSITION", "x:int, y:int", method<onBox<setPosition>>, "Moves its left upper corner there."},
    {10, "SETPRIORITY", "priority:int", method<onBox<setPriority>>,
     "Sets the priority of the text on the screen."},
    {11, "SETCURSORPOS", "position:int", method<onBox<setCursorPos>>,
     "Sets the caret before that letter, from 0."},
    {12, "SETRECT", "left:int, top:int, right:int, bottom:int", method<onBox<setRect>>,
     "Gives it another area."},
    {13, "SETCOLOR", "red:int, green:int, blue:int", method<onBox<setColor>>,
     "Colours the letters; each part is 0 to 255."},
    {14, "SETREADONLY", "on:bool", method<onBox<setReadOnly>>, "With TRUE the keys have no effect."},
    {15, "ENABLENL", "on:bool", method<onBox<enableNewLine>>,
     "With FALSE the text stays on one line: Enter does nothing and a full box takes no more."},
};

}  // namespace

extern constinit const ScriptType kEditBoxType = {
    .number = type::kEditBox,
    .idWord = "EDITBOX",
    .definitionWord = "EDITBOX",
    .meaning = "A box to type in.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_EditBox>,
};

}  // namespace footlight
