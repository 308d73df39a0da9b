#include "gfx/composite.h"

#include <unordered_set>

namespace footlight {

bool closesCircle(const CGraphicsObject& whole, CGraphicsObject& part) {
  std::unordered_set<const CGraphicsObject*> seen;
  std::vector<CGraphicsObject*> open = {&part};
  while (!open.empty()) {
    CGraphicsObject* next = open.back();
    open.pop_back();
    if (next == &whole) return true;
    if (next == nullptr || !seen.insert(next).second) continue;
    const std::vector<CGraphicsObject*> parts = next->drawnParts();
    open.insert(open.end(), parts.begin(), parts.end());
  }
  return false;
}

CompositeGuard::CompositeGuard() {
  if (nested++ == 0) drawn = 0;
  isAllowed_ = depth_ && drawn < limits::kCompositesInOne;
  if (isAllowed_) {
    ++drawn;
  } else if (drawn == limits::kCompositesInOne) {
    limitHit("pictures that draw pictures");
    ++drawn;
  }
}

DrawnElsewhere::DrawnElsewhere(CGraphicsObject* object, CXPoint place, CGraphicsObject* destiny)
    : object_(object),
      clip_(object->GetClippingRect()),
      place_(object->exchangePlace(place - object->getAnchor())),
      destiny_(object->getDestiny()) {
  object->SetDestiny(destiny);
}

DrawnElsewhere::~DrawnElsewhere() {
  object_->SetClippingRect(clip_);
  object_->exchangePlace(place_);
  object_->SetDestiny(destiny_.get());
}

}  // namespace footlight
