#include "code_walker.h"

#include <algorithm>
#include <array>

#include "foundation/limits.h"

namespace footlight::check {

namespace {

constexpr auto kNone = Piece::npos;
constexpr int kNoArgument = -1;

// Statements and methods that take code, or the name of a behaviour, as text.
struct CodeTaker {
  std::string_view method;
  int first;
  int second;
};
constexpr CodeTaker kStatementsWithCode[] = {
    {"LOOP", 0, kNoArgument}, {"WHILE", 3, kNoArgument}, {"RUNONTIMER", 2, 3}};
constexpr std::string_view kMethodWithCode = "RUNCLONES";
constexpr int kCodeOfMethod = 3;

class Depth {
 public:
  explicit Depth(int& depth) : depth_(depth) { ++depth_; }
  ~Depth() { --depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;
  bool isTooDeep() const { return depth_ > limits::kBracketDepth; }

 private:
  int& depth_;
};

bool isComputed(Piece text) {
  return hasMark(text) || text.starts_with('[') || text.starts_with('@') || text.starts_with('*') ||
         text.starts_with('&') || text.find('^') != kNone;
}

}  // namespace

void CodeWalker::walkCode(Piece text) {
  const Depth depth(depth_);
  if (depth.isTooDeep()) {
    visitor_.onFault(Kind::limit, text, "the brackets nest deeper than the engine reads");
    return;
  }
  if (text.starts_with('{') != text.ends_with('}')) {
    visitor_.onFault(Kind::brackets, text, "the braces around \"" + excerpt(text) + "\" are no pair");
  }
  text = withoutBraces(text);
  if (text.ends_with('}') && !text.starts_with('{')) text.remove_suffix(1);
  statements(text);
}

// The engine's own cutter tells where statements end; blanks are gone already, so that lengths are places.
void CodeWalker::statements(Piece text) {
  const bool paired = areBracketsPaired(text);
  CXString rest;
  for (const CXString& cut : code_text::cutStatements(text, &rest)) {
    const auto length = static_cast<std::size_t>(cut.Length());
    statement(text.substr(0, length));
    text.remove_prefix(length + 1);
  }
  if (rest.IsEmpty() || !paired) return;
  visitor_.onFault(Kind::statement, text,
                   "the last statement has no semicolon and is dropped: " + excerpt(text));
  if (looksLikeCode(text)) statement(text);
}

bool CodeWalker::areBracketsPaired(Piece text) {
  std::vector<std::size_t> open;
  std::size_t start = 0;  // of the statement
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ';' && open.empty()) start = i + 1;
    if (text[i] == '(') open.push_back(i);
    if (text[i] != ')') continue;
    if (open.empty()) {
      visitor_.onFault(Kind::brackets, text.substr(i),
                       "a round bracket closes that none opened, and no statement behind it ends: " +
                           excerpt(text.substr(start, i + 1 - start)));
      return false;
    }
    open.pop_back();
  }
  if (open.empty()) return true;
  visitor_.onFault(
      Kind::brackets, text.substr(open.front()),
      "a round bracket is not closed, and no statement behind it ends: " + excerpt(text.substr(start)));
  return false;
}

void CodeWalker::statement(Piece text) {
  if (text.empty()) return;
  const Statement read = readStatement(text);
  if (read.isCall()) {
    call(read);
  } else if (!hasMark(text)) {
    visitor_.onFault(Kind::statement, text, "calls nothing: " + excerpt(text));
  }
}

void CodeWalker::walkValue(Piece text) {
  if (!text.empty()) argument(text);
}

void CodeWalker::argument(Piece text) {
  // Braces around a text that holds no call are a part of the text.
  const bool isCode = text.find('^') != kNone || text.find('$') != kNone;
  if (isCode && code_text::isInlineCode(text)) {
    inlineCode(text);
    return;
  }
  const Depth depth(depth_);
  if (depth.isTooDeep()) {
    visitor_.onFault(Kind::limit, text, "the brackets nest deeper than the engine reads");
  } else if (text.starts_with('[')) {
    expression(text);
  } else if (text.starts_with('&')) {
    visitor_.onReference(text.substr(1));
  } else if (const Statement read = readStatement(text); read.isCall()) {
    call(read);
  } else {
    value(text);
  }
}

void CodeWalker::call(const Statement& statement) {
  checkBrackets(statement);
  visitor_.onCall(statement);
  if (statement.kind == Statement::Kind::indirect && statement.object.starts_with('['))
    expression(statement.object);
  if (statement.kind == Statement::Kind::builtIn) {
    builtInArguments(statement);
  } else {
    plainArguments(statement, statement.method == kMethodWithCode ? kCodeOfMethod : kNoArgument);
  }
}

void CodeWalker::checkBrackets(const Statement& statement) {
  const bool isMistaken = statement.kind == Statement::Kind::caller && !statement.text.starts_with("THIS^");
  if (isMistaken) return;  // a fault of its own
  if (statement.brackets == Statement::Brackets::none) {
    visitor_.onFault(Kind::brackets, statement.text,
                     "a call needs its round brackets: " + excerpt(statement.text));
  } else if (statement.brackets == Statement::Brackets::ragged) {
    visitor_.onFault(Kind::brackets, statement.text,
                     "does not end with the round bracket of its arguments: " + excerpt(statement.text));
  }
}

void CodeWalker::plainArguments(const Statement& statement, int codeAt) {
  int index = 0;
  for (const Piece piece : statement.arguments) {
    if (index++ == codeAt) {
      codeArgument(piece);
    } else {
      argument(piece);
    }
  }
}

void CodeWalker::builtInArguments(const Statement& statement) {
  using Reader = void (CodeWalker::*)(Piece);
  std::array<Reader, 5> readers;
  readers.fill(&CodeWalker::argument);
  const bool isTestOfSides =
      statement.method == "WHILE" || (statement.method == "IF" && statement.arguments.size() > 3);
  if (isTestOfSides) {
    readers = {&CodeWalker::sideArgument, &CodeWalker::comparisonArgument, &CodeWalker::sideArgument,
               &CodeWalker::codeArgument, &CodeWalker::codeArgument};
  } else if (statement.method == "IF") {
    readers[0] = &CodeWalker::testArgument;
    readers[1] = readers[2] = &CodeWalker::codeArgument;
  }
  for (const CodeTaker& taker : kStatementsWithCode) {
    if (statement.method != taker.method || isTestOfSides) continue;
    for (const int index : {taker.first, taker.second}) {
      if (index != kNoArgument) readers[static_cast<std::size_t>(index)] = &CodeWalker::codeArgument;
    }
  }
  if (isTestOfSides && statement.arguments.size() >= 3 && withoutQuotes(statement.arguments[1]) == "?")
    visitor_.onTypeTest(withoutQuotes(statement.arguments[0]), withoutQuotes(statement.arguments[2]));
  for (std::size_t i = 0; i < statement.arguments.size(); ++i)
    (this->*(i < readers.size() ? readers[i] : &CodeWalker::argument))(statement.arguments[i]);
}

void CodeWalker::value(Piece text) {
  const bool isText = text.starts_with('"');
  const bool isTail = isTextCut_;
  isTextCut_ = isText && !isQuoted(text);
  if (isText && isQuoted(text)) {
    visitor_.onValue(text);
  } else if (isText || std::count(text.begin(), text.end(), '"') % 2 != 0) {
    if (!isText && isTail) return;  // reported with its head
    visitor_.onFault(
        Kind::brackets, text,
        "the quotation marks are no pair (a comma outside of round brackets ends a text): " + excerpt(text));
  } else if (text.starts_with('{') != text.ends_with('}')) {
    visitor_.onFault(Kind::brackets, text, "the braces are no pair: " + excerpt(text));
  } else {
    isTextCut_ = isTail;  // a middle of a text that several commas cut
    visitor_.onValue(text);
  }
}

void CodeWalker::expression(Piece text) {
  if (!text.ends_with(']')) {
    visitor_.onFault(Kind::brackets, text, "the square bracket is not closed: " + excerpt(text));
    return;
  }
  for (const Piece operand : cutOperands(withoutEnds(text))) {
    const bool isText = operand.starts_with('"') || operand.starts_with('[');
    if (!isText && operand.find('(') != kNone && !readStatement(operand).isCall()) {
      visitor_.onFault(
          Kind::statement, operand,
          "is no call (in square brackets round ones group nothing, and @ divides): " + excerpt(operand));
    } else {
      argument(operand);
    }
  }
}

void CodeWalker::inlineCode(Piece text) {
  const bool isText = text.starts_with('"');
  if (isText && !isQuoted(text)) {
    visitor_.onFault(Kind::brackets, text, "the quotation marks around code are no pair: " + excerpt(text));
  }
  walkCode(isText ? withoutQuotes(text) : text);
}

void CodeWalker::codeArgument(Piece text) {
  if (code_text::isInlineCode(text)) {
    inlineCode(text);
  } else if (isQuoted(text)) {
    const Piece inside = withoutQuotes(text);
    if (looksLikeCode(inside)) {
      walkCode(inside);
    } else if (!inside.empty() && !hasMark(inside)) {
      visitor_.onCodeName(inside);
    }
  } else if (isComputed(text)) {
    argument(text);
  } else {
    value(text);
    visitor_.onCodeName(text);
  }
}

// Tests

void CodeWalker::testArgument(Piece text) {
  if (isQuoted(text)) {
    test(withoutQuotes(text));
  } else if (!isComputed(text) && text.find_first_of("'<>?") != kNone) {
    test(text);
  } else {
    argument(text);
  }
}

void CodeWalker::sideArgument(Piece text) {
  if (isQuoted(text)) {
    side(withoutQuotes(text));
  } else {
    argument(text);
  }
}

void CodeWalker::comparisonArgument(Piece text) {
  if (isComputed(text)) {
    argument(text);
  } else {
    visitor_.onComparison(withoutQuotes(text));
  }
}

void CodeWalker::test(Piece text) {
  const bool isAnd = text.find("&&") != kNone;
  for (const Piece piece : cutAt(text, isAnd ? "&&" : "||")) {
    if (const auto quote = piece.find('\''); quote != kNone) {
      const bool hasSign = quote > 0 && Piece("!<>").find(piece[quote - 1]) != kNone;
      side(piece.substr(0, hasSign ? quote - 1 : quote));
      side(piece.substr(quote + 1));
      continue;
    }
    std::size_t mark = kNone;
    for (const char c : {'?', '>', '<'}) {
      if (const auto at = piece.find(c); at != kNone) mark = at;
    }
    if (mark != kNone && piece[mark] == '?') {
      visitor_.onTypeTest(piece.substr(0, mark), piece.substr(mark + 1));
    } else {
      side(piece.substr(0, mark));
      if (mark != kNone) side(piece.substr(mark + 1));
    }
  }
}

// One side of a test, as text: arithmetic, a call, or a value.
void CodeWalker::side(Piece text) {
  if (text.empty() || text.starts_with('"')) return;
  const Depth depth(depth_);
  if (depth.isTooDeep()) return;
  if (text.starts_with('[')) {
    expression(text);
  } else if (text.starts_with("CONV(")) {
    for (const Piece piece : code_text::cutArguments(withoutEnds(text.substr(4)))) argument(piece);
  } else if (text.find('(') != kNone) {
    if (const Statement read = readStatement(text); read.isCall()) call(read);
  } else {
    visitor_.onValue(text);
  }
}

}  // namespace footlight::check
