#pragma once

// An external script module: a shared library in the host's folder of modules (see platform/posix/modules.h)
// that adds types of objects. It exports three plain C names:
//
//   void create(footlight::CMC_ObjectsContainer* scene);      called once, when a scene asks for the module
//   footlight::CMC_ExternObject* getModuleInterface(void);    the module's face; stays the module's own
//   void release(void);                                       called after all objects of the scene are gone
//
// A module that lacks one of them is not used. A module sees the engine's classes through the headers
// of this tree.

#include <memory>
#include <vector>

#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "platform/modules.h"

namespace footlight {

class CMC_Object;
class CMC_ObjectsContainer;
class CMElement;
class CXArchive;

// The face of an object made by an external module.
class CMC_ExternObject {
 public:
  virtual ~CMC_ExternObject() = default;
  // What the module calls itself, for reports.
  virtual const char* getModuleName() const = 0;
  // An object for an element whose TYPE the engine does not know, for the container to own; null to
  // leave it alone.
  virtual CMC_Object* resolve(CMC_ObjectsContainer* scene, const CMElement* element) = 0;
  // The scene's objects are about to be finished.
  virtual void onSceneDone(CMC_ObjectsContainer* scene) = 0;
  // The same object from the binary form of a game: one of that type number, which its `serialize` has
  // written, lies next in the archive. Null, with nothing read, for a type that is not the module's.
  virtual CMC_Object* restore(CMC_ObjectsContainer* /*scene*/, CXArchive& /*archive*/, int /*type*/) {
    return nullptr;
  }
};

class CMC_DLLExModuleInterface : public CXObject {
 public:
  // Loads the module of a plain name; ".dll" is added to a name without a dot.
  CMC_DLLExModuleInterface(const CXString& fileName, CMC_ObjectsContainer* container);
  ~CMC_DLLExModuleInterface() override;
  CMC_DLLExModuleInterface(const CMC_DLLExModuleInterface&) = delete;
  CMC_DLLExModuleInterface& operator=(const CMC_DLLExModuleInterface&) = delete;

  // Null when the module was not loaded.
  CMC_ExternObject* getObject() const { return object_; }
  const CXString& getName() const { return name_; }

 private:
  using CreateFunction = void (*)(CMC_ObjectsContainer*);
  using ReleaseFunction = void (*)();
  using InterfaceFunction = CMC_ExternObject* (*)();

  void reportMissing() const;

  CXString name_;
  std::unique_ptr<platform::Module> module_;
  CMC_ExternObject* object_ = nullptr;
  ReleaseFunction release_ = nullptr;
};

}  // namespace footlight
