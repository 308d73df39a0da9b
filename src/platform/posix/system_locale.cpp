#include "platform/posix/system_locale.h"

#include <cstdlib>

namespace footlight::platform {

namespace {

struct Language {
  std::string_view name;
  const char* code;
};

// clang-format off
constexpr Language kLanguages[] = {
    {"bg", "0402"}, {"cs", "0405"}, {"de", "0407"}, {"el", "0408"}, {"en", "0409"}, {"es", "040A"}, {"et", "0425"},
    {"fr", "040C"}, {"hr", "041A"}, {"hu", "040E"}, {"it", "0410"}, {"lt", "0427"}, {"lv", "0426"}, {"nl", "0413"},
    {"pl", "0415"}, {"pt", "0416"}, {"ro", "0418"}, {"ru", "0419"}, {"sk", "041B"}, {"sl", "0424"}, {"tr", "041F"},
    {"uk", "0422"},
};
// clang-format on

}  // namespace

std::string localeCode(std::string_view environmentName) {
  const std::string_view language = environmentName.substr(0, environmentName.find_first_of("_.@"));
  for (const Language& known : kLanguages) {
    if (known.name == language) return known.code;
  }
  return "0409";
}

std::string systemLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return localeCode(value);
  }
  return localeCode("");
}

}  // namespace footlight::platform
