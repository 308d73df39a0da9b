#include "input/control.h"

#include <algorithm>

namespace footlight {

void CControl::addNotifier(CControlNotifier* notifier, CXObject* object) {
  removeNotifier(notifier);
  notifiers_.push_back({notifier, object});
}

void CControl::removeNotifier(const CControlNotifier* notifier) {
  std::erase_if(notifiers_,
                [&](const Notifier& entry) { return entry.notifier == notifier || !entry.object; });
}

void CControl::tell(void (CControlNotifier::*event)(CControl*, CXPoint), CXPoint point) {
  const Ref<CControl> self(this);
  const std::vector<Notifier> snapshot = notifiers_;
  for (const Notifier& entry : snapshot) {
    const Ref<CXObject> object = entry.object.get();
    if (object && !isDisposed()) (entry.notifier->*event)(this, point);
  }
}

}  // namespace footlight
