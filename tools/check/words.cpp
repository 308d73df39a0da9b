#include "words.h"

#include <utility>

#include "command_line.h"

namespace footlight::check {

namespace {

void addOptions(CLI::App& app, Words& words) {
  app.set_help_flag("--help", "print this and leave");
  app.add_option("DATAROOT", words.options.dataRoot, "the folder that holds Dane/application.def")
      ->required()
      ->type_name("");
  app.add_option("--root", words.options.root, "the folder that the game is started in, if it is another one")
      ->type_name("DIR");
  app.add_option(
         "--language", words.options.languages,
         "check with these language folders only (default: the plain files and each language there is)")
      ->type_name("NAME");
  app.add_flag("--json", words.json, "print an array of objects for editors");
  app.add_flag("--files", words.files, "print the files that were read and nothing else");
}

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Words parsed;
  CLI::App app(
      "Checks a game's definitions without running it. "
      "The exit status is 0 when nothing was found, 1 when something was, "
      "2 when the check could not be made.",
      "footlight-check");
  addOptions(app, parsed);
  if (auto answer = tools::answerTo(app, count, words, kNoWork))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  return {std::move(parsed), kNothingFound, {}};
}

}  // namespace footlight::check
