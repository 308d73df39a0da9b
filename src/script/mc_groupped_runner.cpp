#include "script/mc_groupped_runner.h"

#include "script/evaluation_guard.h"
#include "script/mc_groupped.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
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
    {1, "ADD", "object:name, [more:name...]", method<add>,
     "Makes objects members; one that is a member already becomes one once more."},
    {2, "REMOVE", "object:name", method<remove>, "Takes a member out; the object stays."},
    {3, "REMOVEALL", "", method<removeAll>, "Takes all members out; the objects stay."},
    {4, "GETSIZE", "-> int", method<getSize>, "How many members there are."},
    {5, "GETNAME", "index:int -> text", method<getName>, "The name of the member at the index, from 0."},
    {6, "PREV", "step:int -> text", method<prev>,
     "Moves the marker back by the step, round from the start to the end; gives the name of the member "
     "there."},
    {7, "NEXT", "step:int -> text", method<next>,
     "Moves the marker on by the step, round from the end to the start; gives the name of the member there."},
    {8, "ADDCLONES", "object:name, start:int, count:int", method<addClones>,
     "Makes count clones of an object members, from the number start on."},
    {9, "RESETMARKER", "", method<resetMarker>, "Puts the marker before the first member."},
    {10, "GETMARKERPOS", "-> int", method<getMarkerPos>,
     "The index of the marker, -1 before the first member."},
    {11, "SETMARKERPOS", "index:int", method<setMarkerPos>,
     "Puts the marker on an index, kept within -1 and the number of members."},
    {12, "CLONE", "[count:int]", method<clone>,
     "Makes that many copies of the group itself, 1 without the argument."},
    {13, "GETCLONEINDEX", "-> int", method<getCloneIndex>,
     "The number behind the last \"_\" of the group's own name; 0 without one."},
    {14, "GETNAMEATMARKER", "-> text", method<getNameAtMarker>, "The name of the member at the marker."},
};

}  // namespace

extern constinit const ScriptType kGroupType = {
    .number = type::kGroup,
    .idWord = "GROUP",
    .definitionWord = "GROUP",
    .meaning = "A list of objects; a method that it does not have runs on each member.",
    .pass = 6,
    .signals = kSignalsOfAll,
    .methods = kMethods,
    .make = makeFrom<CMC_Groupped>,
    .makeRunner = makeRunnerOf<CMC_Groupped_Runner>,
};

Result CMC_Groupped_Runner::run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
                                const ArgumentList& arguments) {
  auto* group = object_cast<CMC_Groupped>(object);
  if (group == nullptr || resolveMethod(method) >= 0)
    return CMC_Runner::run(method, object, scope, arguments);
  const EvaluationGuard guard;
  if (!guard) return {};
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
