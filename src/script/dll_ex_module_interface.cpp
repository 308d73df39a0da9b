#include "script/dll_ex_module_interface.h"

#include "foundation/diagnose.h"
#include "platform/platform.h"

namespace footlight {

CMC_DLLExModuleInterface::CMC_DLLExModuleInterface(const CXString& fileName, CMC_ObjectsContainer* container)
    : name_(fileName) {
  if (name_.Find('.') < 0) name_ += ".dll";
  module_ = platform::current().modules().load(name_);
  if (!module_) {
    if (diagnose::isOn()) reportMissing();
    return;
  }
  const auto create = reinterpret_cast<CreateFunction>(module_->find("create"));
  const auto getInterface = reinterpret_cast<InterfaceFunction>(module_->find("getModuleInterface"));
  release_ = reinterpret_cast<ReleaseFunction>(module_->find("release"));
  if (create == nullptr || getInterface == nullptr || release_ == nullptr) {
    limitHit("module without its entry points");
    return;
  }
  create(container);
  object_ = getInterface();
}

void CMC_DLLExModuleInterface::reportMissing() const {
  const std::string refusal = platform::current().modules().refusal();
  diagnose::report(diagnose::Group::file, name_, "",
                   refusal.empty() ? "no such module" : "modules are switched off: " + refusal);
}

CMC_DLLExModuleInterface::~CMC_DLLExModuleInterface() {
  if (object_ != nullptr) release_();
}

}  // namespace footlight
