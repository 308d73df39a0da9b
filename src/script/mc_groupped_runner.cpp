#include "script/mc_groupped_runner.h"

#include "foundation/depth.h"
#include "script/mc_groupped.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

Result nameOf(const CMC_Object* member) {
  return member != nullptr ? Result(Factory::makeString(member->getName())) : Result();
}

Result add(CMC_Groupped& group, Call& call) {
  for (const CXString& name : call.textsFrom(0)) group.add(call.findReported(name));
  return {};
}

Result remove(CMC_Groupped& group, Call& call) {
  if (const CMC_Object* member = call.namedAny(0)) group.remove(member);
  return {};
}

Result removeAll(CMC_Groupped& group, Call& /*call*/) {
  group.removeAll();
  return {};
}

Result getSize(CMC_Groupped& group, Call& /*call*/) { return Factory::makeInteger(group.getSize()); }

Result getName(CMC_Groupped& group, Call& call) { return nameOf(group.getAt(call.integer(0))); }

Result prev(CMC_Groupped& group, Call& call) {
  return nameOf(group.moveMarker(-std::int64_t{call.integer(0)}));
}

Result next(CMC_Groupped& group, Call& call) { return nameOf(group.moveMarker(call.integer(0))); }

Result addClones(CMC_Groupped& group, Call& call) {
  if (call.scope() != nullptr) group.addClones(call.scope(), call.text(0), call.integer(1), call.integer(2));
  return {};
}

Result resetMarker(CMC_Groupped& group, Call& /*call*/) {
  group.setMarker(-1);
  return {};
}

Result getMarkerPos(CMC_Groupped& group, Call& /*call*/) { return Factory::makeInteger(group.getMarker()); }

Result setMarkerPos(CMC_Groupped& group, Call& call) {
  group.setMarker(call.integer(0));
  return {};
}

Result clone(CMC_Groupped& group, Call& call) {
  group.CMC_Object::clone(call.has(0) ? call.integer(0) : 1);
  return {};
}

Result getCloneIndex(CMC_Groupped& group, Call& /*call*/) {
  return Factory::makeInteger(group.getCloneIdx());
}

Result getNameAtMarker(CMC_Groupped& group, Call& /*call*/) { return nameOf(group.getAt(group.getMarker())); }

constexpr Method kMethods[] = {
    {1, "ADD", 1, Method::kAny, method<add>},
    {2, "REMOVE", 1, 1, method<remove>},
    {3, "REMOVEALL", 0, 0, method<removeAll>},
    {4, "GETSIZE", 0, 0, method<getSize>},
    {5, "GETNAME", 1, 1, method<getName>},
    {6, "PREV", 1, 1, method<prev>},
    {7, "NEXT", 1, 1, method<next>},
    {8, "ADDCLONES", 3, 3, method<addClones>},
    {9, "RESETMARKER", 0, 0, method<resetMarker>},
    {10, "GETMARKERPOS", 0, 0, method<getMarkerPos>},
    {11, "SETMARKERPOS", 1, 1, method<setMarkerPos>},
    {12, "CLONE", 0, 1, method<clone>},
    {13, "GETCLONEINDEX", 0, 0, method<getCloneIndex>},
    {14, "GETNAMEATMARKER", 0, 0, method<getNameAtMarker>},
};

}  // namespace

std::span<const Method> methods::groupped() { return kMethods; }

Result CMC_Groupped_Runner::run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
                                const ArgumentList& arguments) {
  auto* group = object_cast<CMC_Groupped>(object);
  if (group == nullptr || resolveMethod(method) >= 0)
    return CMC_Runner::run(method, object, scope, arguments);
  const DepthGuard depth;
  if (!depth) return {};
  std::vector<WeakRef<CMC_Object>> members;
  for (CMC_Object* member : group->getList()) members.emplace_back(member);
  for (const WeakRef<CMC_Object>& member : members) {
    if (!watchdog::mayContinue()) break;
    CMC_Runner* runner = member ? member->getRunner() : nullptr;
    if (runner != nullptr) runner->run(method, member.get(), scope, arguments);
  }
  return {};
}

}  // namespace footlight
