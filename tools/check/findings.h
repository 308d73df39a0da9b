#pragma once

// What the checker has to say: one finding a mistake, each with its place. Texts are UTF-8 without control
// characters, ready for an editor.

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace footlight::check {

enum class Kind {
  definition,  // a line or an element that means nothing
  type,        // no such TYPE, or no such type of a field or a test
  property,    // the type has no such property
  signal,      // nobody raises such a signal
  object,      // a name that names nothing
  method,      // no such method or statement
  behaviour,   // code is asked for by a name that no behaviour has
  arguments,   // too few for the method
  operation,   // no such operator
  statement,   // a statement that does nothing or is dropped
  brackets,    // brackets, braces or quotation marks that do not close
  slash,       // text that a slash takes away
  separator,   // text that an equals sign or a colon takes away
  event,       // an animation has no such event
  markup,      // a code in a text that does nothing
  file,        // a file that is not there or cannot be read
  limit,       // more than the engine takes
};

const char* kindName(Kind kind);

struct Finding {
  std::string file;  // the machine's name
  int line = 1;      // from 1
  Kind kind = Kind::definition;
  std::string object;      // the name in question
  std::string text;        // what is wrong with it
  std::string suggestion;  // the nearest right name; empty for none
  bool operator<(const Finding& other) const;
};

class Findings {
 public:
  // More are counted, not kept.
  static constexpr std::size_t kMost = 10000;

  // Takes the engine's text (code page 1250) for everything but the file; each finding is kept once.
  void add(Finding finding);
  bool isEmpty() const { return list_.empty(); }
  bool isFull() const { return list_.size() >= kMost; }
  std::size_t dropped() const { return dropped_; }
  // In the order of files and lines.
  const std::set<Finding>& list() const { return list_; }

 private:
  std::set<Finding> list_;
  std::size_t dropped_ = 0;
};

// "FILE:LINE: kind: text (did you mean X?)".
std::string asLine(const Finding& finding);
// An array of objects with the members file, line, kind, object, text, suggestion.
std::string asJson(const Findings& findings);

// A piece of a game's text for a message: of a bearable length.
std::string excerpt(std::string_view text);

}  // namespace footlight::check
