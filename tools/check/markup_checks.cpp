#include "markup_checks.h"

#include <algorithm>

#include "code_parts.h"
#include "nearest.h"
#include "text/text_format_code.h"

namespace footlight::check {

namespace {

std::string nearestCode(std::string_view code) {
  Nearest nearest(code);
  for (const StyleToggle& toggle : kStyleToggles) nearest.consider(toggle.code);
  nearest.consider(kColorCode);
  return nearest.name().empty() ? std::string() : "<" + nearest.name() + ">";
}

}  // namespace

void checkMarkup(std::string_view text, const std::vector<std::string>& styles,
                 const std::function<void(std::string text, std::string suggestion)>& report) {
  for (std::size_t open = text.find('<'); open != std::string_view::npos; open = text.find('<', open + 1)) {
    const std::size_t end = text.find_first_of("<>", open + 1);
    if (end == std::string_view::npos || text[end] == '<') continue;  // a plain letter
    const std::string_view code = text.substr(open + 1, end - open - 1);
    if (const StyleToggle* toggle = findStyleToggle(code)) {
      const bool isThere = std::ranges::find(styles, toggle->style) != styles.end();
      if (!styles.empty() && !isThere)
        report("<" + std::string(code) + "> has no effect: the font has no style " + toggle->style, {});
    } else if (!code.starts_with(kBoxCode) && !code.starts_with(kColorCode)) {
      report("no code <" + excerpt(code) + ">: it vanishes from the text", nearestCode(code));
    }
  }
}

}  // namespace footlight::check
