#include "script/vocabulary.h"

#include "script/mc_runner.h"
#include "script/type_registry.h"

namespace footlight {

namespace {

// The tables are plain ASCII, in which quotes and backslashes alone need a sign before them.
std::string quoted(const char* text) {
  if (text == nullptr) return "null";
  std::string quoted = "\"";
  for (const char* c = text; *c != '\0'; ++c) {
    if (*c == '"' || *c == '\\') quoted += '\\';
    quoted += *c;
  }
  return quoted + '"';
}

// The rows of a list, one a line.
template <class Row, class Print>
std::string lines(std::span<const Row> list, const std::string& indent, Print print) {
  std::string text;
  for (const Row& row : list) text += (text.empty() ? "\n" : ",\n") + indent + "{" + print(row) + "}";
  return "[" + text + "]";
}

// "key": "value"
std::string field(const char* key, std::string_view value) {
  return quoted(key) + ": " + quoted(std::string(value).c_str());
}

// The names alone, and then what they mean.
template <class Row>
std::string names(std::span<const Row> list) {
  std::string text;
  for (const Row& row : list) text += (text.empty() ? "" : ", ") + quoted(row.name);
  return "[" + text + "]";
}

std::string signalRow(const Signal& signal) {
  return field("name", signal.name) + ", " + field("meaning", signal.meaning);
}

std::string propertyRow(const Property& property) {
  return field("name", property.name) + ", " + field("kind", wordOf(property.kind)) + ", " +
         field("default", property.byDefault) + ", " + field("meaning", property.meaning);
}

std::string argumentRows(SignatureReader& reader) {
  std::string text;
  Argument argument;
  while (reader.next(&argument)) {
    text += (text.empty() ? "{" : ", {") + field("name", argument.name) + ", " +
            field("kind", argument.kind) + (argument.isOptional ? ", \"optional\": true" : "") +
            (argument.isRepeated ? ", \"repeated\": true" : "") + "}";
  }
  return "[" + text + "]";
}

std::string methodRow(const Method& method) {
  SignatureReader reader(method.signature);
  const std::string result(reader.result());
  return "\"number\": " + std::to_string(method.number) + ", " + field("name", method.name) +
         ", \"least\": " + std::to_string(method.least) +
         ", \"most\": " + (method.most == Method::kAny ? std::string("null") : std::to_string(method.most)) +
         ", \"arguments\": " + argumentRows(reader) +
         ", \"result\": " + quoted(result.empty() ? nullptr : result.c_str()) + ", " +
         field("meaning", method.meaning);
}

std::string methodRows(std::span<const Method> list, const std::string& indent) {
  return lines(list, indent, methodRow);
}

std::string typeRow(const ScriptType* type) {
  const std::string indent = "       ";
  return "    {\"number\": " + std::to_string(type->number) + ", \"type\": " + quoted(type->definitionWord) +
         ", \"word\": " + quoted(type->idWord) + ", \"text\": " + quoted(type->stringWord) + ",\n     " +
         field("meaning", type->meaning) + ",\n     \"signals\": " + names(type->signals) +
         ",\n     \"properties\": " + names(type->properties) +
         ",\n     \"signalRows\": " + lines(type->signals, indent, signalRow) +
         ",\n     \"propertyRows\": " + lines(type->properties, indent, propertyRow) +
         ",\n     \"methods\": " + methodRows(type->methods, indent) + "}";
}

}  // namespace

std::string vocabularyJson() {
  std::string types;
  for (const ScriptType* type : allTypes()) types += (types.empty() ? "" : ",\n") + typeRow(type);
  return "{\n  \"statements\": " + methodRows(CMC_Runner::statements(), "    ") +
         ",\n  \"everyObject\": " + methodRows(CMC_Runner::baseMethods(), "    ") + ",\n  \"types\": [\n" +
         types + "\n  ]\n}\n";
}

}  // namespace footlight
