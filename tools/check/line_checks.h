#pragma once

// What a definition line loses before it becomes a value: a slash vanishes and joins the next line to its
// own, wherever it stands; an equals sign or a colon inside a value becomes a blank.

#include <functional>
#include <string>

#include "findings.h"

namespace footlight {
class CMElements;
}

namespace footlight::check {

struct LogicalLine;

using LineReport = std::function<void(Kind kind, int line, const std::string& object, std::string text)>;

void checkLine(const LogicalLine& line, const CMElements& elements, const LineReport& report);

}  // namespace footlight::check
