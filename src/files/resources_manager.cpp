#include "files/resources_manager.h"

#include <algorithm>

#include "foundation/code_page.h"

namespace footlight {

CResourcesManager::~CResourcesManager() {
  if (parent_ != nullptr) parent_->remove(this);
  for (CResourcesManager* child : children_) child->parent_ = nullptr;
  flushEntries();
}

// Of several entries with the key the one that stands first in the table; the end of it for none.
template <class Key>
CResourcesManager::Entries::iterator CResourcesManager::first(const Index<Key>& index, const Key& key) {
  const auto [from, to] = index.equal_range(key);
  if (from == to) return entries_.end();
  if (std::next(from) == to) return from->second;
  auto entry = entries_.begin();
  while (std::none_of(from, to, [entry](const auto& row) { return row.second == entry; })) ++entry;
  return entry;
}

void CResourcesManager::insertAt(CFileResolver* resolver, int index) {
  if (resolver == nullptr) return;
  const int place = std::clamp(index, 0, getSize());
  const auto before = place == getSize() ? entries_.end() : std::next(entries_.begin(), place);
  const auto entry = entries_.insert(before, {code_page::foldCase(resolver->getFileName()), resolver, 1});
  byName_.emplace(entry->name, entry);
  byObject_.emplace(resolver, entry);
  resolver->managers_.push_back(this);
}

bool CResourcesManager::remove(CFileResolver* resolver) {
  const auto entry = first<const CFileResolver*>(byObject_, resolver);
  if (entry == entries_.end()) {
    return std::any_of(children_.begin(), children_.end(),
                       [&](CResourcesManager* child) { return child->remove(resolver); });
  }
  if (--entry->users > 0) return true;
  forget(entry);
  resolver->retire();
  resolver->destroy();
  return true;
}

CFileResolver* CResourcesManager::get(const CXString& name) {
  if (const auto entry = first<std::string>(byName_, code_page::foldCase(name)); entry != entries_.end()) {
    ++entry->users;
    return entry->resolver;
  }
  for (CResourcesManager* child : children_) {
    if (CFileResolver* found = child->get(name)) return found;
  }
  return nullptr;
}

// Takes an entry out of the table without ending its object.
void CResourcesManager::forget(Entries::iterator entry) {
  CFileResolver* const resolver = entry->resolver;
  const auto drop = [entry](auto& index, const auto& key) {
    const auto [from, to] = index.equal_range(key);
    index.erase(std::find_if(from, to, [entry](const auto& row) { return row.second == entry; }));
  };
  drop(byName_, entry->name);
  drop(byObject_, resolver);
  entries_.erase(entry);
  const auto place = std::find(resolver->managers_.begin(), resolver->managers_.end(), this);
  if (place != resolver->managers_.end()) resolver->managers_.erase(place);
}

// One that ends by itself.
void CResourcesManager::forget(const CFileResolver* resolver) {
  const auto entry = first(byObject_, resolver);
  if (entry != entries_.end()) forget(entry);
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
    forget(entries_.begin());
    resolver->destroy();
  }
}

}  // namespace footlight
