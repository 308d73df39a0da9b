#pragma once

// Turns bytes into code over the real vocabulary: statements of all kinds, calls of the methods that the
// tables hold on the objects of a cast, with arguments of all kinds, code within code. The bytes decide
// everything: the same bytes make the same code, and when they end, so does the code.

#include <span>
#include <string>

#include "cast.h"
#include "input_bytes.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/system/mc_timer.h"
#include "script/mc_runner.h"
#include "script/type_registry.h"

namespace footlight::fuzz {

// The methods of a type beside those of every object. Made on first use, from the runners' tables.
std::span<const Method> methodsOf(int type);

class CodeMaker {
 public:
  CodeMaker(InputBytes& bytes, const Cast& cast) : bytes_(bytes), names_(cast.names) {}

  // Up to `most` statements, each with its semicolon.
  std::string block(std::size_t most);
  // One statement, with its semicolon.
  std::string statement();
  // One statement that changes what there is: makes, removes, binds, loads, goes elsewhere.
  std::string action();
  // Words and marks of the language in any order.
  std::string soup(std::size_t most);

 private:
  // A piece that a letter behind "%" stands for in a pattern.
  struct Piece {
    char letter;
    std::string (CodeMaker::*make)();
  };
  static const Piece kPieces[];

  static constexpr std::size_t kHotNames = 6;

  std::string fill(std::string_view pattern);
  std::string piece(char letter);

  std::string name() { return named().name; }
  std::string quotedName() { return quoted(name()); }
  std::string behaviour() { return nameOf(type::kBehaviour); }
  std::string quotedBehaviour() { return quoted(behaviour()); }
  std::string classes() { return nameOf(type::kClass); }
  std::string group() { return nameOf(type::kGroup); }
  std::string timer() { return nameOf(type::kTimer); }
  std::string image() { return nameOf(type::kImage); }
  std::string integer() { return nameOf(type::kInteger); }
  std::string textVariable() { return nameOf(type::kString); }
  std::string scene() { return nameOf(type::kScene); }
  std::string structure() { return nameOf(type::kStructure); }
  std::string test() { return nameOf(bytes_.chance(128) ? type::kCondition : type::kComplexCondition); }

  std::string number();
  std::string digit() { return std::to_string(bytes_.below(10)); }
  std::string letter() { return std::string(1, static_cast<char>('A' + bytes_.below(5))); }
  std::string literal();
  std::string value();
  std::string expression();
  std::string condition();
  std::string comparison();
  std::string signal();
  std::string typeWord();
  std::string sceneWord();
  std::string groupWord();
  std::string instance() { return bytes_.chance(128) ? "MADE1" : "MADE2"; }
  std::string definitionFile();
  std::string anyFile();
  std::string computedName();
  std::string inlineCode();
  std::string code() { return bytes_.chance(96) ? quotedBehaviour() : inlineCode(); }
  std::string argument();

  std::string builtInCall() { return callOf(type::kBuiltIns); }
  std::string integerCall() { return callOf(type::kInteger); }
  std::string imageCall() { return callOf(type::kImage); }
  std::string timerCall() { return callOf(type::kTimer); }
  std::string anyCall() { return callOf(named().type); }
  std::string wholeCall();
  // The same call before and after something has changed.
  std::string callTwice();

  static std::string quoted(const std::string& text) { return "\"" + text + "\""; }
  // The first names come up most, so that what one statement does to an object meets what another does.
  const Named& named() { return names_[bytes_.below(bytes_.chance(128) ? kHotNames : names_.size())]; }
  std::string nameOf(int type);
  // A method that objects of the type have, and arguments.
  std::string callOf(int type);

  InputBytes& bytes_;
  std::span<const Named> names_;
  int depth_ = 0;
};

}  // namespace footlight::fuzz
