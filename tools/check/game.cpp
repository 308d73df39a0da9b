#include "game.h"

#include <algorithm>

#include "code_parts.h"
#include "discovery.h"
#include "element_checks.h"
#include "files/file.h"
#include "files/path.h"
#include "files/text_file_reader.h"
#include "foundation/limits.h"
#include "foundation/string_tokenizer.h"
#include "gfx/window.h"
#include "objects/input/mc_keyboard.h"
#include "objects/input/mc_mouse.h"
#include "objects/plain_types.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "platform/platform.h"
#include "script/melement.h"

namespace footlight::check {

namespace {

constexpr const char* kApplicationFile = "application.def";
constexpr const char* kDataFolder = "Dane";
constexpr const char* kSoundFolder = "Wavs";
constexpr const char* kClassFolder = "$COMMON\\CLASSES\\";
constexpr int kMostRounds = 64;  // of discoveries that lead to discoveries

std::vector<CXString> namesIn(const CXString& list) {
  std::vector<CXString> names;
  CStringTokenizer tokenizer(list, ", ");
  while (tokenizer.hasMoreTokens()) names.push_back(tokenizer.nextToken());
  return names;
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// The folders in which a name of a file is looked for when code of the scope loads it.
void addFolders(const Scope& scope, bool isBelowSeen, std::vector<CXString>& folders,
                std::set<const Scope*>& seen) {
  if (!seen.insert(&scope).second) return;
  folders.insert(folders.end(), scope.folders.begin(), scope.folders.end());
  for (const Scope* child : scope.children()) {
    if (isBelowSeen) addFolders(*child, true, folders, seen);
  }
  if (scope.level() != Scope::Level::classCode) return;
  for (const Scope* parent : scope.parents()) addFolders(*parent, true, folders, seen);
}

}  // namespace

Game::Game(CWindow& window, ShownName shownName, Findings& findings)
    : window_(window), shownName_(std::move(shownName)), findings_(findings) {}

// Files

SourceFile* Game::open(const CXString& name) {
  CTextFileReader reader(&window_, name);
  if (reader.LastError() != 0) {
    if (CFile::fileExists(name)) {
      const CXString full =
          name.GetAt(1) == ':' ? name : CPath::getFullPath(CFile::getCurrentDirectory(), name);
      findings_.add({shownName_(full), 1, Kind::limit, {}, "is too large for the engine to read", {}});
    }
    return nullptr;
  }
  std::unique_ptr<SourceFile>& source = sources_[reader.getFileName().str()];
  if (source == nullptr) {
    source = std::make_unique<SourceFile>(reader, shownName_(reader.getFileName()), findings_);
    order_.push_back(source.get());
  }
  return source.get();
}

SourceFile* Game::openIn(const std::vector<CXString>& folders, const CXString& name) {
  for (const CXString& folder : folders) {
    if (CFile::chDir(folder) != 0) continue;
    if (SourceFile* file = open(name)) return file;
  }
  return nullptr;
}

bool Game::hasClassFile(const CXString& name) {
  return open(CPath::resolveFileName(&window_, CXString(kClassFolder) + name)) != nullptr;
}

// Offers the file of each folder that the scopes may be in to `take`, until that takes one.
template <class Take>
bool Game::findIn(std::span<Scope* const> scopes, const CXString& name, Take take) {
  std::vector<CXString> folders;
  std::set<const Scope*> seen;
  for (const Scope* scope : scopes) addFolders(*scope, true, folders, seen);
  return std::any_of(folders.begin(), folders.end(),
                     [&](const CXString& folder) { return CFile::chDir(folder) == 0 && take(name); });
}

std::optional<Game::TextFile> Game::readText(std::span<Scope* const> scopes, const CXString& name) {
  std::optional<TextFile> found;
  findIn(scopes, name, [&](const CXString& file) {
    CTextFileReader reader(&window_, file);
    if (reader.LastError() != 0) return false;
    found = TextFile{shownName_(reader.getFileName()), {}};
    while (!reader.eof()) found->text.append(reader.getLine()).append("\n");
    return true;
  });
  return found;
}

std::optional<std::vector<std::byte>> Game::readBytes(std::span<Scope* const> scopes, const CXString& name) {
  std::optional<std::vector<std::byte>> found;
  findIn(scopes, name, [&](const CXString& file) {
    CFile opened(&window_, file, CFile::kReadBinary);
    if (opened.LastError() != 0) return false;
    found = opened.readRest(limits::kAnimationFileBytes);
    return true;
  });
  return found;
}

bool Game::hasSound(const CXString& name) {
  const CXString folder = CPath::getFullPath(window_.getDataRoot(), kSoundFolder);
  return CFile(&window_, CPath::getFullPath(folder, name), CFile::kReadBinary).LastError() == 0;
}

std::vector<CXString> Game::files() const {
  std::vector<CXString> names;
  for (const auto& [name, source] : sources_) names.emplace_back(name);
  return names;
}

// Levels

bool Game::load() {
  CFile::chDir(CPath::getFullPath(window_.getDataRoot(), kDataFolder));
  application_ = open(kApplicationFile);
  if (application_ == nullptr) return false;
  makeLevels(Scope::Level::scene, "SCENE");
  makeLevels(Scope::Level::episode, "EPISODE");
  makeLevels(Scope::Level::application, "APPLICATION");
  for (const auto& [element, scope] : levels_) levelsByName_.emplace(scope->name(), scope);
  joinLevels();
  for (const auto& [element, scope] : levels_) readLevelFile(*scope);
  for (const auto& [element, scope] : levels_) checkStart(*element, *scope);
  discoverAll();
  return true;
}

Scope* Game::makeScope(Scope::Level level, std::string name) {
  scopes_.push_back(std::make_unique<Scope>(level, std::move(name)));
  return scopes_.back().get();
}

void Game::makeLevels(Scope::Level level, std::string_view word) {
  for (const CMElement* element : application_->elements()) {
    if (element->getPropertyValue("TYPE") != word) continue;
    const bool isApplication = level == Scope::Level::application;
    // The last application is the one that runs, the first of several scenes of a name the one that is found.
    if (isApplication && !levels_.empty() && levels_.back().second->level() == level) levels_.pop_back();
    const bool isRenamed = isApplication && element->getName() == "DEMO";
    Scope* scope = makeScope(level, isRenamed ? "GAME" : std::string(element->getName()));
    scope->isOpen = element->getPropertyValue("DLLS").IsString();
    scope->folders.push_back(folderOf(*element, level));
    levels_.emplace_back(element, scope);
  }
}

Scope* Game::level(std::string_view name) const {
  const auto found = levelsByName_.find(name);
  return found == levelsByName_.end() ? nullptr : found->second;
}

// The root path counts for scenes alone, and only where it has their file.
CXString Game::folderOf(const CMElement& element, Scope::Level level) const {
  const CXString path = element.getPropertyValue("PATH");
  const auto below = [&path](const CXString& root) {
    const CXString folder = CPath::getFullPath(root, kDataFolder);
    return path.IsString() ? CPath::getFullPath(folder, path) : folder;
  };
  const CXString own = below(CWindow::getRootPath());
  const bool isOwn =
      level == Scope::Level::scene && CFile::chDir(own) == 0 && CFile::fileExists(element.getName() + ".cnv");
  return isOwn ? own : below(window_.getDataRoot());
}

void Game::joinLevels() {
  Scope* application = nullptr;
  for (const auto& [element, scope] : levels_) {
    if (scope->level() == Scope::Level::scene) continue;
    if (scope->level() == Scope::Level::application) {
      application = scope;
      addSubScenes(*element, "EPISODES", *scope);
    }
    addSubScenes(*element, "SCENES", *scope);
  }
  if (application == nullptr) {
    application_->report(Kind::definition, 1, "", "no element has the TYPE APPLICATION: there is no game");
  } else {
    nameLevels(*application);
  }
}

void Game::addSubScenes(const CMElement& element, const char* property, Scope& level) {
  for (const CXString& name : namesIn(element.getPropertyValue(property))) {
    Scope* scene = this->level(name);
    if (scene == nullptr || scene == &level) continue;
    level.scenes.push_back(scene->name());
    level.addChild(scene);
    scene->addParent(&level);
  }
}

// Each level is known by its name to those below, the scenes of episodes and of the application to all.
void Game::nameLevels(Scope& application) {
  const auto thingOf = [](Scope& scope) {
    const int type = scope.level() == Scope::Level::scene     ? type::kScene
                     : scope.level() == Scope::Level::episode ? type::kEpisode
                                                              : type::kApplication;
    return Thing{.type = type, .scope = &scope};
  };
  for (const auto& [element, scope] : levels_) {
    // A scene that no list names is never shown, or only as the first: it is read as one
    // of the application's.
    if (scope->parents().empty() && scope != &application) scope->addParent(&application);
    if (scope->level() == Scope::Level::scene) application.add(scope->name(), thingOf(*scope));
    for (Scope* parent : scope->parents()) {
      scope->add(parent->name(), thingOf(*parent));
      for (Scope* above : parent->parents()) scope->add(above->name(), thingOf(*above));
    }
    for (const std::string& name : scope->scenes) {
      Scope* scene = level(name);
      if (scene->level() == Scope::Level::scene) application.add(name, thingOf(*scene));
    }
  }
  application.add(application.name(), thingOf(application));
  application.add("RANDOM", {.type = type::kRandom});
  application.add("SYSTEM", {.type = type::kSystem});
  application.add("CNVLOADER", {.type = type::kCnvLoader});
  application.add("NETCLIENT", {.type = type::kNetClient});
  application.add("NETSERVER", {.type = type::kNetServer});
}

void Game::readLevelFile(Scope& level) {
  const CXString name = CXString(level.name()) + ".cnv";
  if (CFile::chDir(level.folders.front()) != 0 || !CFile::fileExists(name)) return;
  if (SourceFile* file = open(name)) enter(*file, level, SourceFile::Use::level);
}

// A level without an __INIT__ runs the one that it finds above, each time that it is entered.
void Game::checkStart(const CMElement& element, const Scope& level) {
  constexpr const char* kInit = "__INIT__";
  const Scope* above = &level;
  // Mistaken lists may go round in circles; there are three levels.
  for (int depth = 0; depth < 2 && !above->owns(kInit) && !above->parents().empty(); ++depth)
    above = above->parents().front();
  if (above == &level || !above->owns(kInit)) return;
  application_->report(Kind::behaviour, element.origin().line, level.name(),
                       level.name() + " has no __INIT__: it runs that of " + above->name() + " again");
}

// Elements

void Game::enter(SourceFile& file, Scope& scope, SourceFile::Use use) {
  if (!file.enter(&scope, use)) return;
  isChanged_ = true;
  for (const CMElement* element : file.elements()) enterElement(file, *element, scope, use);
}

void Game::enterElement(const SourceFile& file, const CMElement& element, Scope& scope, SourceFile::Use use) {
  enterInlineBehaviours(element, scope);
  if (file.isOwnElement(element)) return;
  // What has no TYPE or an unknown one is reported as such, and its name is left in peace.
  const ScriptType* description = findTypeByDefinition(element.getPropertyValue("TYPE"));
  // Mouse and keyboard bear the names of their types.
  const bool isDevice = description != nullptr &&
                        (description->number == type::kMouse || description->number == type::kKeyboard);
  const std::string name(isDevice ? description->idWord : element.getName());
  Thing thing{.file = &file, .element = &element};
  if (description != nullptr) thing.type = description->number;
  noteUnknownMethods(thing.type);
  if (thing.type == type::kClass) thing.scope = makeClass(element, scope);
  if (use == SourceFile::Use::classCode) {
    scope.displace(name, thing);
  } else {
    scope.add(name, thing);
  }
}

void Game::enterInlineBehaviours(const CMElement& element, Scope& scope) {
  for (const auto& property : element.properties()) {
    if (!isInlineBinding(*property)) continue;
    // The behaviours of an instance bear its name too.
    const std::string prefix = scope.level() == Scope::Level::classCode ? "beh_*_" : "beh_";
    scope.create(prefix + std::string(element.getName()) + "_" + std::string(property->getName()),
                 {.type = type::kBehaviour});
  }
}

void Game::noteUnknownMethods(int type) {
  if (type == Thing::kUnknownType || !hasMethods(type)) hasUnknownMethods_ = true;
}

// Classes

Scope* Game::classOf(const CMElement& element) const {
  const auto found =
      classes_.find(element.getPropertyValue("BASE").str() + "|" + element.getPropertyValue("DEF").str());
  return found == classes_.end() ? nullptr : found->second;
}

// Two templates with the same files are one class.
Scope* Game::makeClass(const CMElement& element, Scope& around) {
  const CXString base = element.getPropertyValue("BASE");
  const CXString definition = element.getPropertyValue("DEF");
  Scope*& scope = classes_[base.str() + "|" + definition.str()];
  if (scope == nullptr) {
    scope = makeScope(Scope::Level::classCode, std::string(element.getName()));
    std::vector<CXString> files = base.toVector(",");
    if (files.size() > static_cast<std::size_t>(limits::kClassFiles)) files.resize(limits::kClassFiles);
    for (CXString& file : files) file.AllTrim();
    if (definition.IsString()) files.push_back(definition);
    waitingClasses_.push_back({scope, std::move(files)});
  }
  noteCreated(scope->addParent(&around));
  return scope;
}

// Files of classes may hold templates of further classes, so they wait in a list.
void Game::readClasses() {
  while (!waitingClasses_.empty()) {
    const WaitingClass waiting = std::move(waitingClasses_.back());
    waitingClasses_.pop_back();
    for (const CXString& name : waiting.files) {
      SourceFile* file = open(CPath::resolveFileName(&window_, CXString(kClassFolder) + name));
      if (file != nullptr) enter(*file, *waiting.scope, SourceFile::Use::classCode);
    }
  }
}

// What code makes

void Game::noteLoad(Scope& scope, const CXString& name, const SourceFile& by, int line) {
  if (!loads_.emplace(&scope, name.str()).second) return;
  std::vector<CXString> folders;
  std::set<const Scope*> seen;
  addFolders(scope, true, folders, seen);
  SourceFile* file = openIn(folders, name);
  if (file == nullptr) {
    by.report(Kind::file, line, name.str(), "there is no definition file " + excerpt(name.view()));
    return;
  }
  noteCreated(scope.add(name.str(), {.type = type::kGroup}));
  enter(*file, scope, SourceFile::Use::loaded);
}

void Game::discover() {
  for (int round = 0; round < kMostRounds; ++round) {
    isChanged_ = false;
    readClasses();
    for (std::size_t i = 0; i < order_.size(); ++i) {
      const std::vector<SourceFile::Place> places = order_[i]->places();
      for (const SourceFile::Place& place : places) discoverIn(*this, *order_[i], *place.scope);
    }
    readClasses();
    if (!isChanged_) return;
  }
}

// A file that is loaded by a computed name may be any that nothing else names.
void Game::discoverAll() {
  discover();
  const bool isAnyComputed = std::any_of(scopes_.begin(), scopes_.end(),
                                         [](const auto& scope) { return scope->loadsComputedFiles; });
  if (!isAnyComputed) return;
  for (const CXString& name : definitionFiles(std::array{CWindow::getRootPath(), window_.getDataRoot()})) {
    if (sources_.contains(name.str())) continue;
    SourceFile* file = open(name);
    for (std::size_t i = 0; i < scopes_.size() && file != nullptr; ++i) {
      if (!scopes_[i]->loadsComputedFiles) continue;
      scopes_[i]->create("*.cnv", {.type = type::kGroup});
      enter(*file, *scopes_[i], SourceFile::Use::loaded);
    }
  }
  discover();
}

void Game::addOrphans(const std::vector<CXString>& names) {
  Scope* anywhere = makeScope(Scope::Level::anywhere, {});
  for (const auto& scope : scopes_) anywhere->addParent(scope.get());
  for (const CXString& name : names) {
    if (SourceFile* file = open(name)) enter(*file, *anywhere, SourceFile::Use::level);
  }
  discover();
}

// Questions

Found Game::look(std::span<Scope* const> scopes, std::string_view name) const {
  Found found;
  const auto lookFor = [&](std::string_view wanted) {
    for (const Scope* scope : scopes) {
      Found one = scope->find(wanted);
      found.mayBe = found.mayBe || one.mayBe;
      found.things.insert(found.things.end(), one.things.begin(), one.things.end());
    }
  };
  lookFor(name);
  if (name == "__RETURN__" || name == "_I_") found.mayBe = true;
  // The number 0 of a name is the object itself, further numbers are its clones and theirs.
  bool isClone = areClonesComputed_;
  for (auto bar = name.rfind('_'); !found && bar != std::string_view::npos; bar = name.rfind('_')) {
    if (!isNumber(name.substr(bar + 1))) break;
    const bool isItself = name.substr(bar) == "_0";
    name = name.substr(0, bar);
    isClone = isClone || clones_.contains(std::string(name));
    if (isClone || isItself) lookFor(name);
  }
  return found;
}

bool Game::isClassMethod(std::string_view method) const {
  return std::any_of(classes_.begin(), classes_.end(), [method](const auto& entry) {
    const Found found = entry.second->find(method);
    return found.mayBe || std::any_of(found.things.begin(), found.things.end(),
                                      [](const Thing* thing) { return thing->type == type::kBehaviour; });
  });
}

Answer Game::methodOfWhatever(std::string_view method) const {
  if (const Answer answer = methodOfAny(method); answer.kind == Answer::Kind::yes) return answer;
  if (isClassMethod(method)) return {Answer::Kind::yes};
  return {hasUnknownMethods_ ? Answer::Kind::mayBe : Answer::Kind::no};
}

void Game::check() {
  checkApplication(*this, *application_);
  // Questions about files of classes may read further ones.
  for (std::size_t i = 0; i < order_.size(); ++i) {
    if (!order_[i]->places().empty()) checkElements(*this, *order_[i]);
  }
}

// All files

namespace {

void collect(const CXString& folder, int depth, std::set<std::string>& seen, std::vector<CXString>& names) {
  platform::FileSystem& files = platform::current().files();
  if (depth > limits::kTreeDepth || !seen.insert(files.toMachinePath(folder)).second) return;
  for (const platform::DirectoryEntry& entry : files.list(folder)) {
    const CXString path = CPath::getFullPath(folder, CXString(entry.name));
    const CXString ending = path.Right(path.Length() - 4);
    if (entry.isDirectory) {
      collect(path, depth + 1, seen, names);
    } else if (ending.equalsIgnoreCase(".cnv") || ending.equalsIgnoreCase(".def")) {
      names.push_back(path);
    }
  }
}

}  // namespace

std::vector<CXString> definitionFiles(std::span<const CXString> roots) {
  std::vector<CXString> names;
  std::set<std::string> seen;
  for (const CXString& root : roots) {
    for (const char* folder : {kDataFolder, "COMMON"})
      collect(CPath::getFullPath(root, folder), 0, seen, names);
  }
  return names;
}

}  // namespace footlight::check
