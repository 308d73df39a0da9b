#include "anim/words.h"

#include <utility>

#include "command_line.h"

namespace footlight::anim {

namespace {

CLI::App* addCommand(CLI::App& app, Words& words, Command command, const char* name, const char* text) {
  CLI::App* added = app.add_subcommand(name, text);
  added->callback([&words, command] { words.command = command; });
  return added;
}

void addFile(CLI::App& command, Words& words, const char* text) {
  command.add_option("FILE", words.file, text)->required()->type_name("");
}

void addFolder(CLI::App& command, Words& words, const char* text) {
  command.add_option("FOLDER", words.folder, text)->required()->type_name("");
}

void addCommands(CLI::App& app, Words& words) {
  addFile(*addCommand(app, words, Command::info, "info", "print what an animation holds"), words,
          "the ANN file");

  CLI::App* build = addCommand(app, words, Command::build, "build",
                               "make an animation from PNG files and their animation.txt");
  addFolder(*build, words, "where animation.txt and the PNG files are");
  addFile(*build, words, "the ANN file to write");

  CLI::App* extract = addCommand(app, words, Command::extract, "extract",
                                 "take an animation apart, into PNG files and animation.txt");
  addFile(*extract, words, "the ANN file");
  addFolder(*extract, words, "where to write; made if need be");

  CLI::App* view = addCommand(app, words, Command::view, "view",
                              "play an animation in a window: "
                              "left and right arrow or a click choose the event, the blank bar halts, "
                              "R plays backwards");
  addFile(*view, words, "the ANN file");
  view->add_option("--event", words.event, "the event to begin with (default: the first)")->type_name("NAME");
  view->add_option("HOST", words.hostWords, "after --: options for the engine's host, with absolute names")
      ->type_name("");
}

void addSpeech(CLI::App& app, Words& words) {
  CLI::App* speech = addCommand(app, words, Command::speech, "speech",
                                "list the events that a figure of a sequence uses when it speaks");
  addFile(*speech, words, "the ANN file");
  speech->add_option("--prefix", words.prefix, "the PREFIX of the figure (default: none)")->type_name("NAME");
}

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Words parsed;
  CLI::App app(
      "Makes animations, takes them apart and plays them. docs/animations.md tells of animation.txt. "
      "The exit status is 0 when all went well, 2 when not.",
      "footlight-anim");
  app.set_help_flag("--help", "print this and leave");
  app.require_subcommand(1);
  addCommands(app, parsed);
  addSpeech(app, parsed);
  if (auto answer = tools::answerTo(app, count, words, kFailed))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  return {std::move(parsed), kDone, {}};
}

}  // namespace footlight::anim
