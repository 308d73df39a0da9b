#include "objects/gfx/mc_scroll.h"

#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "script/mc_runner.h"
#include "script/melement.h"

namespace footlight {

CMC_Scroll::CMC_Scroll(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kScroll),
      window_(container->getWindow()),
      viewport_(element->getPropertyRectValue("VIEWPORT")) {
  initializeBehaviours(container, element);
}

void CMC_Scroll::invalidateScreen() const {
  if (window_ != nullptr) window_->Invalidate();
}

void CMC_Scroll::cut(CGraphicsObject& object) const {
  const CXRect part = object.GetBoundingBox().Common(viewport_);
  if (part.IsEmpty()) {
    if (object.isVisible()) object.Visible(false);
    return;
  }
  object.SetClippingRect(part - object.GetPosition());
  if (!object.isVisible()) object.Visible(true);
}

// The screen first: what is all dirty takes the changes of many pictures at no cost.
void CMC_Scroll::cutAll(CXPoint step) {
  invalidateScreen();
  const std::vector<WeakRef<CGraphicsObject>> snapshot = objects_;
  for (const WeakRef<CGraphicsObject>& entry : snapshot) {
    const Ref<CGraphicsObject> object = entry.get();
    if (!object) continue;
    object->SetClippingRect({});
    if (step != CXPoint()) object->Move(step);
    cut(*object);
  }
  std::erase_if(objects_, [](const auto& entry) { return !entry; });
}

void CMC_Scroll::add(CGraphicsObject* object) {
  object->SetClippingRect({});
  cut(*object);
  invalidateScreen();
  objects_.emplace_back(object);
}

void CMC_Scroll::remove(CGraphicsObject* object) {
  const auto taken = std::erase_if(objects_, [&](const auto& entry) { return entry.get() == object; });
  if (taken > 0) object->SetClippingRect({});
}

void CMC_Scroll::scroll(int dx, int dy) {
  offset_ = offset_ + CXPoint(dx, dy);
  cutAll({dx, dy});
}

void CMC_Scroll::setViewport(const CXRect& viewport) {
  viewport_ = viewport;
  cutAll({});
}

// Each is cut as it was: both have moved alike.
void CMC_Scroll::move(int dx, int dy) {
  viewport_ += CXPoint(dx, dy);
  invalidateScreen();
  const std::vector<WeakRef<CGraphicsObject>> snapshot = objects_;
  for (const WeakRef<CGraphicsObject>& entry : snapshot) {
    if (const Ref<CGraphicsObject> object = entry.get(); object) object->Move(dx, dy);
  }
}

// Scripts' methods

namespace {

Result add(CMC_Scroll& scroll, Call& call) {
  if (CGraphicsObject* object = graphicsArgument(call, 0)) scroll.add(object);
  return {};
}

Result remove(CMC_Scroll& scroll, Call& call) {
  if (CGraphicsObject* object = graphicsArgument(call, 0)) scroll.remove(object);
  return {};
}

Result scrollUp(CMC_Scroll& scroll, Call& call) {
  scroll.scroll(0, wrap_negate(call.integer(0)));
  return {};
}

Result scrollDown(CMC_Scroll& scroll, Call& call) {
  scroll.scroll(0, call.integer(0));
  return {};
}

Result scrollLeft(CMC_Scroll& scroll, Call& call) {
  scroll.scroll(wrap_negate(call.integer(0)), 0);
  return {};
}

Result scrollRight(CMC_Scroll& scroll, Call& call) {
  scroll.scroll(call.integer(0), 0);
  return {};
}

Result setViewport(CMC_Scroll& scroll, Call& call) {
  scroll.setViewport(rectangleArgument(call, 0));
  return {};
}

Result moveViewport(CMC_Scroll& scroll, Call& call) {
  scroll.moveViewport(call.integer(0), call.integer(1));
  return {};
}

Result move(CMC_Scroll& scroll, Call& call) {
  scroll.move(call.integer(0), call.integer(1));
  return {};
}

constexpr Method kMethods[] = {
    {1, "ADD", "picture:name", method<add>,
     "Takes a picture in, shows as much of it as lies in the viewport and moves it with the others."},
    {2, "REMOVE", "picture:name", method<remove>, "Lets a picture go; all of it is drawn again."},
    {3, "SCROLLUP", "pixels:int", method<scrollUp>, "Moves the pictures up."},
    {4, "SCROLLDOWN", "pixels:int", method<scrollDown>, "Moves the pictures down."},
    {5, "SCROLLLEFT", "pixels:int", method<scrollLeft>, "Moves the pictures to the left."},
    {6, "SCROLLRIGHT", "pixels:int", method<scrollRight>, "Moves the pictures to the right."},
    {7, "SETVIEWPORT", "left:int, top:int, right:int, bottom:int", method<setViewport>,
     "Sets where the pictures are seen, in pixels of the screen."},
    {8, "MOVEVIEWPORT", "dx:int, dy:int", method<moveViewport>,
     "Moves the place where the pictures are seen; they stay."},
    {9, "MOVE", "dx:int, dy:int", method<move>, "Moves the viewport and the pictures together."},
};

constexpr auto kSignals = joined(kSignalsOfAll, std::to_array<Signal>({
                                                    {"ONTOP", "Nothing raises it."},
                                                    {"ONBOTTOM", "Nothing raises it."},
                                                    {"ONLEFT", "Nothing raises it."},
                                                    {"ONRIGHT", "Nothing raises it."},
                                                }));

constexpr auto kProperties = std::to_array<Property>({
    {"VIEWPORT", PropertyKind::rectangle, "0,0,0,0", "Where the pictures are seen, in pixels of the screen."},
});

}  // namespace

extern constinit const ScriptType kScrollType = {
    .number = type::kScroll,
    .idWord = "SCROLL",
    .definitionWord = "SCROLL",
    .meaning = "Pictures that are moved together.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Scroll>,
};

}  // namespace footlight
