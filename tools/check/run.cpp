#include "run.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

#include "files/language_os_ver.h"
#include "foundation/code_page.h"
#include "foundation/command_line6.h"
#include "game.h"
#include "gfx/window.h"
#include "nearest.h"
#include "objects/all_types.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight::check {

namespace {

namespace fs = std::filesystem;

std::string canonical(const std::string& folder) {
  std::error_code error;
  const fs::path path = fs::canonical(folder, error);
  return error || !fs::is_directory(path, error) ? std::string() : path.string();
}

// The engine around the checks: files, pools and runners, nothing that shows or plays.
class Engine {
 public:
  explicit Engine(const std::string& root) : machine_({}, std::make_unique<platform::PosixFileSystem>(root)) {
    platform::use(&machine_);
    CMC_VariableFactory::initialize();
    installAllTypes();
    CMC_RunnerFactory::initialize();
  }
  ~Engine() {
    CMC_RunnerFactory::done();
    CMC_VariableFactory::done();
    platform::use(nullptr);
  }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  platform::FileSystem& files() { return machine_.files(); }

 private:
  platform::HeadlessPlatform machine_;
};

class Run {
 public:
  Run(const Options& options, std::string root, std::string dataRoot)
      : options_(options), dataRoot_(std::move(dataRoot)), root_(std::move(root)), engine_(root_) {
    engine_.files().allowRoot(engine_.files().toEnginePath(dataRoot_));
  }

  Outcome go() {
    const std::vector<CXString> all = definitionFiles(std::array{enginePath(root_), enginePath(dataRoot_)});
    for (const std::string& language : languages(all)) check(language, {});
    if (!isLoaded_) {
      outcome_.failure = options_.dataRoot + ": no Dane/application.def that can be read";
      return std::move(outcome_);
    }
    std::vector<CXString> orphans;
    std::copy_if(all.begin(), all.end(), std::back_inserter(orphans), [this](const CXString& name) {
      // An application.def in another place is another game's.
      return !reached_.contains(code_page::foldCase(name.view())) &&
             !name.Lower().endsWith("\\application.def");
    });
    if (!orphans.empty() && options_.languages.empty()) check(loadedLanguage_, orphans);
    return std::move(outcome_);
  }

 private:
  CXString enginePath(const std::string& folder) { return CXString(engine_.files().toEnginePath(folder)); }

  // The plain files first, then each language that has some of its own.
  std::vector<std::string> languages(const std::vector<CXString>& all) const {
    if (!options_.languages.empty()) return options_.languages;
    std::vector<std::string> found{""};
    for (const CLanguageOSVer::Folder& language : CLanguageOSVer::folders()) {
      const std::string part = std::string("\\") + language.name + "\\";
      const bool isUsed = std::any_of(all.begin(), all.end(), [&](const CXString& name) {
        return name.Upper().FindSubString(part) >= 0;
      });
      if (isUsed) found.emplace_back(language.name);
    }
    return found;
  }

  void check(const std::string& languageFolder, const std::vector<CXString>& orphans) {
    engine_.files().changeDirectory(engine_.files().toEnginePath(root_));
    CCommandLine6 commandLine("-window");
    CLanguageOSVer language;
    for (const CLanguageOSVer::Folder& folder : CLanguageOSVer::folders()) {
      if (languageFolder == folder.name) language.setLanguageFolder(folder.code);
    }
    CWindow window(&commandLine, &language, commandLine.getResolution(), "C:\\");
    window.setDataRoot(enginePath(dataRoot_) + "\\");
    Game game(
        window, [this](const CXString& name) { return shownName(name); }, outcome_.findings);
    if (!game.load()) return;
    if (!orphans.empty()) game.addOrphans(orphans);
    game.check();
    if (!isLoaded_) loadedLanguage_ = languageFolder;
    isLoaded_ = true;
    for (const CXString& name : game.files()) note(name);
  }

  void note(const CXString& name) {
    if (!reached_.insert(code_page::foldCase(name.view())).second) return;
    const std::string shown = shownName(name);
    outcome_.files.insert(std::lower_bound(outcome_.files.begin(), outcome_.files.end(), shown), shown);
  }

  // Names below the data root begin as the user typed it.
  std::string shownName(const CXString& name) {
    const std::string machine = engine_.files().toMachinePath(name);
    const std::string below = dataRoot_ + "/";
    if (!machine.starts_with(below)) return machine.empty() ? name.str() : machine;
    return (fs::path(options_.dataRoot) / machine.substr(below.size())).string();
  }

  const Options& options_;
  std::string dataRoot_;
  std::string root_;
  Engine engine_;
  Outcome outcome_;
  std::set<std::string> reached_;  // the engine's names, in one letter case
  std::string loadedLanguage_;
  bool isLoaded_ = false;
};

}  // namespace

Outcome run(const Options& options) {
  Nearest::beginRun();
  Outcome outcome;
  const std::string dataRoot = canonical(options.dataRoot);
  const std::string root = options.root.empty() ? dataRoot : canonical(options.root);
  if (dataRoot.empty() || root.empty()) {
    outcome.failure = (dataRoot.empty() ? options.dataRoot : options.root) + ": no such folder";
    return outcome;
  }
  for (const std::string& language : options.languages) {
    const auto known = CLanguageOSVer::folders();
    const bool isKnown = std::any_of(known.begin(), known.end(), [&](const CLanguageOSVer::Folder& folder) {
      return language == folder.name;
    });
    if (isKnown) continue;
    outcome.failure = language + ": no such language; there are";
    for (const CLanguageOSVer::Folder& folder : known) outcome.failure += std::string(" ") + folder.name;
    return outcome;
  }
  return Run(options, root, dataRoot).go();
}

}  // namespace footlight::check
