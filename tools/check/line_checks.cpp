#include "line_checks.h"

#include <string_view>

#include "foundation/string_tokenizer.h"
#include "script/melement.h"
#include "source_file.h"

namespace footlight::check {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kSeparators = ":=\n";

std::string_view trimmed(std::string_view text) {
  const auto start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

// A comment is told by its first character when the lines are joined and their slashes gone.
bool isComment(const LogicalLine& line) {
  for (const std::string& physical : line.lines) {
    const auto first = physical.find_first_not_of(" \t\r\n/");
    if (first != std::string::npos) return physical[first] == '#';
  }
  return false;
}

// True for a line that would begin a definition if it stood alone.
bool isDefinition(std::string_view line, const CMElements& elements) {
  std::string_view rest = trimmed(line);
  if (rest.find_first_of(kSeparators) == std::string_view::npos) return false;
  const std::string_view first = takeToken(rest, kSeparators);
  return first == "OBJECT" || first == "DEF" || first == "IMPORT" || elements.contains(first);
}

void checkCommentSlashes(const LogicalLine& line, const LineReport& report) {
  for (std::size_t i = 1; i < line.lines.size(); ++i) {
    const std::string_view text = trimmed(line.lines[i]);
    if (text.empty() || text.starts_with('#')) continue;
    report(Kind::slash, line.number + static_cast<int>(i), "",
           "belongs to the comment above: the slash there makes both one line");
    return;
  }
}

void checkSlashes(const LogicalLine& line, const CMElements& elements, const LineReport& report) {
  int number = line.number;
  for (const std::string& physical : line.lines) {
    const std::string_view text = trimmed(physical);
    const auto slash = text.find('/');
    if (slash != std::string_view::npos && slash + 1 < text.size()) {
      report(Kind::slash, number, "",
             "the slash behind \"" + excerpt(text.substr(0, slash)) +
                 "\" vanishes, and the next line becomes a part of this one");
    } else if (number > line.number && isDefinition(text, elements)) {
      report(Kind::slash, number, "", "belongs to the line above: the slash there makes both one line");
    }
    ++number;
  }
}

// Follows a line of the form NAME:PROPERTY=VALUE over its physical lines. Only the two separators count; what
// else looks like one is reported, once a physical line.
class SeparatorCheck {
 public:
  SeparatorCheck(const CMElements& elements, const LineReport& report)
      : elements_(elements), report_(report) {}

  void run(const LogicalLine& line) {
    number_ = line.number;
    for (const std::string& physical : line.lines) {
      isTold_ = false;
      for (const char c : physical) {
        if (!take(c)) return;
      }
      ++number_;
    }
  }

 private:
  // False when the line is of another form.
  bool take(char c) {
    if (c == '\t' || c == '/' || c == '\n' || c == '\r') return true;
    if (c != ':' && c != '=') {
      if (wasSeparator_ && words_ < 2) ++words_;
      wasSeparator_ = false;
      if (words_ < 2) name_[words_] += c;
      return true;
    }
    if (words_ == 0 && !wasSeparator_ && !elements_.contains(trimmed(name_[0]))) return false;
    if (words_ == 1 && (name_[1] == "ADD" || name_[1] == "APPLY")) return false;
    const bool isValue = words_ >= 2 || (words_ == 1 && wasSeparator_ && !name_[1].empty());
    if (isValue) tell(c);
    wasSeparator_ = true;
    return true;
  }

  void tell(char c) {
    if (isTold_) return;
    isTold_ = true;
    const std::string property = std::string(trimmed(name_[0])) + ":" + name_[1];
    report_(Kind::separator, number_, std::string(trimmed(name_[0])),
            std::string(c == '=' ? "an equals sign" : "a colon") + " does not reach the value of " +
                excerpt(property) + ": it only separates");
  }

  const CMElements& elements_;
  const LineReport& report_;
  std::string name_[2];  // the element and the property
  int words_ = 0;        // separated ones that are behind
  int number_ = 0;
  bool wasSeparator_ = false;
  bool isTold_ = false;
};

}  // namespace

void checkLine(const LogicalLine& line, const CMElements& elements, const LineReport& report) {
  if (isComment(line)) {
    checkCommentSlashes(line, report);
    return;
  }
  checkSlashes(line, elements, report);
  SeparatorCheck(elements, report).run(line);
}

}  // namespace footlight::check
