#include "scope.h"

#include <algorithm>

namespace footlight::check {

namespace {

// Past these a file is no work of an author's, and the checker need not tell everything about it.
constexpr std::size_t kLongestName = 384;        // of displaced things
constexpr std::size_t kMostThingsOfAName = 100;  // further ones are not told apart
constexpr std::size_t kMostPatterns = 1000;      // with more of them a name may be anything

bool isSame(const Thing& a, const Thing& b) {
  return a.type == b.type && a.element == b.element && a.scope == b.scope && a.isInstance == b.isInstance;
}

}  // namespace

bool Scope::add(const std::string& name, const Thing& thing) {
  std::list<Thing>& things = own_[name];
  if (things.size() >= kMostThingsOfAName) return false;
  if (std::any_of(things.begin(), things.end(), [&](const Thing& known) { return isSame(known, thing); }))
    return false;
  things.push_back(thing);
  return true;
}

bool Scope::create(const std::string& pattern, const Thing& thing) {
  if (pattern.find('*') == std::string::npos) return add(pattern, thing);
  if (isOpen) return false;
  if (std::find(patterns_.begin(), patterns_.end(), pattern) != patterns_.end()) return false;
  patterns_.push_back(pattern);
  if (patterns_.size() > kMostPatterns) {
    patterns_.clear();
    isOpen = true;
  }
  return true;
}

void Scope::displace(const std::string& name, const Thing& thing) {
  const auto found = own_.find(name);
  if (found != own_.end() && !found->second.empty() && name.size() < kLongestName) {
    const Thing older = found->second.front();
    own_.erase(found);
    displace("SUPER_" + name, older);
  }
  add(name, thing);
}

bool Scope::addParent(Scope* parent) {
  if (parent == this || !knownParents_.insert(parent).second) return false;
  parents_.push_back(parent);
  return true;
}

void Scope::addChild(Scope* child) {
  if (knownChildren_.insert(child).second) children_.push_back(child);
}

void Scope::climb(const Visit& visit, bool isBelowSeen, std::unordered_set<const Scope*>& seen) const {
  if (!seen.insert(this).second || !visit(*this)) return;
  for (const Scope* parent : parents_) parent->climb(visit, isBelowSeen && level_ == Level::classCode, seen);
  if (isBelowSeen && isLevelAbove()) descend(visit, seen);
}

void Scope::descend(const Visit& visit, std::unordered_set<const Scope*>& seen) const {
  for (const Scope* child : children_) {
    if (seen.insert(child).second && visit(*child)) child->descend(visit, seen);
  }
}

void Scope::search(const Visit& visit) const {
  std::unordered_set<const Scope*> seen;
  climb(visit, isLevelAbove() || level_ == Level::classCode, seen);
}

Found Scope::find(std::string_view name) const {
  Found found;
  const std::string key(name);
  search([&](const Scope& scope) {
    const auto own = scope.own_.find(key);
    const bool isOwn = own != scope.own_.end() && !own->second.empty();
    if (isOwn) {
      for (const Thing& thing : own->second) found.things.push_back(&thing);
    }
    found.mayBe = found.mayBe || scope.isOpen ||
                  std::any_of(scope.patterns_.begin(), scope.patterns_.end(),
                              [name](const std::string& pattern) { return fitsPattern(name, pattern); });
    return !isOwn;
  });
  return found;
}

void Scope::eachName(const std::function<void(const std::string&, const Thing&)>& function) const {
  search([&](const Scope& scope) {
    for (const auto& [name, things] : scope.own_) {
      for (const Thing& thing : things) function(name, thing);
    }
    return true;
  });
}

// Without backtracking further than the last "*", which is enough: an earlier one takes the least it can.
bool fitsPattern(std::string_view text, std::string_view pattern) {
  std::size_t at = 0;
  std::size_t i = 0;
  std::size_t star = std::string_view::npos;
  std::size_t resume = 0;
  while (i < text.size()) {
    if (at < pattern.size() && pattern[at] == '*') {
      star = at++;
      resume = i;
    } else if (at < pattern.size() && pattern[at] == text[i]) {
      ++at;
      ++i;
    } else if (star != std::string_view::npos) {
      at = star + 1;
      i = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

}  // namespace footlight::check
