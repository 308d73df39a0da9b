#include "pack/run.h"

#include <filesystem>
#include <memory>

#include "files/big_file.h"
#include "foundation/code_page.h"
#include "pack/contents.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"

namespace footlight::pack {

namespace {

namespace fs = std::filesystem;

// A machine with a disk and nothing else that matters here; the folder is where writing is allowed.
class Machine {
 public:
  explicit Machine(const std::string& folder)
      : platform_({}, std::make_unique<platform::PosixFileSystem>(folder)) {
    platform::use(&platform_);
  }
  ~Machine() { platform::use(nullptr); }
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  platform::FileSystem& files() { return platform_.files(); }

 private:
  platform::HeadlessPlatform platform_;
};

std::string absolute(const std::string& name) {
  std::error_code error;
  return fs::absolute(name, error).lexically_normal().string();
}

std::string parentOf(const std::string& file) { return fs::path(absolute(file)).parent_path().string(); }

// Calls `work` with the big file, if it is one.
template <class Work>
void withBigFile(const std::string& name, Machine& machine, Outcome& outcome, Work work) {
  const CXString file(machine.files().toEnginePath(absolute(name)));
  machine.files().allowReading(file);
  const CBigFile bigFile(file, false, CXString());
  if (bigFile.LastError() == 0) {
    work(bigFile);
  } else {
    outcome.failure = name + ": " + bigFile.getFailure();
  }
}

void runList(const Words& words, Outcome& outcome) {
  Machine machine(parentOf(words.bigFile));
  withBigFile(words.bigFile, machine, outcome, [&](const CBigFile& bigFile) { list(bigFile, outcome); });
}

void runExtract(const Words& words, Outcome& outcome) {
  std::error_code error;
  const bool isNew = fs::create_directories(words.folder, error);
  if (!fs::is_directory(words.folder, error)) {
    outcome.failure = words.folder + ": the folder cannot be made";
    return;
  }
  Machine machine(absolute(words.folder));
  withBigFile(words.bigFile, machine, outcome, [&](const CBigFile& bigFile) {
    extract(bigFile, CXString(machine.files().currentDirectory()), outcome);
  });
  if (isNew && !outcome.failure.empty()) fs::remove(words.folder, error);
}

// What a big file does not take. The engine's file system does not show it, so the machine is asked.
void noteLeftOut(const std::string& folder, Outcome& outcome) {
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    const bool isNamed = code_page::fromUtf8(name) && name.find('\\') == std::string::npos;
    const fs::file_status status = entry->symlink_status(error);
    const char* why = fs::is_symlink(status) ? "it is a link"
                      : !isNamed             ? "code page 1250 lacks its name"
                      : !fs::is_directory(status) && !fs::is_regular_file(status) ? "it is no plain file"
                                                                                  : nullptr;
    if (why == nullptr) continue;
    outcome.remarks.push_back(entry->path().string() + ": left out: " + why);
    entry.disable_recursion_pending();
  }
}

void runBuild(const Words& words, Outcome& outcome) {
  Machine machine(absolute("."));
  platform::FileSystem& files = machine.files();
  const CXString output(files.toEnginePath(absolute(words.bigFile)));
  files.allowRoot(files.toEnginePath(absolute(words.folder)));
  files.allowRoot(files.toEnginePath(parentOf(words.bigFile)));
  // The root bears the name as it was typed, where the engine can tell it.
  CXString folder = code_page::fromUtf8(words.folder).value_or("");
  if (!files.directoryExists(folder)) folder = files.toEnginePath(absolute(words.folder));
  const CXString name = words.name ? CXString(code_page::fromUtf8(*words.name).value_or(*words.name))
                                   : output.Right(output.FindLast('\\') + 1);
  CBigFile bigFile(false, CXString());
  if (!bigFile.Create(folder, name, output)) {
    outcome.failure = words.bigFile + ": " + code_page::toUtf8(bigFile.getFailure());
    return;
  }
  noteLeftOut(words.folder, outcome);
  for (const std::string& remark : bigFile.getRemarks()) outcome.remarks.push_back(code_page::toUtf8(remark));
  outcome.summary = words.bigFile + " is made";
}

}  // namespace

Outcome run(const Words& words) {
  Outcome outcome;
  if (words.command == Command::list) runList(words, outcome);
  if (words.command == Command::extract) runExtract(words, outcome);
  if (words.command == Command::build) runBuild(words, outcome);
  return outcome;
}

}  // namespace footlight::pack
