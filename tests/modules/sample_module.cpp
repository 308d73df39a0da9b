// A small external module for the tests: it knows the type SAMPLE, which is an INTEGER that counts in tens,
// and the type KEPT, which has a place in the binary form of a game and tells a RESULT what it holds; and it
// leaves a mark in each scene that asks for it.

#include "files/archive.h"
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

class SampleKept : public footlight::CMC_Object {
 public:
  static constexpr int kType = 20000;

  SampleKept(footlight::CMC_ObjectsContainer* scene, footlight::CXString name, int value)
      : CMC_Object(std::move(name), kType), value_(value) {
    setScene(scene);
  }
  void init() override {
    if (auto* result = getScene()->find<footlight::CMC_Integer>("RESULT")) result->change(value_);
  }
  void serialize(footlight::CXArchive& archive) override {
    CMC_Object::serialize(archive);
    archive.pass(value_);
  }

 private:
  int value_;
};

class SampleModule : public footlight::CMC_ExternObject {
 public:
  const char* getModuleName() const override { return "sample"; }
  footlight::CMC_Object* resolve(footlight::CMC_ObjectsContainer* scene,
                                 const footlight::CMElement* element) override {
    if (element->getPropertyValue("TYPE") == "SAMPLE") return new SampleInteger(scene, element);
    if (element->getPropertyValue("TYPE") != "KEPT") return nullptr;
    return new SampleKept(scene, element->getName(), element->getPropertyIntValue("VALUE"));
  }
  footlight::CMC_Object* restore(footlight::CMC_ObjectsContainer* scene, footlight::CXArchive& archive,
                                 int type) override {
    if (type != SampleKept::kType) return nullptr;
    auto* made = new SampleKept(scene, "", 0);
    made->serialize(archive);
    return made;
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
