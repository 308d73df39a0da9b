#pragma once

// An object without behaviour of its own: a name, the signals of its type and the methods of every object.

#include "script/mc_object.h"

namespace footlight {

class CMC_PlainObject : public CMC_Object {
 public:
  CMC_PlainObject(CMC_ObjectsContainer* container, const CMElement* element, int type)
      : CMC_Object(container, element, type) {
    initializeBehaviours(container, element);
  }
  CMC_PlainObject(CXString name, int type) : CMC_Object(std::move(name), type) {}
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_PlainObject(*this));
  }

 private:
  CMC_PlainObject(const CMC_PlainObject& other) = default;
};

}  // namespace footlight
