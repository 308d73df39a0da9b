#pragma once

// A picture, animation or sound that its user owns, or that a resources manager owns for all who use the same
// file. Either way it is referred to weakly: a resource that has gone is none.

#include <utility>

#include "files/resources_manager.h"
#include "foundation/xobject.h"

namespace footlight {

template <class T>
class SharedResource {
 public:
  SharedResource() = default;
  explicit SharedResource(Owned<T> resource) { own(std::move(resource)); }

  // The resource, or null.
  T* get() const { return resource_.get(); }

  // In place of none: one that the object owns.
  void own(Owned<T> resource) {
    refer(resource.get());
    own_ = std::move(resource);
  }

  // In place of none: the manager's of that name, else one that `make` makes, for the manager if
  // there is one.
  template <class Make>
  void take(CResourcesManager* manager, const CXString& name, Make make) {
    CFileResolver* known = manager != nullptr && name.IsString() ? manager->get(name) : nullptr;
    if (auto* shared = dynamic_cast<T*>(known); shared != nullptr) {
      refer(shared);
      return;
    }
    if (known != nullptr) manager->remove(known);  // the file is something else to others
    own(make());
    if (manager != nullptr) manager->add(own_.release());
  }

  // To the manager, which ends it after its last user, or to its end.
  void giveBack(CResourcesManager* manager) {
    if (own_ != nullptr) {
      own_->retire();
    } else if (get() != nullptr && manager != nullptr) {
      manager->remove(get());
    }
    own_.reset();
    refer(nullptr);
  }

  // Forgets one of the manager's, which keeps it until it ends itself.
  void leave() { refer(nullptr); }

 private:
  void refer(T* resource) {
    resource_ = resource;
    if constexpr (requires { T::noteUsers(); }) T::noteUsers();
  }

  WeakRef<T> resource_;
  Owned<T> own_;  // the resource, unless a manager owns it
};

}  // namespace footlight
