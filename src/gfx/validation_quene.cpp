#include "gfx/validation_quene.h"

#include <algorithm>

namespace footlight {

void CValidationQuene::add(CGraphicsObject* object, int priority, int flags) {
  const auto place =
      std::ranges::upper_bound(elements_, priority, {}, [](const auto& e) { return e->priority; });
  elements_.insert(place, std::make_unique<CValidationElement>(object, priority, flags));
}

int CValidationQuene::getIndex(const CGraphicsObject* object) const {
  if (object == nullptr) return -1;
  const auto found =
      std::ranges::find_if(elements_, [&](const auto& e) { return e->object.get() == object; });
  return found == elements_.end() ? -1 : static_cast<int>(found - elements_.begin());
}

CValidationElement* CValidationQuene::find(const CGraphicsObject* object) const {
  const int index = getIndex(object);
  return index < 0 ? nullptr : elements_[static_cast<std::size_t>(index)].get();
}

void CValidationQuene::remove(const CGraphicsObject* object) {
  if (const int index = getIndex(object); index >= 0) elements_.erase(elements_.begin() + index);
}

void CValidationQuene::removeAll() { elements_.clear(); }

CValidationElement* CValidationQuene::first() {
  cursor_ = 0;
  return atCursor();
}

CValidationElement* CValidationQuene::next() {
  cursor_ = std::min(cursor_ + 1, getSize());
  return atCursor();
}

CValidationElement* CValidationQuene::prev() {
  cursor_ = std::max(cursor_ - 1, -1);
  return atCursor();
}

CValidationElement* CValidationQuene::atCursor() const {
  const bool inside = cursor_ >= 0 && cursor_ < getSize();
  return inside ? elements_[static_cast<std::size_t>(cursor_)].get() : nullptr;
}

void CValidationQuene::dropEnded() {
  std::erase_if(elements_, [](const auto& element) { return !element->object; });
}

std::vector<WeakRef<CGraphicsObject>> CValidationQuene::objects() {
  dropEnded();
  std::vector<WeakRef<CGraphicsObject>> living;
  living.reserve(elements_.size());
  for (const auto& element : elements_) living.push_back(element->object);
  return living;
}

}  // namespace footlight
