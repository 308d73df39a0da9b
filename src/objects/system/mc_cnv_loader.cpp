#include "objects/system/mc_cnv_loader.h"

#include "script/mc_behaviour.h"
#include "script/mc_groupped.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/melement.h"
#include "script/melements_loader.h"

namespace footlight {

void CMC_CNVLoader::load(CMC_ObjectsContainer* scene, const CXString& fileName) {
  fileName_ = fileName;
  const auto elements = CMElementsLoader::load(window_, fileName);
  if (!elements) return;
  const Ref<CMC_ObjectsContainer> keepScene(scene);
  auto* known = scene->find<CMC_Groupped>(fileName);
  const Ref<CMC_Groupped> group(known != nullptr ? known : new CMC_Groupped(fileName));
  if (known == nullptr) group->setScene(scene);
  std::vector<WeakRef<CMC_Behaviour>> behaviours;
  for (const CMElement* element : *elements) {
    const Ref<CMC_Object> object(scene->resolve(element, group.get()));
    if (!object) continue;
    object->init();
    if (!scene->addObject(object.get())) continue;
    group->add(object.get());
    for (const WeakRef<CMC_Behaviour>& behaviour : object->getTmpBehList()) group->add(behaviour.get());
    if (auto* behaviour = object_cast<CMC_Behaviour>(object.get())) behaviours.emplace_back(behaviour);
  }
  for (const WeakRef<CMC_Behaviour>& behaviour : behaviours) {
    if (behaviour) behaviour->resolveCondition();
  }
  if (known == nullptr) scene->addObject(group.get());
}

void CMC_CNVLoader::release(CMC_ObjectsContainer* scene, const CXString& fileName) {
  const Ref<CMC_ObjectsContainer> keepScene(scene);
  const Ref<CMC_Groupped> group(scene->find<CMC_Groupped>(fileName));
  if (!group) {
    if (diagnose::isOn()) diagnose::reportCall(diagnose::Group::object, fileName.str() + " is not loaded");
    return;
  }
  std::vector<WeakRef<CMC_Object>> members;
  for (CMC_Object* member : group->getList()) members.emplace_back(member);
  for (const bool behavioursFirst : {true, false}) {
    for (const WeakRef<CMC_Object>& member : members) {
      if (!member || (member->getType() == type::kBehaviour) != behavioursFirst) continue;
      const Ref<CMC_Object> keep(member.get());
      if (!behavioursFirst) {
        for (int i = 1; i <= keep->getClonesNo(); ++i) {
          releaseMember(scene, group.get(),
                        scene->getOwnObject((keep->getName() + "_" + CXString::toString(i)).view()));
        }
      }
      releaseMember(scene, group.get(), keep.get());
    }
  }
  scene->removeObject(group.get());
  destroy(group.get());
}

void CMC_CNVLoader::releaseMember(CMC_ObjectsContainer* scene, CMC_Groupped* group, CMC_Object* member) {
  const Ref<CMC_Object> keep(member);
  // The levels of the game may be members of a group, but they are nobody's to end.
  if (!keep || (keep->getType() >= type::kApplication && keep->getType() <= type::kScene)) return;
  scene->removeObject(keep.get());
  keep->done(true);
  group->remove(keep.get());
  destroy(keep.get());
}

namespace {

Result load(CMC_CNVLoader& loader, Call& call) {
  if (call.scope() != nullptr) loader.load(call.scope(), call.text(0));
  return {};
}

Result release(CMC_CNVLoader& loader, Call& call) {
  if (call.scope() != nullptr) loader.release(call.scope(), call.text(0));
  return {};
}

constexpr Method kMethods[] = {
    {1, "LOAD", "file:file", method<load>,
     "Makes the objects of a further definition file in the scene; a GROUP of the file's name holds them."},
    {2, "RELEASE", "file:file", method<release>,
     "Ends the objects that came from the file, their clones and the GROUP."},
};

}  // namespace

extern constinit const ScriptType kCnvLoaderType = {
    .number = type::kCnvLoader,
    .meaning = "Loads further definition files; every game has the one object CNVLOADER.",
    .signals = kSignalsOfAll,
    .methods = kMethods,
};

}  // namespace footlight
