#pragma once

// The table of shared resources: a file that two objects of a scene load exists once, with a count of its
// users. The application has the general manager; each unit has one of its own, a child of the general one.
// Names compare without regard to case.
//
// A manager ends its objects when their last user gives them back, at `flush` and when it ends itself.
// Children are not owned; managers that end take themselves out of the tree.

#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "files/file_resolver.h"

namespace footlight {

class CWindow;

class CResourcesManager {
 public:
  explicit CResourcesManager(CWindow* window) : window_(window) {}
  ~CResourcesManager();
  CResourcesManager(const CResourcesManager&) = delete;
  CResourcesManager& operator=(const CResourcesManager&) = delete;

  // A new entry under the object's file name, with one user. The manager owns the object from here on.
  void add(CFileResolver* resolver) { insertAt(resolver, getSize()); }
  // The same at a place in the table.
  void insertAt(CFileResolver* resolver, int index);
  // One user less; the object ends with its last one. False when the object is in no table here.
  bool remove(CFileResolver* resolver);
  bool contains(const CFileResolver* resolver) const { return byObject_.contains(resolver); }
  // The object of that name with one more user, from this table, then from the children's; null when
  // there is none.
  CFileResolver* get(const CXString& name);

  void add(CResourcesManager* child);
  void remove(CResourcesManager* child);
  // Ends everything in the children and here, and leaves the children alone afterwards.
  void flush();

  CWindow* getWindow() const { return window_; }
  int getSize() const { return static_cast<int>(entries_.size()); }

 private:
  friend class CFileResolver;

  struct Entry {
    std::string name;  // folded
    CFileResolver* resolver;
    int users;
  };

  using Entries = std::list<Entry>;
  template <class Key>
  using Index = std::unordered_multimap<Key, Entries::iterator>;

  template <class Key>
  Entries::iterator first(const Index<Key>& index, const Key& key);
  void forget(Entries::iterator entry);
  void forget(const CFileResolver* resolver);
  void flushEntries();

  CWindow* window_;
  Entries entries_;
  Index<std::string> byName_;
  Index<const CFileResolver*> byObject_;
  std::vector<CResourcesManager*> children_;
  CResourcesManager* parent_ = nullptr;
};

}  // namespace footlight
