#pragma once

// Code page 1250, the engine's text, against UTF-8, the machine's. The five bytes that the code page leaves
// open stand for the control characters of the same numbers, so every text of the engine has a UTF-8 form.

#include <optional>
#include <string>
#include <string_view>

namespace footlight::code_page {

std::string toUtf8(std::string_view text);
// Nothing when the text is no UTF-8 or holds a character that the code page lacks.
std::optional<std::string> fromUtf8(std::string_view text);
// Upper case for every letter of the code page, as names on a disk are compared. Scripts know fewer
// letters: see CXString::Upper.
char foldCase(char character);
std::string foldCase(std::string_view text);

}  // namespace footlight::code_page
