#pragma once

// What code can name: the objects of a file, of a level of the game or of a class, and what scripts make
// while they run. A scope finds its own names, then those of its parents; the levels above a scene, whose
// code runs while a scene is shown, and classes, whose instances may stand anywhere below, find those of the
// levels below as well.
//
// Names that only a run can tell are patterns, in which "*" is any text.

#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "foundation/xstring.h"

namespace footlight {
class CMElement;
}

namespace footlight::check {

class Scope;
class SourceFile;

// One thing that a name may mean.
struct Thing {
  static constexpr int kUnknownType = -1;

  int type = kUnknownType;           // a number of the type table
  const SourceFile* file = nullptr;  // where its element stands; null for what no file defines
  const CMElement* element = nullptr;
  Scope* scope = nullptr;   // of a class or a level of the game
  bool isInstance = false;  // of a class
};

struct Found {
  std::vector<const Thing*> things;
  bool mayBe = false;  // a run may make something of the name
  explicit operator bool() const { return mayBe || !things.empty(); }
};

class Scope {
 public:
  enum class Level { application, episode, scene, classCode, anywhere };

  Scope(Level level, std::string name) : level_(level), name_(std::move(name)) {}
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  Level level() const { return level_; }
  const std::string& name() const { return name_; }

  // A second thing of a name is kept beside the first; false when the very thing is known.
  bool add(const std::string& name, const Thing& thing);
  // A name or a pattern that a run makes.
  bool create(const std::string& pattern, const Thing& thing);
  // As instances of classes take objects: an older thing of the name stays under "SUPER_" and its name.
  void displace(const std::string& name, const Thing& thing);
  // False when the link is known.
  bool addParent(Scope* parent);
  void addChild(Scope* child);
  const std::vector<Scope*>& parents() const { return parents_; }
  const std::vector<Scope*>& children() const { return children_; }

  Found find(std::string_view name) const;
  // Whether something of the name stands in this very scope.
  bool owns(const std::string& name) const { return own_.contains(name); }
  // Calls the function with every name that `find` would find something for.
  void eachName(const std::function<void(const std::string&, const Thing&)>& function) const;

  bool isOpen = false;              // it may hold anything: modules fill it, or too many computed names
  bool loadsComputedFiles = false;  // some file is loaded by a name that only a run can tell
  std::vector<CXString> folders;    // where names of files start
  std::vector<std::string> scenes;  // what GOTO of the level knows

 private:
  using Visit = std::function<bool(const Scope&)>;  // false: do not look further that way

  // Climbs from this scope in the order of the search.
  void climb(const Visit& visit, bool isBelowSeen, std::unordered_set<const Scope*>& seen) const;
  void descend(const Visit& visit, std::unordered_set<const Scope*>& seen) const;
  void search(const Visit& visit) const;
  bool isLevelAbove() const { return level_ == Level::application || level_ == Level::episode; }

  Level level_;
  std::string name_;
  std::unordered_map<std::string, std::list<Thing>> own_;
  std::vector<std::string> patterns_;
  std::vector<Scope*> parents_;
  std::vector<Scope*> children_;
  std::unordered_set<const Scope*> knownParents_;
  std::unordered_set<const Scope*> knownChildren_;
};

// Whether a text is what a pattern with "*" means.
bool fitsPattern(std::string_view text, std::string_view pattern);

}  // namespace footlight::check
