#pragma once

// A list that keeps its objects in the order of their `compare`; equal ones stay in the order of their
// addition.

#include <memory>

#include "foundation/xvector.h"

namespace footlight {

class CSortedVector : public CXVector {
 public:
  using CXVector::CXVector;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CSortedVector>(*this); }
  // Inserts before the first item that compares greater than the new one.
  void add(CXObject* item) override {
    const auto above =
        std::find_if(begin(), end(), [item](const CXObject* other) { return other->compare(item) > 0; });
    insertAt(item, static_cast<int>(above - begin()));
  }
  void add(const CXVector* other) override {
    if (other == nullptr) return;
    const CXVector items(*other);
    for (CXObject* item : items) add(item);
  }
  // A new list from the last item to the first.
  std::unique_ptr<CXVector> reverse() const {
    auto result = std::make_unique<CXVector>(Capacity(), LoadFactor());
    for (int i = size() - 1; i >= 0; --i) result->add(at(i));
    return result;
  }
};

}  // namespace footlight
