#include "pack/words.h"

#include <utility>

#include "command_line.h"

namespace footlight::pack {

namespace {

CLI::App* addCommand(CLI::App& app, Words& words, Command command, const char* name, const char* help) {
  CLI::App* added = app.add_subcommand(name, help);
  added->set_help_flag("--help", "print this and leave");
  added->callback([&words, command] { words.command = command; });
  return added;
}

void addBigFile(CLI::App& command, Words& words, const char* help) {
  command.add_option("FILE", words.bigFile, help)->required()->type_name("");
}

void addFolder(CLI::App& command, Words& words, const char* help) {
  command.add_option("DIR", words.folder, help)->required()->type_name("");
}

void addCommands(CLI::App& app, Words& words) {
  CLI::App* list = addCommand(app, words, Command::list, "list", "print the size and the name of each file");
  addBigFile(*list, words, "the big file");
  CLI::App* extract = addCommand(app, words, Command::extract, "extract", "unpack all files into a folder");
  addBigFile(*extract, words, "the big file");
  addFolder(*extract, words, "the folder to unpack into; it is made if it is not there");
  CLI::App* build = addCommand(app, words, Command::build, "build", "pack a folder");
  addFolder(*build, words, "the folder to pack");
  addBigFile(*build, words, "the big file to make");
  build->add_option("--name", words.name, "the name in its head (default: the file's own)")
      ->type_name("NAME");
}

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Words parsed;
  CLI::App app(
      "Lists, unpacks and makes big files. "
      "The exit status is 0 when all went well, 1 when some of it was left out, "
      "2 when nothing could be done.",
      "footlight-pack");
  app.set_help_flag("--help", "print this and leave");
  app.require_subcommand(1);
  addCommands(app, parsed);
  if (auto answer = tools::answerTo(app, count, words, kFailed))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  return {std::move(parsed), kDone, {}};
}

}  // namespace footlight::pack
