#pragma once

// Graphic objects in ascending priority; of equals the one added first comes first. The list refers to its
// objects weakly: one that has ended is passed over and dropped.

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "foundation/xobject.h"
#include "gfx/graphics_object.h"

namespace footlight {

class CValidationElement : public CXObject {
 public:
  CValidationElement(CGraphicsObject* o, int p, int f, std::uint64_t n)
      : object(o), priority(p), flags(f), number(n) {}
  // 1 when this one's priority is above the other's, else 0.
  int compare(const CXObject* other) const override {
    return priority > static_cast<const CValidationElement*>(other)->priority ? 1 : 0;
  }

  WeakRef<CGraphicsObject> object;
  const int priority;
  int flags;
  const std::uint64_t number;  // of its coming
  bool isTakenOut = false;
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
  bool isEmpty() const { return getSize() == 0; }
  int getSize() const { return static_cast<int>(elements_.size() - takenOut_); }

  // The cursor: each gives the element that it comes to, or null past an end. Removing keeps it at its place.
  CValidationElement* first();
  CValidationElement* next();
  CValidationElement* prev();

  // The living objects in drawing order, safe to walk while the list changes.
  std::vector<WeakRef<CGraphicsObject>> objects();
  const std::vector<std::unique_ptr<CValidationElement>>& elements() const {
    closeUp();
    return elements_;
  }

 private:
  CValidationElement* atCursor() const;
  void closeUp() const;

  // What is taken out keeps its place until somebody reads the list, so that many may go in any order.
  mutable std::vector<std::unique_ptr<CValidationElement>> elements_;
  mutable std::size_t takenOut_ = 0;
  std::uint64_t added_ = 0;
  // By the object; its own element tells whether that is still the one that was listed.
  std::unordered_map<const CGraphicsObject*, CValidationElement*> known_;
  int cursor_ = -1;
};

}  // namespace footlight
