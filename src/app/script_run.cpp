#include "app/script_run.h"

#include "script/mc_behaviour.h"

namespace footlight {

Result runByName(CMC_ObjectsContainer* scene, const Call& call, RunWords words) {
  const CXString name = call.text(0);
  const Ref<CMC_Object> object(scene != nullptr ? scene->getObject(name) : nullptr);
  CMC_Runner* runner = object ? object->getRunner() : nullptr;
  if (runner == nullptr) {
    if (diagnose::isOn()) {
      diagnose::reportCall(diagnose::Group::object,
                           object ? name.str() + " has no methods" : "no object of the name " + name.str());
    }
    return {};
  }
  const CXString method = call.text(1);
  const auto isWord = [&method, words](std::string_view word) {
    return words == RunWords::exact ? method == word : method.equalsIgnoreCase(word);
  };
  auto* behaviour = object_cast<CMC_Behaviour>(object.get());
  if (behaviour != nullptr && (isWord("RUN") || isWord("RUNC"))) {
    const TextList arguments = call.textsFrom(2);
    behaviour->run(nullptr, &arguments, isWord("RUNC"));
    return {};
  }
  return runner->run(method.view(), object.get(), scene, call.arguments().subspan(2));
}

}  // namespace footlight
