#pragma once

// A name and a pointer to what bears it, and three pointers. Neither owns what it points to.

#include <memory>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

template <class T>
class CXPair : public CXObject {
 public:
  CXPair(CXString name, T* second) : name_(std::move(name)), second_(second) {}

  const CXString& getName() const { return name_; }
  T* getSecond() const { return second_; }
  void setSecond(T* second) { second_ = second; }

 private:
  CXString name_;
  T* second_;
};

template <class A, class B, class C>
class CXTriple : public CXObject {
 public:
  CXTriple(A* first, B* second, C* third) : first_(first), second_(second), third_(third) {}

  // Copies the pointers, not what they point to.
  std::unique_ptr<CXObject> clone() const override {
    return std::make_unique<CXTriple>(first_, second_, third_);
  }
  A* getFirst() const { return first_; }
  B* getSecond() const { return second_; }
  C* getThird() const { return third_; }
  void setFirst(A* first) { first_ = first; }
  void setSecond(B* second) { second_ = second; }
  void setThird(C* third) { third_ = third; }

 private:
  A* first_;
  B* second_;
  C* third_;
};

}  // namespace footlight
