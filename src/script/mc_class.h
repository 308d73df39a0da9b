#pragma once

// CLASS: a template that makes instances, each a container with its own objects, read from definition files
// in the common folder. The template holds no objects. Code of an instance sees its own objects first and
// those of the scene after. An object of a derived file displaces one of its base, which stays reachable as
// "SUPER_" and its name.

#include "script/mc_objects_container.h"
#include "script/mc_runner.h"

namespace footlight {

class CMC_Class : public CMC_ObjectsContainer {
 public:
  // The template.
  CMC_Class(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kClass; }

  // An instance with the template's files, whose parent is the scope; the caller owns it. Null at the limit
  // of classes within classes.
  std::unique_ptr<CMC_Class> newInstance(const CXString& name, CMC_ObjectsContainer* scope) const;
  // Another template of the same files; of an instance another instance, initialised but not constructed.
  std::unique_ptr<CMC_Object> copy() const override;
  bool isInstance() const { return isInstance_; }
  // Runs the instance's DESTRUCTOR and those of the instances within it, once. DELETE and `done` do; an
  // instance that is replaced or removed ends without.
  void destruct();

  // An older object of the name stays under "SUPER_" and its name.
  bool addObject(CMC_Object* object) override;
  void init() override;
  // Asks the scene around the class.
  CMC_Object* resolveEx(const CMElement* element) override {
    return getParent() != nullptr ? getParent()->resolveEx(element) : nullptr;
  }
  bool done(bool keep) override;

  const CXString& defFile() const { return defFile_; }
  const CXString& baseFiles() const { return baseFiles_; }

 private:
  CMC_Class(const CMC_Class& pattern);
  CMC_Class(const CMC_Class& pattern, CXString name, CMC_ObjectsContainer* scope);
  void load();
  void import(const CXString& file);

  CXString defFile_;
  CXString baseFiles_;
  bool isInstance_ = false;
  bool isDestructed_ = false;
};

// A word outside the table calls the behaviour of that name in the instance.
class CMC_Class_Runner : public CMC_Runner {
 public:
  using CMC_Runner::CMC_Runner;
  using CMC_Runner::run;
  Result run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
             const ArgumentList& arguments) override;
  bool takesOtherWords() const override { return true; }
  // Runs the behaviour with the arguments as text; gives a copy of what it returned, or nothing.
  virtual Result runClass(CMC_Object* object, CMC_ObjectsContainer* scope, const ArgumentList& arguments,
                          std::string_view method);
};

}  // namespace footlight
