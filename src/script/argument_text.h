#pragma once

// One argument of a behaviour. Arguments travel as text; a whole number is written where somebody reads it.

#include <vector>

#include "foundation/xstring.h"

namespace footlight {

class ArgumentText {
 public:
  ArgumentText() = default;
  ArgumentText(CXString text) : text_(std::move(text)) {}
  ArgumentText(const char* text) : text_(text) {}
  explicit ArgumentText(int whole) : whole_(whole), isWhole_(true), isWritten_(false) {}

  const CXString& text() const {
    if (!isWritten_) write();
    return text_;
  }
  operator const CXString&() const { return text(); }
  // Whether the argument was made of a whole number, and which.
  bool isWhole() const { return isWhole_; }
  int whole() const { return whole_; }

  friend bool operator==(const ArgumentText& a, const ArgumentText& b) { return a.text() == b.text(); }

 private:
  void write() const {
    text_ = CXString::toString(whole_);
    isWritten_ = true;
  }

  mutable CXString text_;
  int whole_ = 0;
  bool isWhole_ = false;
  mutable bool isWritten_ = true;
};

// The arguments behind $1 to $9 and on.
using TextList = std::vector<ArgumentText>;

}  // namespace footlight
