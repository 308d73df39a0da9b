#pragma once

// One statement of code, read as the interpreter reads it: by its first character and a few marks. All pieces
// are views into the text that the statement was cut from, so that each knows its place.

#include <string_view>
#include <vector>

namespace footlight::check {

using Piece = std::string_view;

struct Statement {
  enum class Kind {
    value,       // a name, a number, a text
    expression,  // [...]
    builtIn,     // @WORD(...)
    indirect,    // *NAME^METHOD(...)
    caller,      // THIS^METHOD(...)
    call,        // NAME^METHOD(...)
  };
  enum class Brackets {
    none,    // a call without them
    closed,  // as it should be
    ragged,  // the statement does not end with the bracket that closes its arguments
  };

  Kind kind = Kind::value;
  Brackets brackets = Brackets::none;
  Piece text;
  Piece object;
  Piece method;
  std::vector<Piece> arguments;  // empty pieces take no slot

  bool isCall() const { return kind != Kind::value && kind != Kind::expression; }
};

Statement readStatement(Piece text);

// Cuts arithmetic at its operators outside of square brackets; empty operands are left out.
std::vector<Piece> cutOperands(Piece text);
// Cuts at each mark; there is always at least one piece.
std::vector<Piece> cutAt(Piece text, std::string_view mark);

// The inside of code with one pair of braces, or of what there is of the pair.
Piece withoutBraces(Piece text);
// The inside of a pair of quotation marks, or of what there is of the pair.
Piece withoutQuotes(Piece text);
// The inside of any two characters.
Piece withoutEnds(Piece text);

// True when some of the text is known only at run time: "$1", or "&1" in the code of a timer.
bool hasMark(Piece text);
bool isQuoted(Piece text);
// A text that is code rather than a name.
bool looksLikeCode(Piece text);

}  // namespace footlight::check
