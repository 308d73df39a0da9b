#include "objects/gfx/mc_virtual_graphics_object.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_animo.h"
#include "script/mc_runner.h"
#include "script/melement.h"

namespace footlight {

CMC_VirtualGraphicsObject::CMC_VirtualGraphicsObject(CMC_ObjectsContainer* container)
    : CMC_Graphic(container, type::kVirtualGraphicsObject),
      picture_(new CVirtualGraphicsObject(container->getWindow())) {
  if (screen() != nullptr) screen()->put(picture_.get(), 0);
}

CMC_VirtualGraphicsObject::CMC_VirtualGraphicsObject(CMC_ObjectsContainer* container,
                                                     const CMElement* element)
    : CMC_Graphic(container, element, type::kVirtualGraphicsObject),
      sourceName_(element->getPropertyValue("SOURCE")),
      maskName_(element->getPropertyValue("MASK")),
      picture_(new CVirtualGraphicsObject(container->getWindow())) {
  setSource(container, sourceName_);
  setMask(container, maskName_);
  picture_->Visible(element->getPropertyBoolValue("VISIBLE"));
  monitorIfWanted();
  if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr)
    screen()->put(picture_.get(), getPriority());
  initializeBehaviours(container, element);
}

CMC_VirtualGraphicsObject::~CMC_VirtualGraphicsObject() { CMC_VirtualGraphicsObject::unlink(); }

void CMC_VirtualGraphicsObject::init() {
  if (picture_ != nullptr && picture_->source() == nullptr) setSource(getScene(), sourceName_);
  if (picture_ != nullptr && picture_->mask() == nullptr) setMask(getScene(), maskName_);
  CMC_Graphic::init();
}

void CMC_VirtualGraphicsObject::unlink() {
  if (picture_ == nullptr) return;
  removeCollisionsMonitoring();
  picture_->Invalidate();
  if (screen() != nullptr) screen()->remove(picture_.get());
  forgetMouse();
  picture_.reset();
}

void CMC_VirtualGraphicsObject::setSource(const CMC_ObjectsContainer* scope, const CXString& name) {
  CGraphicsObject* source = scope != nullptr ? scope->getGraphicsObject(name) : nullptr;
  if (source != nullptr && picture_ != nullptr) picture_->setSource(source);
}

void CMC_VirtualGraphicsObject::setMask(const CMC_ObjectsContainer* scope, const CXString& name) {
  if (scope == nullptr || picture_ == nullptr) return;
  const auto* animo = scope->find<CMC_Animo>(name.view());
  CGraphicsObject* mask = animo != nullptr && animo->getAnimo() != nullptr ? animo->getAnimo()->getDrawn()
                                                                           : scope->getGraphicsObject(name);
  if (mask != nullptr) picture_->setMask(mask);
}

void CMC_VirtualGraphicsObject::setAsButton(bool asButton, bool changeCursor) {
  asButton_ = asButton;
  changeCursor_ = changeCursor;
}

// Scripts' methods

namespace {

using Factory = CMC_VariableFactory;
using namespace graphics_methods;

template <auto F>
Result onPicture(CMC_VirtualGraphicsObject& object, Call& call) {
  return onGraphic<F>(object.getPicture(), call);
}

template <Result (*F)(CMC_Graphic&, Call&)>
Result asGraphic(CMC_VirtualGraphicsObject& object, Call& call) {
  return F(object, call);
}

void show(CVirtualGraphicsObject& picture) { picture.Visible(true); }
void hide(CVirtualGraphicsObject& picture) { picture.Visible(false); }

Result setPosition(CVirtualGraphicsObject& picture, Call& call) {
  picture.Invalidate();
  picture.SetPosition(point(call, 0));
  picture.Invalidate();
  return {};
}

Result setSource(CMC_VirtualGraphicsObject& object, Call& call) {
  object.setSource(call.scope(), call.text(0));
  return {};
}

Result setMask(CMC_VirtualGraphicsObject& object, Call& call) {
  object.setMask(call.scope(), call.text(0));
  return {};
}

Result isInside(CVirtualGraphicsObject& picture, Call& call) {
  return Factory::makeBool(picture.isInside(call.integer(0), call.integer(1), call.boolean(2)));
}

Result setAsButton(CMC_VirtualGraphicsObject& object, Call& call) {
  object.setAsButton(true, call.boolean(1));
  return {};
}

constexpr Method kMethods[] = {
    {1, "SHOW", "", method<onPicture<show>>, "Shows it."},
    {2, "HIDE", "", method<onPicture<hide>>, "Hides it."},
    {3, "SETPOSITION", "x:int, y:int", method<onPicture<setPosition>>,
     "Puts its left upper corner there, in pixels of the screen."},
    {4, "MOVE", "dx:int, dy:int", method<onPicture<move>>, "Moves it by so many pixels."},
    {5, "SETSOURCE", "picture:name", method<setSource>, "The picture whose pixels it shows."},
    {6, "SETMASK", "picture:name", method<setMask>,
     "The picture through whose alpha it shows them; of an ANIMO the one that it shows now."},
    {7, "CLEARCLIPPING", "", method<onPicture<clearClipping>>, "Draws all of it again."},
    {8, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onPicture<setClipping>>,
     "Draws only what lies within: four numbers in pixels of the screen, or the box of a picture by its "
     "name."},
    {9, "GETPOSITIONX", "-> int", method<onPicture<positionX>>, "Its left edge, in pixels of the screen."},
    {10, "GETPOSITIONY", "-> int", method<onPicture<positionY>>, "Its upper edge, in pixels of the screen."},
    {11, "GETWIDTH", "-> int", method<onPicture<width>>, "Its width, in pixels."},
    {12, "GETHEIGHT", "-> int", method<onPicture<height>>, "Its height, in pixels."},
    {13, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onPicture<isNear>>,
     "Whether at least so many percent of it lie within a picture, by its name and the percent, or within a "
     "rectangle, by four numbers and the percent."},
    {14, "ISINSIDE", "x:int, y:int, alpha:bool -> bool", method<onPicture<isInside>>,
     "Whether the point of the screen lies in it; with TRUE only where it is not transparent."},
    {15, "MONITORCOLLISION", "alpha:bool", method<asGraphic<monitorCollision>>,
     "Watches for collisions: of boxes with FALSE, of pixels with TRUE."},
    {16, "REMOVEMONITORCOLLISION", "", method<asGraphic<removeMonitorCollision>>,
     "Watches for collisions no more."},
    {17, "SETPRIORITY", "priority:int", method<onPicture<setPriority>>,
     "Higher ones are drawn over lower ones."},
    {18, "INVALIDATE", "", method<onPicture<invalidate>>, "Draws it anew with the next frame."},
    {19, "ISVISIBLE", "-> bool", method<onPicture<isVisible>>, "Whether it is shown."},
    {20, "SETASBUTTON", "on:bool, cursor:bool", method<setAsButton>,
     "As that of IMAGE; it has no signals of the mouse."},
};

constexpr auto kProperties = std::to_array<Property>({
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at the start."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it at the start."},
    {"MONITORCOLLISION", PropertyKind::boolean, "FALSE", "TRUE watches for collisions of boxes."},
    {"MONITORCOLLISIONALPHA", PropertyKind::boolean, "FALSE", "TRUE watches for collisions of pixels."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are drawn over lower ones."},
    {"SOURCE", PropertyKind::name, "", "The picture whose pixels it shows."},
    {"MASK", PropertyKind::name, "", "The picture through whose alpha it shows them."},
    {"ASBUTTON", PropertyKind::boolean, "FALSE", "As that of IMAGE; it has no signals of the mouse."},
});

}  // namespace

extern constinit const ScriptType kVirtualGraphicsObjectType = {
    .number = type::kVirtualGraphicsObject,
    .idWord = "VIRTUAL_GRAPHICSOBJECT",
    .definitionWord = "VIRTUALGRAPHICSOBJECT",
    .meaning = "A picture seen through a mask.",
    .pass = 5,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_VirtualGraphicsObject>,
};

}  // namespace footlight
