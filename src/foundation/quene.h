#pragma once

// Queues of objects, first in first out or last in first out. They own nothing; `pop` on an empty one gives
// null. FIFO and LIFO will be built on them.

#include "foundation/xvector.h"

namespace footlight {

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
