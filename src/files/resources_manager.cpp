#include "files/resources_manager.h"

#include <algorithm>

#include "foundation/code_page.h"

namespace footlight {

CResourcesManager::~CResourcesManager() {
  if (parent_ != nullptr) parent_->remove(this);
  for (CResourcesManager* child : children_) child->parent_ = nullptr;
  flushEntries();
}

int CResourcesManager::find(const CFileResolver* resolver) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.resolver == resolver; });
  return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

void CResourcesManager::insertAt(CFileResolver* resolver, int index) {
  if (resolver == nullptr) return;
  const int place = std::clamp(index, 0, getSize());
  entries_.insert(entries_.begin() + place, {code_page::foldCase(resolver->getFileName()), resolver, 1});
  resolver->managers_.push_back(this);
}

bool CResourcesManager::remove(CFileResolver* resolver) {
  const int index = find(resolver);
  if (index < 0) {
    return std::any_of(children_.begin(), children_.end(),
                       [&](CResourcesManager* child) { return child->remove(resolver); });
  }
  if (--entries_[static_cast<std::size_t>(index)].users > 0) return true;
  forget(resolver);
  resolver->retire();
  resolver->destroy();
  return true;
}

CFileResolver* CResourcesManager::get(const CXString& name) {
  const std::string folded = code_page::foldCase(name);
  for (Entry& entry : entries_) {
    if (entry.name != folded) continue;
    ++entry.users;
    return entry.resolver;
  }
  for (CResourcesManager* child : children_) {
    if (CFileResolver* found = child->get(name)) return found;
  }
  return nullptr;
}

// Takes an object out of the table without ending it.
void CResourcesManager::forget(CFileResolver* resolver) {
  const int index = find(resolver);
  if (index < 0) return;
  entries_.erase(entries_.begin() + index);
  const auto place = std::find(resolver->managers_.begin(), resolver->managers_.end(), this);
  if (place != resolver->managers_.end()) resolver->managers_.erase(place);
}

void CResourcesManager::add(CResourcesManager* child) {
  if (child == nullptr || child == this || child->parent_ != nullptr) return;
  for (const CResourcesManager* above = this; above != nullptr; above = above->parent_) {
    if (above == child) return;
  }
  children_.push_back(child);
  child->parent_ = this;
}

void CResourcesManager::remove(CResourcesManager* child) {
  const auto found = std::find(children_.begin(), children_.end(), child);
  if (found == children_.end()) return;
  child->parent_ = nullptr;
  children_.erase(found);
}

void CResourcesManager::flush() {
  const std::vector<CResourcesManager*> children = std::move(children_);
  children_.clear();
  for (CResourcesManager* child : children) {
    child->parent_ = nullptr;
    child->flush();
  }
  flushEntries();
}

void CResourcesManager::flushEntries() {
  while (!entries_.empty()) {
    CFileResolver* const resolver = entries_.front().resolver;
    forget(resolver);
    resolver->destroy();
  }
}

}  // namespace footlight
