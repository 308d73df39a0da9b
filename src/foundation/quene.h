#pragma once

// Queues of pointers, first in first out or last in first out. They own nothing; `pop` on an empty
// one gives null.

#include "foundation/xarray.h"
#include "foundation/xvector.h"

namespace footlight {

template <class T>
class CQuene : public CXArray<T> {
 public:
  using CXArray<T>::CXArray;
  virtual void push(T* item) { this->add(item); }
  virtual T* pop() = 0;
};

template <class T>
class CFifoQuene : public CQuene<T> {
 public:
  using CQuene<T>::CQuene;
  T* pop() override { return this->removeAt(0); }
};

template <class T>
class CLifoQuene : public CQuene<T> {
 public:
  using CQuene<T>::CQuene;
  T* pop() override { return this->removeAt(this->size() - 1); }
};

// The same for objects.
class CXQuene : public CXVector {
 public:
  using CXVector::CXVector;
  virtual void push(CXObject* item) { add(item); }
  virtual CXObject* pop() = 0;
};

class CXFifoQuene : public CXQuene {
 public:
  using CXQuene::CXQuene;
  CXObject* pop() override { return removeAt(0); }
};

class CXLifoQuene : public CXQuene {
 public:
  using CXQuene::CXQuene;
  CXObject* pop() override { return removeAt(size() - 1); }
};

}  // namespace footlight
