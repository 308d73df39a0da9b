#include "source_file.h"

#include <algorithm>
#include <filesystem>

#include "files/text_coder.h"
#include "files/text_file_reader.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "line_checks.h"
#include "nearest.h"
#include "scope.h"
#include "script/melements_loader.h"

namespace footlight::check {

namespace {

constexpr std::string_view kVanishing = " \t\r\n/:=";
constexpr std::size_t kNeedle = 64;  // characters by which a value is found in its line
constexpr int kMostFailures = 3;

std::string without(std::string_view text, std::string_view characters) {
  std::string kept;
  for (const char c : text) {
    if (characters.find(c) == std::string_view::npos) kept += c;
  }
  return kept;
}

// The next logical line; nothing when the coder is at its end.
struct Extent {
  int number;
  int count;
};

}  // namespace

int CodeText::lineAt(const char* place) const {
  const std::ptrdiff_t offset = place - text_.data();
  if (lines_.empty() || offset < 0) return line_;
  return lines_[std::min(static_cast<std::size_t>(offset), lines_.size() - 1)];
}

SourceFile::SourceFile(CTextFileReader& reader, std::string shown, Findings& findings)
    : shown_(std::move(shown)), findings_(findings) {
  parse(reader);
  readLines(reader);
  locateProperties();
}

void SourceFile::report(Kind kind, int line, std::string object, std::string text,
                        std::string suggestion) const {
  findings_.add({shown_, line, kind, std::move(object), std::move(text), std::move(suggestion)});
}

int SourceFile::orderOf(const CMElement* element) const {
  const auto found = orders_.find(element);
  return found == orders_.end() ? -1 : found->second;
}

bool SourceFile::enter(Scope* scope, Use use) {
  const bool isKnown = std::any_of(places_.begin(), places_.end(),
                                   [scope](const Place& place) { return place.scope == scope; });
  if (!isKnown) places_.push_back({scope, use});
  return !isKnown;
}

bool SourceFile::isUsed(Use use) const {
  return std::any_of(places_.begin(), places_.end(), [use](const Place& place) { return place.use == use; });
}

bool SourceFile::isOwnElement(const CMElement& element) const {
  const auto isLevelOf = [&](const Place& place) {
    if (place.use != Use::level) return false;
    // Of a file that nothing names, only its own name is known.
    const std::filesystem::path path(shown_);
    const std::string level =
        place.scope->level() == Scope::Level::anywhere ? path.stem().string() : place.scope->name();
    return element.getName() == level;
  };
  return std::any_of(places_.begin(), places_.end(), isLevelOf);
}

// The engine's own reader tells what it drops; the names it would have known come from what it read.
void SourceFile::parse(CTextFileReader& reader) {
  struct Dropped {
    std::string name;
    std::string why;
    int line;
  };
  std::vector<Dropped> dropped;
  diagnose::listen([&dropped](const diagnose::Report& report) {
    const bool isOfLines = report.group == diagnose::Group::definition;
    if (isOfLines && dropped.size() <= Findings::kMost)
      dropped.push_back({report.object, report.text, report.line});
  });
  reader.reset();
  CTextCoder coder(nullptr, &reader, true);
  elements_ = CMElementsLoader::load(&coder, shown_);
  diagnose::listen({});

  int order = 0;
  for (const CMElement* element : *elements_) orders_.emplace(element, order++);
  for (const Dropped& drop : dropped) {
    Nearest nearest(drop.name);
    for (const char* keyword : {"OBJECT", "DEF", "IMPORT"}) nearest.consider(keyword);
    for (int i = 0; i < elements_->getSize() && !Nearest::isSpent(); ++i)
      nearest.consider(elements_->getAt(i)->getName());
    const bool comesLater = elements_->contains(drop.name) && drop.why.starts_with("no element");
    report(Kind::definition, drop.line, drop.name,
           excerpt(drop.name) + ": " + drop.why + (comesLater ? " yet: it is defined further down" : ""),
           comesLater ? std::string() : nearest.name());
  }
}

// Logical lines are the engine's; their physical lines are read beside them.
void SourceFile::readLines(CTextFileReader& reader) {
  std::vector<Extent> joined;
  int number = 1;
  {
    reader.reset();
    CTextCoder coder(nullptr, &reader, true);
    while (!coder._eof()) {
      int count = 0;
      if (CMElementsLoader::getLine(&coder, &count).startsWith("!")) break;
      if (count > 1) joined.push_back({number, count});
      number += count;
    }
  }
  const int end = number;
  reader.reset();
  CTextCoder coder(nullptr, &reader, true);
  auto next = joined.begin();
  for (number = 1; number < end && !coder._eof();) {
    const int count = next != joined.end() && next->number == number ? (next++)->count : 1;
    LogicalLine line{number, {}};
    std::int64_t size = 0;
    for (int i = 0; i < count; ++i) {
      const CXString physical = coder.getLine();
      size += physical.Length();
      if (size <= limits::kLogicalLineBytes) line.lines.push_back(physical.str());
    }
    if (size > limits::kLogicalLineBytes) {
      report(Kind::limit, number, "", "the line is longer than the engine reads: its end is cut off");
    }
    readLine(line);
    number += count;
  }
}

void SourceFile::readLine(const LogicalLine& line) {
  checkLine(line, *elements_, [this](Kind kind, int number, const std::string& object, std::string text) {
    report(kind, number, object, std::move(text));
  });
  if (line.lines.size() > 1) keepMap(line);
}

void SourceFile::keepMap(const LogicalLine& line) {
  Map map;
  int number = line.number;
  for (const std::string& physical : line.lines) {
    const std::string characters = without(physical, kVanishing);
    if (!characters.empty()) map.lines.emplace_back(map.characters.size(), number);
    map.characters += characters;
    ++number;
  }
  maps_.emplace(line.number, std::move(map));
}

void SourceFile::locateProperties() {
  if (maps_.empty()) return;
  for (const CMElement* element : *elements_) {
    for (const auto& property : element->properties()) {
      const auto found = maps_.find(property->origin().line);
      if (found != maps_.end()) locate(*property, found->second);
    }
  }
}

// Properties stand in a line in their order, each value behind its name.
void SourceFile::locate(const CMProperty& property, Map& map) {
  if (map.failures > kMostFailures) return;
  const std::string name = without(property.getName(), kVanishing);
  const std::string value = without(property.getValue(), kVanishing).substr(0, kNeedle);
  const auto found = map.characters.find(name + value, map.searched);
  if (found == std::string::npos) {
    ++map.failures;
    return;
  }
  map.searched = found + name.size() + value.size();
  starts_.emplace(&property, found + name.size());
}

CodeText SourceFile::code(const CMProperty& property) const {
  CodeText code(without(property.getValue(), " "), property.origin().line);
  const auto start = starts_.find(&property);
  if (start == starts_.end()) return code;
  const Map& map = maps_.at(property.origin().line);
  std::size_t position = start->second;
  std::size_t line = 0;
  code.lines_.reserve(code.text_.size());
  for (const char c : code.text_) {
    while (line + 1 < map.lines.size() && map.lines[line + 1].first <= position) ++line;
    code.lines_.push_back(map.lines[line].second);
    if (kVanishing.find(c) == std::string_view::npos) ++position;
  }
  return code;
}

}  // namespace footlight::check
