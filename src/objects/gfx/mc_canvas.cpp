#include "objects/gfx/mc_canvas.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/text/mc_text.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

// Pixels of 32 bits are not drawn on, so such a display shows a canvas of 16.
int bppOf(const CWindow* window) { return window != nullptr && window->GetBpp() == 15 ? 15 : 16; }

}  // namespace

CMC_Canvas::CMC_Canvas(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Surface(container, element, type::kCanvas),
      canvas_(new CCanvas(container->getWindow(),
                          {element->getPropertyIntValue("WIDTH"), element->getPropertyIntValue("HEIGHT")},
                          bppOf(container->getWindow()), element->getPropertyBoolValue("ALPHA"),
                          element->getPropertyBoolValue("BACKGROUND"))) {
  if (screen() != nullptr) screen()->put(canvas_.get(), element->getPropertyIntValue("PRIORITY"));
  initializeBehaviours(container, element);
}

CMC_Canvas::~CMC_Canvas() { CMC_Canvas::unlink(); }

void CMC_Canvas::unlink() {
  if (canvas_ == nullptr) return;
  leaveScreen();
  canvas_.reset();
}

void CMC_Canvas::add(CGraphicsObject* graphic, CMC_Object* object, int priority) {
  if (canvas_ == nullptr) return;
  canvas_->add(graphic, priority);
  const bool belongs =
      object != nullptr && (object->getType() == type::kText || object->getType() == type::kImage);
  if (!belongs) return;
  std::erase_if(belongings_, [&](const auto& other) { return !other || other.get() == object; });
  belongings_.emplace_back(object);
}

void CMC_Canvas::capture(bool endsObjects) {
  const Ref<CMC_Canvas> self(this);
  if (canvas_ != nullptr) canvas_->capture();
  const std::vector<WeakRef<CMC_Object>> belongings = std::move(belongings_);
  belongings_.clear();
  if (!endsObjects) return;
  for (const WeakRef<CMC_Object>& entry : belongings) {
    CMC_Object* object = entry.get();
    CMC_ObjectsContainer* scope = object != nullptr ? object->getScene() : nullptr;
    if (scope != nullptr && scope->removeObject(object)) CMC_Object::destroy(object);
  }
}

}  // namespace footlight
