#pragma once

// A game's definitions, read without running it: from application.def to the files of its episodes and
// scenes, the files of its classes and those that code loads, and the scopes in which their names stand.

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "findings.h"
#include "scope.h"
#include "source_file.h"
#include "statement.h"
#include "vocabulary.h"

namespace footlight {
class CWindow;
}

namespace footlight::check {

class Game {
 public:
  // The engine's name of a file as messages show it.
  using ShownName = std::function<std::string(const CXString&)>;

  // The window knows the root path, the data root and the language.
  Game(CWindow& window, ShownName shownName, Findings& findings);

  // Reads everything from application.def on; false when that cannot be read.
  bool load();
  // Adds files that nothing names, each with all names of the game in sight.
  void addOrphans(const std::vector<CXString>& names);
  // Checks all that was read.
  void check();

  // All definition files that were read, by the engine's full names.
  std::vector<CXString> files() const;

  // What a name means in any of the scopes, clones included.
  Found look(std::span<Scope* const> scopes, std::string_view name) const;
  // Whether an object of whatever type may have the method: for objects that only a run can tell.
  Answer methodOfWhatever(std::string_view method) const;
  // Whether a class of the game has such a behaviour.
  bool isClassMethod(std::string_view method) const;
  // A level of the game by its name; null for none.
  Scope* level(std::string_view name) const;
  // The scopes of all classes, by the names of their files.
  const std::map<std::string, Scope*>& classes() const { return classes_; }
  // The class whose instances the element of a template makes.
  Scope* classOf(const CMElement& element) const;
  bool hasClassFile(const CXString& name);
  const std::vector<SourceFile*>& sources() const { return order_; }

  // Files of other kinds, as the engine finds them when code of one of the scopes loads them.
  struct TextFile {
    std::string shown;
    std::string text;
  };
  std::optional<TextFile> readText(std::span<Scope* const> scopes, const CXString& name);
  std::optional<std::vector<std::byte>> readBytes(std::span<Scope* const> scopes, const CXString& name);
  // Whether the sound folder has it.
  bool hasSound(const CXString& name);
  void report(Finding finding) { findings_.add(std::move(finding)); }

  // What the search for names that a run makes finds.
  void noteCreated(bool isNew) { isChanged_ = isChanged_ || isNew; }
  void noteClone(const std::string& name) { noteCreated(clones_.insert(name).second); }
  void noteAnyClone() { areClonesComputed_ = true; }
  void noteUnknownMethods(int type);
  // Code in the scope loads a definition file.
  void noteLoad(Scope& scope, const CXString& name, const SourceFile& by, int line);

 private:
  SourceFile* open(const CXString& name);
  template <class Take>
  bool findIn(std::span<Scope* const> scopes, const CXString& name, Take take);
  SourceFile* openIn(const std::vector<CXString>& folders, const CXString& name);
  Scope* makeScope(Scope::Level level, std::string name);

  void makeLevels(Scope::Level level, std::string_view word);
  void joinLevels();
  void addSubScenes(const CMElement& element, const char* property, Scope& level);
  void nameLevels(Scope& application);
  void checkStart(const CMElement& element, const Scope& level);
  void readLevelFile(Scope& level);
  CXString folderOf(const CMElement& element, Scope::Level level) const;

  void enter(SourceFile& file, Scope& scope, SourceFile::Use use);
  void enterElement(const SourceFile& file, const CMElement& element, Scope& scope, SourceFile::Use use);
  static void enterInlineBehaviours(const CMElement& element, Scope& scope);
  Scope* makeClass(const CMElement& element, Scope& around);
  void readClasses();
  void discover();
  void discoverAll();

  CWindow& window_;
  ShownName shownName_;
  Findings& findings_;
  std::map<std::string, std::unique_ptr<SourceFile>> sources_;  // by the engine's full name
  std::vector<SourceFile*> order_;                              // as they were read
  std::vector<std::unique_ptr<Scope>> scopes_;
  std::vector<std::pair<const CMElement*, Scope*>> levels_;    // in the order in which the engine builds them
  std::unordered_map<std::string_view, Scope*> levelsByName_;  // the first of a name
  std::map<std::string, Scope*> classes_;                      // by their files
  struct WaitingClass {
    Scope* scope;
    std::vector<CXString> files;
  };
  std::vector<WaitingClass> waitingClasses_;
  std::set<std::pair<const Scope*, std::string>> loads_;
  std::set<std::string> clones_;
  SourceFile* application_ = nullptr;
  bool areClonesComputed_ = false;
  bool hasUnknownMethods_ = false;  // some object has methods that the tables do not hold
  bool isChanged_ = false;
};

// All definition files below the data folders of the roots, by the engine's full names.
std::vector<CXString> definitionFiles(std::span<const CXString> roots);

}  // namespace footlight::check
