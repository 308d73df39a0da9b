#pragma once

// A list of texts of its own, on a CXArray; a set of them when it is made `unique`.

#include "foundation/xarray.h"

namespace footlight {

class CStringArray : public CXObject {
 public:
  explicit CStringArray(bool unique) : unique_(unique) {}
  ~CStringArray() override { CStringArray::removeAll(); }
  CStringArray(const CStringArray&) = delete;
  CStringArray& operator=(const CStringArray&) = delete;

  // With `unique`, a text that is there already is dropped.
  virtual void add(const CXString& text) {
    if (!unique_ || !CStringArray::contains(text)) texts_.add(new CXString(text));
  }
  // The first one that reads so.
  virtual void remove(const CXString& text) {
    const auto found =
        std::find_if(texts_.begin(), texts_.end(), [&](const CXString* item) { return *item == text; });
    if (found != texts_.end()) delete texts_.removeAt(static_cast<int>(found - texts_.begin()));
  }
  virtual void removeAll() {
    for (const CXString* text : texts_) delete text;
    texts_.removeAll();
  }
  virtual bool contains(const CXString& text) const { return texts_.containsString(text); }
  virtual int getSize() const { return texts_.size(); }
  CXString getAt(int index) const { return texts_.stringAt(index); }

 private:
  bool unique_;
  CXArray<CXString> texts_;
};

}  // namespace footlight
