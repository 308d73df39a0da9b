#pragma once

// Code as text: how it is cut into statements and arguments, what the first character and a few marks make of
// a statement, and how marks are filled. There is no lexer and no syntax tree, and nothing here reports an
// error. The compiler and the checker for authors read code through the same functions.

#include <optional>
#include <string_view>
#include <vector>

#include "script/mc_object.h"

namespace footlight::code_text {

// The shape of one statement. All pieces are views into its text, so that each knows its place.
struct Shape {
  enum class Kind {
    value,       // a name, a number, a text
    expression,  // [...]
    builtIn,     // @WORD(...)
    indirect,    // *NAME^METHOD(...) or *[...]^METHOD(...)
    caller,      // THIS^METHOD(...)
    call,        // NAME^METHOD(...)
  };

  Kind kind = Kind::value;
  std::string_view text;    // without a closing semicolon
  std::string_view object;  // what stands before the method, but for "*"
  std::string_view method;
  std::optional<std::string_view> parameters;  // between the brackets; the last character is taken for one

  bool isCall() const { return kind != Kind::value && kind != Kind::expression; }
};
Shape readStatement(std::string_view text);

// Cuts code into statements. The last one needs its semicolon, or it is only `rest`;
// blanks vanish everywhere.
std::vector<CXString> cutStatements(std::string_view code, CXString* rest = nullptr);
// Cuts arguments at commas outside of round brackets; empty pieces take no place.
std::vector<std::string_view> cutArguments(std::string_view text);

// Whether the text holds a "$".
inline bool hasMark(std::string_view text) { return text.find('$') != std::string_view::npos; }
// The text with each `$n` that has an argument replaced by it; as it was where that would be too long.
CXString fillMarks(const CXString& text, const TextList* arguments);

// The inside of any two characters.
std::string_view withoutEnds(std::string_view text);
// The inside of a pair of quotation marks, or of what there is of the pair.
std::string_view withoutQuotes(std::string_view text);
// The same of braces.
std::string_view withoutBraces(std::string_view text);
// Code without one pair of outer braces and without blanks at its ends.
CXString trimmedCode(CXString code);
// Whether a piece of text is inline code: a brace at its start or behind an opening quotation mark.
bool isInlineCode(std::string_view text);
// The code inside of the braces, and inside of the quotation marks around them.
CXString inlineCodeOf(std::string_view text);

}  // namespace footlight::code_text
