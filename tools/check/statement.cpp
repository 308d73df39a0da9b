#include "statement.h"

#include <algorithm>

#include "script/mc_behaviour_entry.h"
#include "script/mc_expression.h"

namespace footlight::check {

namespace {

constexpr auto kNone = Piece::npos;

Piece slice(Piece text, std::size_t start, std::size_t end) {
  start = std::min(start, text.size());
  end = std::clamp(end, start, text.size());
  return text.substr(start, end - start);
}

// The place of the bracket that closes the one at `open`.
std::size_t closingBracket(Piece text, std::size_t open) {
  int depth = 0;
  for (std::size_t i = open; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return i;
  }
  return kNone;
}

void readArguments(Statement& statement, std::size_t open) {
  if (open == kNone) return;
  const std::size_t close = closingBracket(statement.text, open);
  const bool isClosed = close != kNone && close + 1 == statement.text.size();
  statement.brackets = isClosed ? Statement::Brackets::closed : Statement::Brackets::ragged;
  statement.arguments =
      CMC_Behaviour_Entry::cutArguments(slice(statement.text, open + 1, statement.text.size() - 1));
}

void readIndirect(Statement& statement, std::size_t open) {
  const Piece text = statement.text;
  const std::size_t bracket = text.find(']');
  const std::size_t close = bracket == kNone ? 0 : bracket + 1;
  std::size_t caret = text.find('^');
  if (open != kNone && close < open) {
    caret = text.find('^', close);
    open = text.find('(', caret == kNone ? 0 : caret);
  }
  statement.kind = Statement::Kind::indirect;
  statement.object = slice(text, 1, caret);
  statement.method = caret == kNone ? Piece() : slice(text, caret + 1, open);
  readArguments(statement, open);
}

}  // namespace

Statement readStatement(Piece text) {
  Statement statement;
  if (text.ends_with(';')) text.remove_suffix(1);
  statement.text = text;
  const std::size_t open = text.find('(');
  const std::size_t caret = text.find('^');
  if (text.starts_with('@')) {
    statement.kind = Statement::Kind::builtIn;
    statement.method = slice(text, 1, open);
    readArguments(statement, open);
  } else if (text.starts_with('*')) {
    readIndirect(statement, open);
  } else if (text.starts_with("THIS")) {
    statement.kind = Statement::Kind::caller;
    statement.object = slice(text, 0, std::min(caret, text.size()));
    statement.method = slice(text, 5, open);
    readArguments(statement, open);
  } else if (text.starts_with('[')) {
    statement.kind = Statement::Kind::expression;
  } else if (!text.starts_with('"') && caret != kNone) {
    statement.kind = Statement::Kind::call;
    statement.object = slice(text, 0, caret);
    statement.method = slice(text, caret + 1, open);
    readArguments(statement, open);
  }
  return statement;
}

std::vector<Piece> cutOperands(Piece text) {
  std::vector<Piece> pieces;
  for (const auto& operand : CMC_Expression::cutOperands(text)) {
    if (!operand.text.empty()) pieces.push_back(operand.text);
  }
  return pieces;
}

std::vector<Piece> cutAt(Piece text, std::string_view mark) {
  std::vector<Piece> pieces;
  for (;;) {
    const auto end = text.find(mark);
    pieces.push_back(text.substr(0, end));
    if (end == kNone) return pieces;
    text.remove_prefix(end + mark.size());
  }
}

Piece withoutBraces(Piece text) {
  if (!text.starts_with('{')) return text;
  text.remove_prefix(1);
  if (text.ends_with('}')) text.remove_suffix(1);
  return text;
}

Piece withoutQuotes(Piece text) {
  if (!text.starts_with('"')) return text;
  text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

Piece withoutEnds(Piece text) { return slice(text, 1, text.empty() ? 0 : text.size() - 1); }

bool hasMark(Piece text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if ((text[i] == '$' || text[i] == '&') && text[i + 1] >= '1' && text[i + 1] <= '9') return true;
  }
  return false;
}

bool isQuoted(Piece text) { return text.size() >= 2 && text.starts_with('"') && text.ends_with('"'); }

bool looksLikeCode(Piece text) {
  return text.starts_with('@') || text.find('^') != kNone || text.find(';') != kNone;
}

}  // namespace footlight::check
