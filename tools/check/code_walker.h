#pragma once

// Walks code as the interpreter takes it apart: statements, their arguments, arithmetic, inline code, and the
// texts of tests and of code that the statements behind "@" read. Each piece is walked once.

#include "findings.h"
#include "source_file.h"
#include "statement.h"

namespace footlight::check {

// What a walk meets. Faults are those of the text alone; whether names mean something is the
// visitor's to know.
class CodeVisitor {
 public:
  virtual ~CodeVisitor() = default;
  virtual void onCall(const Statement& /*statement*/) {}
  // A name, a number or a text where a value stands.
  virtual void onValue(Piece /*value*/) {}
  // The name behind "&".
  virtual void onReference(Piece /*name*/) {}
  // A text that is to be the name of a behaviour.
  virtual void onCodeName(Piece /*name*/) {}
  // The word between the sides of a test.
  virtual void onComparison(Piece /*word*/) {}
  // A test of the type of an object.
  virtual void onTypeTest(Piece /*object*/, Piece /*type*/) {}
  virtual void onFault(Kind /*kind*/, Piece /*at*/, const std::string& /*text*/) {}
};

class CodeWalker {
 public:
  explicit CodeWalker(CodeVisitor& visitor) : visitor_(visitor) {}

  // Code with or without its braces.
  void walkCode(Piece text);
  // One statement whose value is used, such as an operand.
  void walkValue(Piece text);

 private:
  void statements(Piece text);
  bool areBracketsPaired(Piece text);
  void statement(Piece text);
  void argument(Piece text);
  void call(const Statement& statement);
  void checkBrackets(const Statement& statement);
  void builtInArguments(const Statement& statement);
  void plainArguments(const Statement& statement, int codeArgument);
  void value(Piece text);
  void expression(Piece text);
  void inlineCode(Piece text);
  void codeArgument(Piece text);
  void testArgument(Piece text);
  void sideArgument(Piece text);
  void comparisonArgument(Piece text);
  void test(Piece text);
  void side(Piece text);

  CodeVisitor& visitor_;
  int depth_ = 0;
  bool isTextCut_ = false;  // the last piece began a text that a comma ended
};

}  // namespace footlight::check
