#pragma once

// What the command lines of the tools have in common.

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace footlight::tools {

struct Answer {
  int exitStatus;
  std::string message;  // for standard output with status 0, else for standard error
};

// Reads the words into what the options are bound to. Nothing when they ask for work; else what the user gets
// instead: the help with status 0, or what is wrong with status `failed`.
inline std::optional<Answer> answerTo(CLI::App& app, int count, const char* const* words, int failed) {
  app.set_version_flag("--version", app.get_name() + " " FOOTLIGHT_VERSION);
  try {
    app.parse(count, words);
  } catch (const CLI::CallForVersion& version) {
    return Answer{0, std::string(version.what()) + "\n"};
  } catch (const CLI::CallForHelp&) {
    const auto chosen = app.get_subcommands();
    return Answer{0, chosen.empty() ? app.help() : chosen.front()->help()};
  } catch (const CLI::ParseError& error) {
    return Answer{failed, app.get_name() + ": " + error.what() + "\n"};
  }
  return std::nullopt;
}

}  // namespace footlight::tools
