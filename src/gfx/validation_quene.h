#pragma once

// Graphic objects in ascending priority; of equals the one added first comes first. The list refers to its
// objects weakly: one that has ended is passed over and dropped.

#include <memory>
#include <unordered_map>
#include <vector>

#include "foundation/xobject.h"
#include "gfx/graphics_object.h"

namespace footlight {

class CValidationElement : public CXObject {
 public:
  CValidationElement(CGraphicsObject* o, int p, int f) : object(o), priority(p), flags(f) {}
  // 1 when this one's priority is above the other's, else 0.
  int compare(const CXObject* other) const override {
    return priority > static_cast<const CValidationElement*>(other)->priority ? 1 : 0;
  }

  WeakRef<CGraphicsObject> object;
  int priority;
  int flags;
};

class CValidationQuene : public CXObject {
 public:
  void add(CGraphicsObject* object, int priority, int flags);
  // Null, or -1, when the object is not listed.
  CValidationElement* find(const CGraphicsObject* object) const;
  int getIndex(const CGraphicsObject* object) const;
  void remove(const CGraphicsObject* object);
  void removeAll();
  // Takes out what has ended.
  void dropEnded();
  bool isEmpty() const { return elements_.empty(); }
  int getSize() const { return static_cast<int>(elements_.size()); }

  // The cursor: each gives the element that it comes to, or null past an end. Removing keeps it at its place.
  CValidationElement* first();
  CValidationElement* next();
  CValidationElement* prev();

  // The living objects in drawing order, safe to walk while the list changes.
  std::vector<WeakRef<CGraphicsObject>> objects();
  const std::vector<std::unique_ptr<CValidationElement>>& elements() const { return elements_; }

 private:
  CValidationElement* atCursor() const;

  std::vector<std::unique_ptr<CValidationElement>> elements_;
  // By the object; its own element tells whether that is still the one that was listed.
  std::unordered_map<const CGraphicsObject*, CValidationElement*> known_;
  int cursor_ = -1;
};

}  // namespace footlight
