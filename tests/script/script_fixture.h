#pragma once

#include <gtest/gtest.h>

#include "objects/all_types.h"
#include "script/mc_behaviour.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

// A scope without a window, with the pools and the runners of a running engine.
class ScriptTest : public testing::Test {
 protected:
  ScriptTest() {
    CMC_VariableFactory::initialize();
    installAllTypes();
    CMC_RunnerFactory::initialize();
    scope_ = new CMC_ObjectsContainer(nullptr, "SCOPE", type::kScene);
    keep_ = Ref<CMC_ObjectsContainer>(scope_);
  }
  ~ScriptTest() override {
    CMC_Object::destroy(scope_);
    keep_ = nullptr;
    CMC_RunnerFactory::done();
    CMC_VariableFactory::done();
  }

  template <class T, class Value>
  T* add(const char* name, Value value) {
    T* variable = new T(CXString(name), CMC_Variable::kNoPool);
    variable->put(value);
    variable->setScene(scope_);
    scope_->addObject(variable);
    return variable;
  }

  CMC_Behaviour* addBehaviour(const char* name, const char* code) {
    auto* behaviour = new CMC_Behaviour(scope_, name, code);
    behaviour->init();
    scope_->addObject(behaviour);
    return behaviour;
  }

  // Runs code in the scope as a behaviour of its own; true when it broke.
  bool run(const char* code, const TextList& arguments = {}) {
    const Ref<CMC_Behaviour> behaviour(addBehaviour("RUNNER", code));
    return behaviour->run(nullptr, &arguments, false);
  }

  CMC_ObjectsContainer* scope_;
  Ref<CMC_ObjectsContainer> keep_;
};

}  // namespace footlight
