#pragma once

// What a statement learned about a name stays true until an object of that name comes to or leaves some
// scope. A NameWatch counts that for one name; a RememberedName keeps the outcome of a look-up together with
// the count at which it was made, and asks again only when the count has moved. Both are invisible: a
// remembered outcome is what asking again would give.
//
// Names with the ending "_0" mean several names, and are always asked for.

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CMC_Behaviour;
class CMC_Object;
class CMC_ObjectsContainer;

class NameWatch {
 public:
  struct Cell;

  NameWatch() = default;
  explicit NameWatch(std::string_view name);
  NameWatch(NameWatch&& other) noexcept : cell_(other.cell_) { other.cell_ = nullptr; }
  NameWatch& operator=(NameWatch&& other) noexcept {
    std::swap(cell_, other.cell_);
    return *this;
  }
  ~NameWatch();

  // Moves whenever `note` was called with the name, or `noteAll`; 0 for no watch.
  std::uint64_t count() const;
  // The same, but for locals: they are never bound when code is compiled.
  std::uint64_t lastingCount() const;

  // An object of that name came to or left a scope.
  static void note(std::string_view name, bool isTemporary);
  // Scopes were joined, parted or emptied: nothing that was remembered holds any more.
  static void noteAll() { ++all_; }

 private:
  static inline std::uint64_t all_ = 1;
  Cell* cell_ = nullptr;
};

struct NameWatch::Cell {
  std::string_view name;  // the key that the table owns
  std::uint64_t changes = 0;
  std::uint64_t lastingChanges = 0;
  std::uint32_t users = 0;
};

inline std::uint64_t NameWatch::count() const { return cell_ != nullptr ? cell_->changes + all_ : 0; }

inline std::uint64_t NameWatch::lastingCount() const {
  return cell_ != nullptr ? cell_->lastingChanges + all_ : 0;
}

// What compiling a text depended on: the names that it asked for, and the inline behaviours that it made.
// Compiling it anew comes to the same while none of the names came or went and nobody touched the behaviours.
class NameUses {
 public:
  void add(std::string_view name);
  void add(CMC_Behaviour* inlineBehaviour);
  // Fixes the present state as the one to compare with.
  void mark() { marked_ = sum(); }
  bool haveChanged() const { return isUnsure_ || sum() != marked_; }
  bool areBehavioursUntouched() const;

 private:
  std::uint64_t sum() const;

  std::vector<NameWatch> watches_;
  std::vector<WeakRef<CMC_Behaviour>> inlineBehaviours_;
  std::uint64_t marked_ = 0;
  bool isUnsure_ = false;  // a name among them means more than itself
};

class RememberedName {
 public:
  // What `scope.getObject(name)` gives. One RememberedName is always asked for the same name.
  CMC_Object* find(const CMC_ObjectsContainer& scope, const CXString& name);

 private:
  CMC_Object* ask(const CMC_ObjectsContainer& scope, const CXString& name);

  NameWatch watch_;
  CMC_Object* found_ = nullptr;
  std::uint64_t count_ = 0;  // of the watch when `found_` was found; 0 before
  std::uint64_t scope_ = 0;  // the serial number of the scope that was asked
  bool wasAsked_ = false;    // code that runs once needs no watch
};

}  // namespace footlight
