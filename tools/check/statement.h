#pragma once

// One statement of code as the interpreter reads it, with what an author may have got wrong
// about its brackets.

#include <string_view>
#include <vector>

#include "script/code_text.h"

namespace footlight::check {

using Piece = std::string_view;
using code_text::withoutBraces;
using code_text::withoutEnds;
using code_text::withoutQuotes;

struct Statement : code_text::Shape {
  enum class Brackets {
    none,    // a call without them
    closed,  // as it should be
    ragged,  // the statement does not end with the bracket that closes its arguments
  };

  Brackets brackets = Brackets::none;
  std::vector<Piece> arguments;  // empty pieces take no slot
};

Statement readStatement(Piece text);

// Cuts arithmetic at its operators outside of square brackets; empty operands are left out.
std::vector<Piece> cutOperands(Piece text);
// Cuts at each mark; there is always at least one piece.
std::vector<Piece> cutAt(Piece text, std::string_view mark);

// True when some of the text is known only at run time: "$1", or "&1" in the code of a timer.
bool hasMark(Piece text);
bool isQuoted(Piece text);
// A text that is code rather than a name.
bool looksLikeCode(Piece text);

}  // namespace footlight::check
