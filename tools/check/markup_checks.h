#pragma once

// Finds mistakes in the codes of texts that a TEXT shows.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace footlight::check {

// Calls the function with each mistake and the nearest right code. `styles` are those of the font, in upper
// case; without any nothing is said of them.
void checkMarkup(std::string_view text, const std::vector<std::string>& styles,
                 const std::function<void(std::string text, std::string suggestion)>& report);

}  // namespace footlight::check
