#include "script/name_watch.h"

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>

#include "script/caches.h"
#include "script/mc_behaviour.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

std::unordered_map<std::string, NameWatch::Cell, TextHash, std::equal_to<>>& cells() {
  static std::unordered_map<std::string, NameWatch::Cell, TextHash, std::equal_to<>> table;
  return table;
}

}  // namespace

NameWatch::NameWatch(std::string_view name) {
  const auto place = cells().try_emplace(std::string(name)).first;
  cell_ = &place->second;
  cell_->name = place->first;
  ++cell_->users;
}

NameWatch::~NameWatch() {
  if (cell_ != nullptr && --cell_->users == 0) cells().erase(cells().find(cell_->name));
}

void NameWatch::note(std::string_view name, bool isTemporary) {
  const auto found = cells().find(name);
  if (found == cells().end()) return;
  ++found->second.changes;
  if (!isTemporary) ++found->second.lastingChanges;
}

void NameUses::add(std::string_view name) {
  if (name.ends_with("_0") || name.find('|') != std::string_view::npos) isUnsure_ = true;
  if (!isUnsure_) watches_.emplace_back(name);
}

void NameUses::add(CMC_Behaviour* inlineBehaviour) { inlineBehaviours_.emplace_back(inlineBehaviour); }

bool NameUses::areBehavioursUntouched() const {
  return std::all_of(inlineBehaviours_.begin(), inlineBehaviours_.end(),
                     [](const auto& behaviour) { return behaviour && behaviour->isAsMade(); });
}

std::uint64_t NameUses::sum() const {
  std::uint64_t sum = 0;
  for (const NameWatch& watch : watches_) sum += watch.lastingCount();
  return sum;
}

CMC_Object* RememberedName::find(const CMC_ObjectsContainer& scope, const CXString& name) {
  const std::uint64_t count = watch_.count();
  if (count != 0 && count == count_ && scope.serial() == scope_) return found_;
  return ask(scope, name);
}

CMC_Object* RememberedName::ask(const CMC_ObjectsContainer& scope, const CXString& name) {
  if (caches::isOn() && watch_.count() == 0 && wasAsked_ && !name.endsWith("_0")) watch_ = NameWatch(name);
  wasAsked_ = true;
  found_ = scope.getObject(name);
  count_ = watch_.count();
  scope_ = scope.serial();
  return found_;
}

}  // namespace footlight
