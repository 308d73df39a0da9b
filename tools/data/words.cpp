#include "data/words.h"

#include "command_line.h"

namespace footlight::data {

namespace {

CLI::App* addCommand(CLI::App& app, Words& words, Command command, const char* name, const char* help) {
  CLI::App* added = app.add_subcommand(name, help);
  added->set_help_flag("--help", "print this and leave");
  added->callback([&words, command] { words.command = command; });
  return added;
}

std::vector<std::string> formWords(bool isWritten) {
  std::vector<std::string> words;
  for (const FormRow& row : forms()) {
    if (!isWritten || row.write != nullptr) words.emplace_back(row.word);
  }
  return words;
}

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Words parsed;
  std::string form;
  CLI::App app(
      "Shows the files that games keep their data in as JSON, and makes them. "
      "The exit status is 0 when that was done, 2 when not.",
      "footlight-data");
  app.set_help_flag("--help", "print this and leave");
  app.require_subcommand(1);
  CLI::App* show = addCommand(app, parsed, Command::show, "show", "print a file as JSON");
  show->add_option("FILE", parsed.input, "what ARRAY, MULTIARRAY or DATABASE saved, or an INI file")
      ->required()
      ->type_name("");
  show->add_option("--as", form, "its form (default: what it looks like)")
      ->check(CLI::IsMember(formWords(false)))
      ->type_name("FORM");
  CLI::App* make = addCommand(app, parsed, Command::make, "make", "make a file of JSON");
  make->add_option("JSON", parsed.input, "a list for an array, an object with sizes and cells for a grid")
      ->required()
      ->type_name("");
  make->add_option("FILE", parsed.output, "the file to write")->required()->type_name("");
  make->add_option("--as", form, "its form (default: a list makes an array, an object a grid)")
      ->check(CLI::IsMember(formWords(true)))
      ->type_name("FORM");
  if (auto answer = tools::answerTo(app, count, words, kNoWork))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  for (const FormRow& row : forms()) {
    if (form == row.word) parsed.form = row.form;
  }
  return {std::move(parsed), kDone, {}};
}

}  // namespace footlight::data
