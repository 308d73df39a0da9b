// A definition file by itself, plain or coded, without the objects that it makes: its elements and properties
// are the same each time.

#include "demand.h"
#include "files/text_file_reader.h"
#include "script/melements_loader.h"

namespace footlight::fuzz {

namespace {

std::string readAll(std::string_view text) {
  CTextFileReader reader(nullptr, text.data(), static_cast<int>(text.size()));
  const auto elements = CMElementsLoader::load(nullptr, &reader);
  demand(elements != nullptr);
  std::string all;
  for (const CMElement* element : *elements) {
    all.append(element->getName()).append("\n");
    for (const CMProperty* property : element->properties())
      all.append(property->getName()).append("=").append(property->getValue()).append("\n");
  }
  return all;
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace footlight::fuzz;
  const Machine machine({});
  demand(readAll(textOf({data, size})) == readAll(textOf({data, size})));
  return 0;
}
