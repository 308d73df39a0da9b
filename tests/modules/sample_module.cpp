// A small external module for the tests: it knows the type SAMPLE, which is an INTEGER that counts in tens,
// and leaves a mark in each scene that asks for it.

#include "script/dll_ex_module_interface.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable.h"
#include "script/melement.h"

namespace {

class SampleInteger : public footlight::CMC_Integer {
 public:
  using CMC_Integer::CMC_Integer;
  void inc() override { setValue(getValue() + 10); }
};

class SampleModule : public footlight::CMC_ExternObject {
 public:
  const char* getModuleName() const override { return "sample"; }
  footlight::CMC_Object* resolve(footlight::CMC_ObjectsContainer* scene,
                                 const footlight::CMElement* element) override {
    if (element->getPropertyValue("TYPE") != "SAMPLE") return nullptr;
    return new SampleInteger(scene, element);
  }
  void onSceneDone(footlight::CMC_ObjectsContainer* /*scene*/) override {}
};

SampleModule sampleModule;

}  // namespace

extern "C" {

void create(footlight::CMC_ObjectsContainer* scene) {
  auto* mark =
      new footlight::CMC_Integer(footlight::CXString("MODULEMARK"), footlight::CMC_Variable::kNoPool);
  mark->put(7);
  mark->setScene(scene);
  scene->addObject(mark);
}

footlight::CMC_ExternObject* getModuleInterface() { return &sampleModule; }

void release() {}
}
