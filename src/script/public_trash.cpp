#include "script/public_trash.h"

#include <algorithm>

#include "foundation/xtimer.h"

namespace footlight {

CPublicTrash::CPublicTrash(CXTimer* timer) { timer->add(kPeriod, this); }

void CPublicTrash::add(CXObject* object) { objects_.emplace_back(object); }

void CPublicTrash::remove(const CXObject* object) {
  std::erase_if(objects_, [object](const WeakRef<CXObject>& entry) { return entry.get() == object; });
}

void CPublicTrash::onTimer(TimerId /*id*/) {
  const std::vector<WeakRef<CXObject>> waiting = objects_;
  for (const WeakRef<CXObject>& entry : waiting) {
    if (entry && entry->isToDelete()) entry->dispose();
  }
  std::erase_if(objects_, [](const WeakRef<CXObject>& entry) { return !entry; });
}

}  // namespace footlight
