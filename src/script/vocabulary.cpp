#include "script/vocabulary.h"

#include "script/mc_runner.h"
#include "script/type_table.h"

namespace footlight {

namespace {

// All words of the tables are plain ASCII without quotes, so a pair of quotes is all that they need.
std::string quoted(const char* text) { return text == nullptr ? "null" : '"' + std::string(text) + '"'; }

std::string words(std::span<const char* const> list) {
  std::string text = "[";
  for (const char* word : list) text += (text.size() > 1 ? ", " : "") + quoted(word);
  return text + "]";
}

std::string methodRows(std::span<const Method> list, const std::string& indent) {
  std::string text;
  for (const Method& method : list) {
    text += (text.empty() ? "\n" : ",\n") + indent;
    text += "{\"number\": " + std::to_string(method.number) + ", \"name\": " + quoted(method.name) +
            ", \"least\": " + std::to_string(method.least) + ", \"most\": " +
            (method.most == Method::kAny ? std::string("null") : std::to_string(method.most)) + "}";
  }
  return "[" + text + "]";
}

std::string typeRow(const TypeDescription& description) {
  const CMC_Runner* runner = CMC_RunnerFactory::getRunner(description.number);
  return "    {\"number\": " + std::to_string(description.number) +
         ", \"type\": " + quoted(description.definitionWord) + ", \"word\": " + quoted(description.idWord) +
         ", \"text\": " + quoted(description.stringWord) +
         ",\n     \"signals\": " + words(description.signals) +
         ",\n     \"properties\": " + words(description.properties) +
         ",\n     \"methods\": " + (runner != nullptr ? methodRows(runner->ownMethods(), "       ") : "[]") +
         "}";
}

}  // namespace

std::string vocabularyJson() {
  CMC_RunnerFactory::initialize();
  std::string types;
  for (const TypeDescription& description : allTypes())
    types += (types.empty() ? "" : ",\n") + typeRow(description);
  const CMC_Runner* builtIns = CMC_RunnerFactory::getRunner(type::kBuiltIns);
  std::string text = "{\n  \"statements\": " + methodRows(builtIns->ownMethods(), "    ") +
                     ",\n  \"everyObject\": " + methodRows(CMC_Runner::baseMethods(), "    ") +
                     ",\n  \"types\": [\n" + types + "\n  ]\n}\n";
  CMC_RunnerFactory::done();
  return text;
}

}  // namespace footlight
