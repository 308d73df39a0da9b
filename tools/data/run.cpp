#include "data/run.h"

#include "foundation/limits.h"
#include "machine_file.h"
#include "platform/posix/atomic_file.h"

namespace footlight::data {

namespace {

Outcome failure(const std::string& file, const std::string& why) { return {file + ": " + why, {}}; }

Outcome show(const Words& words, const Bytes& file) {
  const std::optional<Form> form = words.form ? words.form : formOf(file);
  if (!form)
    return failure(words.input, "is no file of an ARRAY, a MULTIARRAY or a DATABASE, and no INI file");
  std::string why;
  const auto json = rowOf(*form).read(file, &why);
  if (!json) return failure(words.input, why);
  return {{}, json->dump(2, ' ', false, Json::error_handler_t::replace)};
}

Outcome make(const Words& words, const Bytes& file) {
  const Json json = Json::parse(reinterpret_cast<const char*>(file.data()),
                                reinterpret_cast<const char*>(file.data()) + file.size(), nullptr, false);
  if (json.is_discarded()) return failure(words.input, "is no JSON");
  std::string why;
  const auto bytes =
      rowOf(words.form.value_or(json.is_object() ? Form::grid : Form::array)).write(json, &why);
  if (!bytes) return failure(words.input, why);
  why = platform::writeAtomically(words.output, *bytes);
  return why.empty() ? Outcome() : failure(words.output, why);
}

}  // namespace

Outcome run(const Words& words) {
  std::string why;
  const auto file = image::readFile(words.input, limits::kTextFileBytes, &why);
  if (!file) return failure(words.input, why);
  return words.command == Command::show ? show(words, *file) : make(words, *file);
}

}  // namespace footlight::data
