#pragma once

// Turns bytes into code over the real vocabulary: statements of all kinds, calls of the methods that the
// tables hold on the objects of a cast, with arguments of all kinds, code within code. The bytes decide
// everything: the same bytes make the same code, and when they end, so does the code.

#include <span>
#include <string>

#include "cast.h"
#include "input_bytes.h"
#include "script/mc_runner.h"

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
  using Rule = std::string (CodeMaker::*)();

  std::string call();
  std::string strayCall();
  std::string ifShort();
  std::string ifLong();
  std::string whileLoop();
  std::string loop();
  std::string declaration();
  std::string builtIn();
  std::string onTimer();
  std::string indirect();
  std::string computed();
  std::string ofCaller();
  std::string dynamic();
  std::string field();
  std::string runCode();
  std::string stop();
  std::string plain();

  std::string bind();
  std::string unbind();
  std::string remove();
  std::string clone();
  std::string removeClones();
  std::string runClones();
  std::string load();
  std::string release();
  std::string goTo();
  std::string restart();
  std::string send();
  std::string group();
  std::string groupCall();
  std::string newInstance();
  std::string deleteInstance();
  std::string instanceCall();
  std::string timer();
  std::string change();
  std::string create();
  std::string pause();
  std::string environment();
  std::string picture();
  std::string loadPicture();
  std::string test();

  std::string argument();
  std::string arguments(const Method& method);
  std::string value();
  std::string number();
  std::string code();
  std::string inlineCode();
  std::string expression();
  std::string condition();
  std::string signal();
  std::string word();
  std::string quoted();
  std::string name();
  std::string nameOf(int type);

  InputBytes& bytes_;
  std::span<const Named> names_;
  int depth_ = 0;
};

}  // namespace footlight::fuzz
