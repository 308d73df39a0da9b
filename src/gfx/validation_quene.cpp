#include "gfx/validation_quene.h"

#include <algorithm>
#include <utility>

namespace footlight {

void CValidationQuene::add(CGraphicsObject* object, int priority, int flags) {
  const auto place =
      std::ranges::upper_bound(elements_, priority, {}, [](const auto& e) { return e->priority; });
  const auto added =
      elements_.insert(place, std::make_unique<CValidationElement>(object, priority, flags, added_++));
  known_[object] = added->get();
}

int CValidationQuene::getIndex(const CGraphicsObject* object) const {
  const CValidationElement* element = find(object);
  if (element == nullptr) return -1;
  closeUp();
  const auto found =
      std::ranges::lower_bound(elements_, std::pair(element->priority, element->number), {},
                               [](const auto& e) { return std::pair(e->priority, e->number); });
  return static_cast<int>(found - elements_.begin());
}

CValidationElement* CValidationQuene::find(const CGraphicsObject* object) const {
  const auto found = known_.find(object);
  const bool isListed = object != nullptr && found != known_.end() && found->second->object.get() == object;
  return isListed ? found->second : nullptr;
}

void CValidationQuene::remove(const CGraphicsObject* object) {
  CValidationElement* element = find(object);
  if (element == nullptr) return;
  known_.erase(object);
  element->isTakenOut = true;
  element->object = nullptr;
  if (++takenOut_ > elements_.size() / 2) closeUp();
}

void CValidationQuene::closeUp() const {
  if (takenOut_ == 0) return;
  std::erase_if(elements_, [](const auto& element) { return element->isTakenOut; });
  takenOut_ = 0;
}

void CValidationQuene::removeAll() {
  known_.clear();
  elements_.clear();
  takenOut_ = 0;
}

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
  closeUp();
  const bool inside = cursor_ >= 0 && cursor_ < getSize();
  return inside ? elements_[static_cast<std::size_t>(cursor_)].get() : nullptr;
}

void CValidationQuene::dropEnded() {
  closeUp();
  const auto hasEnded = [](const auto& element) { return !element->object; };
  if (std::ranges::none_of(elements_, hasEnded)) return;
  std::erase_if(known_, [&](const auto& item) { return hasEnded(item.second); });
  std::erase_if(elements_, hasEnded);
}

std::vector<WeakRef<CGraphicsObject>> CValidationQuene::objects() {
  dropEnded();
  std::vector<WeakRef<CGraphicsObject>> living;
  living.reserve(elements_.size());
  for (const auto& element : elements_) living.push_back(element->object);
  return living;
}

}  // namespace footlight
