#pragma once

// Makes script objects of every type, those of higher layers included.

#include "script/mc_object.h"
#include "script/type_table.h"

namespace footlight {

class CMC_ObjectsContainer;

// The object for an element of a type that definitions can name. A type whose own class does not exist yet
// gives an object with its name, its signals and the methods of every object. The caller owns it.
CMC_Object* makeObject(CMC_ObjectsContainer* container, const CMElement* element,
                       const TypeDescription& description);

// A bare ANIMO, IMAGE, SOUND or BUTTON of the name, added to the scope; other words do nothing.
void createBareObject(CMC_ObjectsContainer* scope, const CXString& word, const CXString& name);

// An object without behaviour of its own: a name, the signals of its type and the base methods.
class CMC_PlainObject : public CMC_Object {
 public:
  CMC_PlainObject(CMC_ObjectsContainer* container, const CMElement* element, int type);
  CMC_PlainObject(CXString name, int type) : CMC_Object(std::move(name), type) {}
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_PlainObject(*this));
  }

 private:
  CMC_PlainObject(const CMC_PlainObject& other) = default;
};

}  // namespace footlight
