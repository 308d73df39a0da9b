#pragma once

// A list that keeps its objects in the order of their `compare`; equal ones stay in the order of their
// addition.

#include <iterator>
#include <memory>

#include "foundation/xvector.h"

namespace footlight {

class CSortedVector : public CXVector {
 public:
  using CXVector::CXVector;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CSortedVector>(*this); }
  // Inserts before the first item that compares greater than the new one. A null is ignored.
  void add(CXObject* item) override {
    if (item == nullptr) return;
    const auto above =
        std::find_if(begin(), end(), [item](const CXObject* other) { return isAbove(other, item); });
    insertAt(item, static_cast<int>(above - begin()));
  }
  // The same for each item of another list in turn, but quick for long ones.
  void add(const CXVector* other) override {
    if (other == nullptr) return;
    std::vector<CXObject*> all(begin(), end());
    std::copy_if(other->begin(), other->end(), std::back_inserter(all),
                 [](const CXObject* item) { return item != nullptr; });
    std::stable_sort(all.begin(), all.end(),
                     [](const CXObject* a, const CXObject* b) { return isAbove(b, a); });
    removeAll();
    for (CXObject* item : all) append(item);
  }
  // A new list from the last item to the first.
  std::unique_ptr<CXVector> reverse() const {
    auto result = std::make_unique<CXVector>(Capacity(), LoadFactor());
    for (int i = size() - 1; i >= 0; --i) result->add(at(i));
    return result;
  }

 private:
  static bool isAbove(const CXObject* a, const CXObject* b) {
    return a != nullptr && b != nullptr && a->compare(b) > 0;
  }
};

}  // namespace footlight
