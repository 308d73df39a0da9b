#pragma once

// Cuts a text into tokens: maximal runs of characters that are no separators. Empty tokens are never given.
// The tokenizer keeps its own copy of the text.

#include <algorithm>
#include <string_view>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

// Cuts the next token off a text in memory; empty behind the last one.
inline std::string_view takeToken(std::string_view& rest, std::string_view separators) {
  const auto start = std::min(rest.find_first_not_of(separators), rest.size());
  const auto end = std::min(rest.find_first_of(separators, start), rest.size());
  const std::string_view token = rest.substr(start, end - start);
  rest.remove_prefix(end);
  return token;
}

class CStringTokenizer : public CXObject {
 public:
  CStringTokenizer(CXString text, std::string_view separators)
      : text_(std::move(text)), separators_(separators) {
    advance();
  }

  virtual bool hasMoreTokens() const { return end_ > start_; }
  // The next token; the empty text behind the last one.
  virtual CXString nextToken() {
    CXString token = text_.Mid(start_, end_);
    advance();
    return token;
  }
  // All that the tokenizer has not yet given, separators included.
  CXString rest() const { return text_.Right(start_); }

 private:
  void advance() {
    const std::string_view text = text_.view();
    const auto start = text.find_first_not_of(separators_.view(), static_cast<std::size_t>(end_));
    if (start == std::string_view::npos) {
      start_ = end_ = text_.Length();
      return;
    }
    const auto end = text.find_first_of(separators_.view(), start);
    start_ = static_cast<int>(start);
    end_ = end == std::string_view::npos ? text_.Length() : static_cast<int>(end);
  }

  CXString text_;
  CXString separators_;
  int start_ = 0;
  int end_ = 0;
};

}  // namespace footlight
