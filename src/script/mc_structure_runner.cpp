// Scripts' methods of STRUCT.

#include "script/mc_expression.h"
#include "script/mc_structure.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

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
    {1, "SET", 1, Method::kAny, method<set>},
    {2, "SETFIELD", 2, 2, method<setField>},
    {3, "GETFIELD", 1, 1, method<getField>},
};

}  // namespace

std::span<const Method> methods::structure() { return kMethods; }

}  // namespace footlight
