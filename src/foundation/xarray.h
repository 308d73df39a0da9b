#pragma once

// A list of pointers to things of any kind. It owns none of them.

#include <memory>
#include <type_traits>

#include "foundation/pointer_array.h"
#include "foundation/xstring.h"

namespace footlight {

template <class T>
class CXArray : public PointerArray<T> {
 public:
  using PointerArray<T>::PointerArray;
  using PointerArray<T>::add;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CXArray>(*this); }
  // All items of another list, in order.
  virtual void add(const CXArray* other) {
    if (other != nullptr) this->appendAll(*other);
  }

  // For lists of texts: is there one that reads so, and the text at an index, empty outside the list.
  bool containsString(std::string_view text) const requires std::is_same_v<std::remove_const_t<T>, CXString> {
    return std::any_of(this->begin(), this->end(),
                       [&](const CXString* item) { return item != nullptr && *item == text; });
  }
  CXString stringAt(int index) const requires std::is_same_v<std::remove_const_t<T>, CXString> {
    const CXString* item = (*this)[index];
    return item != nullptr ? *item : CXString();
  }
};

}  // namespace footlight
