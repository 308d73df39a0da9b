#include "statement.h"

#include "script/mc_expression.h"

namespace footlight::check {

namespace {

constexpr auto kNone = Piece::npos;

// The place of the bracket that closes the one at `open`.
std::size_t closingBracket(Piece text, std::size_t open) {
  int depth = 0;
  for (std::size_t i = open; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return i;
  }
  return kNone;
}

}  // namespace

Statement readStatement(Piece text) {
  Statement statement{code_text::readStatement(text), Statement::Brackets::none, {}};
  if (!statement.parameters) return statement;
  const auto open = static_cast<std::size_t>(statement.parameters->data() - statement.text.data()) - 1;
  const std::size_t close = closingBracket(statement.text, open);
  const bool isClosed = close != kNone && close + 1 == statement.text.size();
  statement.brackets = isClosed ? Statement::Brackets::closed : Statement::Brackets::ragged;
  statement.arguments = code_text::cutArguments(*statement.parameters);
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
