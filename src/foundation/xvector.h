#pragma once

// A list of objects. It owns none of them.

#include <memory>

#include "foundation/pointer_array.h"

namespace footlight {

class CXVector : public PointerArray<CXObject> {
 public:
  using PointerArray::add;
  using PointerArray::PointerArray;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CXVector>(*this); }
  // All items of another list, in order.
  virtual void add(const CXVector* other) {
    if (other != nullptr) appendAll(*other);
  }
  CXObject* at(int index) const { return (*this)[index]; }
  // Adds all items to the end of the other list.
  virtual void copyInto(CXVector* other) const {
    if (other != nullptr) other->appendAll(*this);
  }
};

}  // namespace footlight
