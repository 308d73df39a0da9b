#pragma once

// One definition file as the engine reads it, with what the engine forgets: which physical line each piece of
// a value came from. Reading it reports what is lost on the way: lines that mean nothing, text behind
// slashes, signs that only separate.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "findings.h"
#include "script/melement.h"

namespace footlight {
class CTextFileReader;
}

namespace footlight::check {

class Scope;

// The text of one value as statements are cut from it: without blanks. Pieces of it are views into it, and
// each position knows its line.
class CodeText {
 public:
  CodeText(std::string text, int line) : text_(std::move(text)), line_(line) {}

  std::string_view text() const { return text_; }
  // The line of a place in the text.
  int lineAt(const char* place) const;

 private:
  friend class SourceFile;
  std::string text_;
  int line_;
  std::vector<int> lines_;  // of each character; empty when all stand in one line
};

// Several physical lines that slashes make one.
struct LogicalLine {
  int number = 0;                  // of the first
  std::vector<std::string> lines;  // as they stand in the file
};

class SourceFile {
 public:
  // How a file comes into a scope.
  enum class Use {
    level,      // the file of an application, an episode or a scene
    classCode,  // a base or the definition file of a class
    loaded,     // while the game runs, element by element
  };

  // Reads a file that the engine found; `shown` is the name for messages.
  SourceFile(CTextFileReader& reader, std::string shown, Findings& findings);
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  const std::string& shown() const { return shown_; }
  const CMElements& elements() const { return *elements_; }
  CodeText code(const CMProperty& property) const;
  // The place of an element among those of the file.
  int orderOf(const CMElement* element) const;
  void report(Kind kind, int line, std::string object, std::string text, std::string suggestion = {}) const;

  struct Place {
    Scope* scope;
    Use use;
  };
  const std::vector<Place>& places() const { return places_; }
  // False when the file stands in the scope already.
  bool enter(Scope* scope, Use use);
  bool isUsed(Use use) const;
  // The element that binds the signals of the level whose file this is: it bears the level's name.
  bool isOwnElement(const CMElement& element) const;

 private:
  // What a logical line of several physical ones holds, without everything that may vanish on the way.
  struct Map {
    std::string characters;
    std::vector<std::pair<std::size_t, int>> lines;  // from which character on which line
    std::size_t searched = 0;
    int failures = 0;
  };

  void parse(CTextFileReader& reader);
  void readLines(CTextFileReader& reader);
  void readLine(const LogicalLine& line);
  void keepMap(const LogicalLine& line);
  void locateProperties();
  void locate(const CMProperty& property, Map& map);

  std::string shown_;
  Findings& findings_;
  std::unique_ptr<CMElements> elements_;
  std::map<int, Map> maps_;  // by the number of the first line
  std::unordered_map<const CMProperty*, std::size_t> starts_;
  std::unordered_map<const CMElement*, int> orders_;
  std::vector<Place> places_;
};

}  // namespace footlight::check
