#include "font/words.h"

#include "command_line.h"

namespace footlight::font {

namespace {

CLI::App* addCommand(CLI::App& app, Words& words, Command command, const char* name, const char* help) {
  CLI::App* added = app.add_subcommand(name, help);
  added->set_help_flag("--help", "print this and leave");
  added->callback([&words, command] { words.command = command; });
  return added;
}

void addFile(CLI::App& command, const char* name, std::string& target, const char* help) {
  command.add_option(name, target, help)->required()->type_name("");
}

void addMake(CLI::App& app, Words& words) {
  CLI::App* make = addCommand(app, words, Command::make, "make",
                              "draw the letters of a font of the machine into a font of the game");
  addFile(*make, "FONT", words.input, "a TrueType, OpenType, Type 1, BDF or PCF font");
  addFile(*make, "OUTPUT", words.output, "the file to write: NAME.fnt");
  make->add_option("--size", words.size, "height of the letters in pixels")
      ->required()
      ->check(CLI::Range(4, 256))
      ->type_name("PIXELS");
  make->add_option("--letters", words.letters,
                   "a UTF-8 text of the letters wanted (default: all of code page 1250)")
      ->type_name("FILE");
  make->add_option("--face", words.face, "which font of a file of several, from 0 (default: 0)")
      ->check(CLI::NonNegativeNumber)
      ->type_name("NUMBER");
  make->add_flag_callback(
      "--no-kerning", [&words] { words.kerning = Kerning::none; },
      "the same distance between all letters, instead of one that follows from their shapes");
}

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Words parsed;
  CLI::App app(
      "Makes fonts for games, and takes them apart. "
      "The exit status is 0 when that was done, 2 when not.",
      "footlight-font");
  app.set_help_flag("--help", "print this and leave");
  app.require_subcommand(1);
  addMake(app, parsed);
  CLI::App* strip =
      addCommand(app, parsed, Command::strip, "strip", "make a font from a picture of its letters");
  addFile(*strip, "PICTURE", parsed.input, "a PNG: the letters side by side in cells of one width");
  addFile(*strip, "LETTERS", parsed.letters, "a UTF-8 text of the letters, in their order");
  addFile(*strip, "OUTPUT", parsed.output, "the file to write: NAME.fnt");
  CLI::App* unpack =
      addCommand(app, parsed, Command::unpack, "unpack", "write a font as a picture and a text");
  addFile(*unpack, "FONT", parsed.input, "the font of a game");
  addFile(*unpack, "PICTURE", parsed.output, "the PNG to write: the letters side by side");
  addFile(*unpack, "LETTERS", parsed.letters,
          "the text to write: the letters, and distances that are special");
  CLI::App* info = addCommand(app, parsed, Command::info, "info", "print what a font holds");
  addFile(*info, "FONT", parsed.input, "the font of a game");
  if (auto answer = tools::answerTo(app, count, words, kNoWork))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  return {std::move(parsed), kDone, {}};
}

}  // namespace footlight::font
