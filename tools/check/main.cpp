// footlight-check: reads a game's definitions without running it and tells what in them means nothing.

#include <CLI/CLI.hpp>
#include <cstdio>

#include "platform/large_stack.h"
#include "run.h"

namespace {

namespace check = footlight::check;

enum ExitStatus : int { kNothingFound = 0, kFound = 1, kNoWork = 2 };

struct Words {
  check::Options options;
  bool json = false;
  bool files = false;
};

void addOptions(CLI::App& app, Words& words) {
  app.set_help_flag("--help", "print this and leave");
  app.add_option("DATAROOT", words.options.dataRoot, "the folder that holds Dane/application.def")
      ->required();
  app.add_option("--root", words.options.root, "the folder that the game is started in, if it is another one")
      ->type_name("DIR");
  app.add_option(
         "--language", words.options.languages,
         "check with these language folders only (default: the plain files and each language there is)")
      ->type_name("NAME");
  app.add_flag("--json", words.json, "print an array of objects for editors");
  app.add_flag("--files", words.files, "print the files that were checked and nothing else");
}

int print(const Words& words, const check::Outcome& outcome) {
  if (!outcome.failure.empty()) {
    std::fprintf(stderr, "footlight-check: %s\n", outcome.failure.c_str());
    return kNoWork;
  }
  if (words.files) {
    for (const std::string& file : outcome.files) std::puts(file.c_str());
    return kNothingFound;
  }
  if (words.json) {
    std::puts(check::asJson(outcome.findings).c_str());
  } else {
    for (const check::Finding& finding : outcome.findings.list()) std::puts(check::asLine(finding).c_str());
  }
  if (outcome.findings.dropped() > 0) {
    std::fprintf(stderr, "footlight-check: %zu more are not shown\n", outcome.findings.dropped());
  }
  std::fprintf(stderr, "footlight-check: %zu files, %zu found\n", outcome.files.size(),
               outcome.findings.list().size() + outcome.findings.dropped());
  return outcome.findings.isEmpty() ? kNothingFound : kFound;
}

}  // namespace

int main(int count, char** arguments) {
  Words words;
  CLI::App app(
      "Checks a game's definitions without running it. The exit status is 0 when nothing was found, 1 when "
      "something was, 2 when the check could not be made.",
      "footlight-check");
  addOptions(app, words);
  try {
    app.parse(count, arguments);
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
    return kNothingFound;
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "footlight-check: %s\n", error.what());
    return kNoWork;
  }
  int status = kNoWork;
  const bool started =
      footlight::platform::runOnLargeStack([&] { status = print(words, check::run(words.options)); });
  if (!started) std::fputs("footlight-check: the machine gives no stack\n", stderr);
  return status;
}
