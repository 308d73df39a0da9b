#include "script/code_text.h"

#include <algorithm>

#include "foundation/limits.h"

namespace footlight::code_text {

namespace {

using View = std::string_view;
constexpr auto kNone = View::npos;

// From one place up to another; empty where they are the wrong way round.
View slice(View text, std::size_t start, std::size_t end) {
  start = std::min(start, text.size());
  end = std::clamp(end, start, text.size());
  return text.substr(start, end - start);
}

// What stands in a pair, or in what there is of it.
View withoutPair(View text, char first, char last) {
  if (!text.starts_with(first)) return text;
  text.remove_prefix(1);
  if (text.ends_with(last)) text.remove_suffix(1);
  return text;
}

// The method stands before the bracket at `open`, the parameters behind it.
void readCall(Shape& shape, std::size_t methodAt, std::size_t open) {
  shape.method = slice(shape.text, methodAt, open);
  if (open != kNone) shape.parameters = slice(shape.text, open + 1, shape.text.size() - 1);
}

// A call inside of the square brackets has its own caret and round bracket.
void readIndirect(Shape& shape, std::size_t open) {
  const View text = shape.text;
  const std::size_t bracket = text.find(']');
  const std::size_t close = bracket == kNone ? 0 : bracket + 1;
  std::size_t caret = text.find('^');
  if (open != kNone && close < open) {
    caret = text.find('^', close);
    open = text.find('(', caret == kNone ? 0 : caret);
  }
  shape.kind = Shape::Kind::indirect;
  if (caret != kNone) shape.object = slice(text, 1, caret);
  readCall(shape, caret == kNone ? kNone : caret + 1, open);
}

}  // namespace

Shape readStatement(View text) {
  constexpr std::size_t kBehindThis = 5;
  Shape shape;
  if (text.ends_with(';')) text.remove_suffix(1);
  shape.text = text;
  const std::size_t open = text.find('(');
  const std::size_t caret = text.find('^');
  if (text.starts_with('@')) {
    shape.kind = Shape::Kind::builtIn;
    readCall(shape, 1, open);
  } else if (text.starts_with('*')) {
    readIndirect(shape, open);
  } else if (text.starts_with("THIS")) {
    shape.kind = Shape::Kind::caller;
    shape.object = slice(text, 0, caret);
    readCall(shape, kBehindThis, open);
  } else if (text.starts_with('[')) {
    shape.kind = Shape::Kind::expression;
  } else if (!text.starts_with('"') && caret != kNone) {
    shape.kind = Shape::Kind::call;
    shape.object = slice(text, 0, caret);
    readCall(shape, caret + 1, open);
  }
  return shape;
}

std::vector<CXString> cutStatements(View code, CXString* rest) {
  std::vector<CXString> statements;
  CXString statement;
  int depth = 0;
  for (const char c : code) {
    if (c == ' ') continue;
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c == ';' && depth == 0) {
      statements.push_back(std::move(statement));
      statement = CXString();
    } else {
      statement += c;
    }
  }
  if (rest != nullptr) *rest = std::move(statement);
  return statements;
}

std::vector<View> cutArguments(View text) {
  std::vector<View> pieces;
  int depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const bool isEnd = i == text.size();
    if (!isEnd && text[i] == '(') ++depth;
    if (!isEnd && text[i] == ')') --depth;
    if (!isEnd && (text[i] != ',' || depth != 0)) continue;
    if (i > start) pieces.push_back(text.substr(start, i - start));
    start = i + 1;
  }
  return pieces;
}

CXString fillMarks(const CXString& text, const TextList* arguments) {
  CXString filled;
  int start = 0;
  for (int mark = text.Find('$'); mark >= 0; mark = text.Find('$', mark + 1)) {
    const int index = text.GetAt(mark + 1) - '1';
    const bool isFilled = mark + 1 < text.Length() && index >= 0 && index < 9 && arguments != nullptr &&
                          index < static_cast<int>(arguments->size());
    if (!isFilled) continue;
    const CXString& argument = (*arguments)[static_cast<std::size_t>(index)].text();
    filled += text.slice(start, mark);
    if (filled.Length() + argument.Length() > limits::kFilledTextBytes) {
      limitHit("filled text too long");
      return text;
    }
    filled += argument;
    start = mark + 2;
    ++mark;
  }
  filled += text.slice(start, text.Length());
  return filled;
}

View withoutEnds(View text) { return slice(text, 1, text.empty() ? 0 : text.size() - 1); }

View withoutQuotes(View text) { return withoutPair(text, '"', '"'); }

View withoutBraces(View text) { return withoutPair(text, '{', '}'); }

CXString trimmedCode(CXString code) { return CXString(withoutBraces(code.AllTrim())).AllTrim(); }

bool isInlineCode(View text) { return text.starts_with('{') || text.starts_with("\"{"); }

CXString inlineCodeOf(View text) { return trimmedCode(withoutQuotes(text)); }

}  // namespace footlight::code_text
