#include "script/mc_groupped.h"

#include <algorithm>

#include "foundation/limits.h"
#include "script/mc_objects_container.h"

namespace footlight {

CMC_Groupped::CMC_Groupped(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kGroup) {
  initializeBehaviours(container, element);
}

// Groups may stand in several others, so each is searched once.
bool CMC_Groupped::holds(const CMC_Object* object, int depth,
                         std::unordered_set<const CMC_Groupped*>* searched) const {
  if (this == object || depth >= limits::kTreeDepth) return true;
  if (!searched->insert(this).second) return false;
  const auto members = getList();
  return std::any_of(members.begin(), members.end(), [&](CMC_Object* member) {
    const auto* group = object_cast<CMC_Groupped>(member);
    return group != nullptr && group->holds(object, depth + 1, searched);
  });
}

void CMC_Groupped::add(CMC_Object* object) {
  if (object == nullptr) return;
  if (list_.size() >= static_cast<std::size_t>(limits::kArrayElements)) {
    limitHit("members of a group");
    return;
  }
  const auto* group = object_cast<CMC_Groupped>(object);
  std::unordered_set<const CMC_Groupped*> searched;
  if (group != nullptr && group->holds(this, 0, &searched)) {
    limitHit("group within itself");
    return;
  }
  list_.emplace_back(object);
}

void CMC_Groupped::remove(const CMC_Object* object) {
  const auto found =
      std::find_if(list_.begin(), list_.end(), [object](const auto& item) { return item.get() == object; });
  if (found != list_.end()) list_.erase(found);
}

void CMC_Groupped::addClones(const CMC_ObjectsContainer* scope, const CXString& name, int start, int count) {
  if (count > limits::kClonesByOneCall) {
    limitHit("clones by one call");
    return;
  }
  for (std::int64_t i = start; i < std::int64_t{start} + count; ++i) {
    add(scope->getObject((name + "_" + std::to_string(i)).view()));
  }
}

std::vector<CMC_Object*> CMC_Groupped::getList() const {
  std::erase_if(list_, [](const WeakRef<CMC_Object>& item) { return !item; });
  std::vector<CMC_Object*> members;
  members.reserve(list_.size());
  for (const WeakRef<CMC_Object>& item : list_) members.push_back(item.get());
  return members;
}

CMC_Object* CMC_Groupped::getAt(int index) const {
  const auto members = getList();
  return index < 0 || index >= static_cast<int>(members.size()) ? nullptr
                                                                : members[static_cast<std::size_t>(index)];
}

CMC_Object* CMC_Groupped::moveMarker(std::int64_t step) {
  const int size = getSize();
  if (size == 0) return nullptr;
  const std::int64_t moved = (marker_ + step) % size;
  marker_ = static_cast<int>(moved < 0 ? moved + size : moved);
  return getAt(marker_);
}

void CMC_Groupped::setMarker(int position) { marker_ = std::clamp(position, -1, getSize()); }

CXString CMC_Groupped::toString() const {
  CXString text;
  for (const CMC_Object* member : getList()) {
    if (text.IsString()) text += ',';
    text += member->getName();
  }
  return text;
}

}  // namespace footlight
