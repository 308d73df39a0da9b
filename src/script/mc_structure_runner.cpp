// Scripts' methods of STRUCT.

#include "script/mc_expression.h"
#include "script/mc_runner.h"
#include "script/mc_structure.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

void reportField(const CXString& name) {
  diagnose::reportCall(diagnose::Group::object, "no field " + name.str());
}

Result set(CMC_Structure& structure, Call& call) {
  if (auto* other = object_cast<CMC_Structure>(call.object(0)); other != nullptr && call.count() == 1) {
    structure.set(other);
    return {};
  }
  if (call.count() > structure.getFieldsNo() && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "more values than fields");
  for (int i = 0; i < call.count(); ++i) structure.setField(i, asVariable(call.object(i)).get());
  return {};
}

Result setField(CMC_Structure& structure, Call& call) {
  const CXString name = call.text(0);
  if (diagnose::isOn() && structure.getField(name) == nullptr) reportField(name);
  structure.setField(name, asVariable(call.object(1)).get());
  return {};
}

Result getField(CMC_Structure& structure, Call& call) {
  const Ref<CMC_Variable> key = call.variable(0);
  const bool isIndex = key && key->getType() == type::kInteger;
  const CXString name = key ? key->asText() : call.text(0);
  CMC_Variable* field = isIndex ? structure.getField(key->asInteger()) : structure.getField(name);
  if (field == nullptr && diagnose::isOn()) reportField(name);
  return Result(CMC_VariableFactory::copyVariable(field));
}

constexpr Method kMethods[] = {
    {1, "SET", "first:value, [more:value...]", method<set>,
     "Takes one value for each field in their order, or with one STRUCT all of its fields."},
    {2, "SETFIELD", "field:text, value:value", method<setField>, "Sets the field of that name."},
    {3, "GETFIELD", "field:value -> value", method<getField>,
     "The value of a field by its name, or by its number from 0."},
};

constexpr Property kProperties[] = {
    {"FIELDS", PropertyKind::list, "",
     "Its fields, each as NAME<TYPE> with INTEGER, DOUBLE, BOOL or STRING."},
    {"TOINI", PropertyKind::boolean, "FALSE", "TRUE keeps the fields in the INI file from game to game."},
    {"NETNOTIFY", PropertyKind::boolean, "FALSE", "TRUE sends each change to the other players."},
};

}  // namespace

extern constinit const ScriptType kStructureType = {
    .number = type::kStructure,
    .idWord = "STRUCTURE",
    .definitionWord = "STRUCT",
    .meaning = "Values under names of their own: NAME|FIELD.",
    .pass = 3,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Structure>,
};

}  // namespace footlight
