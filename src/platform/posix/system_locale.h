#pragma once

#include <string>
#include <string_view>

namespace footlight::platform {

// Languages as four hexadecimal digits, upper case. A name of the environment ("pl_PL.UTF-8") that is
// unknown, empty, "C" or "POSIX" gives "0409".
std::string localeCode(std::string_view environmentName);
// The code of LC_ALL, LC_MESSAGES or LANG, the first that is set.
std::string systemLocale();

}  // namespace footlight::platform
