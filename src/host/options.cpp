#include "host/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <string_view>

namespace footlight::host {

namespace {

constexpr int kBadCommandLine = 1;
constexpr const char* kInstalledModules = FOOTLIGHT_MODULES_FOLDER;

// Options that belong to parts of the engine that this build does not have.
struct Missing {
  const char* name;
  const char* reason;
};
// clang-format off
constexpr Missing kMissing[] = {
    {"--bind",   "there is no network"},
};
// clang-format on

std::string checkLocale(std::string& value) {
  if (value.size() != 4) return "four hexadecimal digits are wanted";
  for (char& c : value) {
    if (std::isxdigit(static_cast<unsigned char>(c)) == 0) return "four hexadecimal digits are wanted";
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return {};
}

std::string checkShot(const std::string& value, std::vector<ShotRequest>& shots) {
  const std::size_t colon = value.find(':');
  ShotRequest shot{0, colon == std::string::npos ? std::string() : value.substr(colon + 1)};
  const char* end = value.data() + std::min(colon, value.size());
  const auto [stop, error] = std::from_chars(value.data(), end, shot.tick);
  if (error != std::errc() || stop != end || shot.tick == 0 || shot.file.empty()) {
    return "TICK:FILE.png is wanted, ticks count from 1";
  }
  shots.push_back(shot);
  return {};
}

std::string checkNumber(const std::string& value) {
  std::uint32_t number = 0;
  const char* end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, number);
  return error == std::errc() && stop == end ? "" : "a whole number from 0 to 4294967295 is wanted";
}

template <class Target>
CLI::Option* addNumber(CLI::App& app, const char* name, Target& target, const char* help) {
  return app.add_option(name, target, help)->check(checkNumber)->type_name("N");
}

void addMachineOptions(CLI::App& app, Options& options) {
  CLI::Option* headless =
      app.add_flag("--headless", options.headless, "run without window, sound and time of its own");
  addNumber(app, "--step", options.step, "headless: milliseconds from tick to tick (default 16)")
      ->needs(headless);
  addNumber(app, "--clock", options.clockStart, "headless: where the clock starts (default 10000)")
      ->needs(headless);
  app.add_option_function<std::string>(
         "--pace", [&options](const std::string&) { options.pacedReal = true; },
         "headless: follow the machine's time")
      ->check(CLI::IsMember({"real"}))
      ->type_name("real")
      ->needs(headless);
  app.add_option("--bpp", options.bpp, "depth of the screen (default 16)")
      ->check(CLI::IsMember({15, 16, 32}))
      ->type_name("15|16|32");
  app.add_option("--locale", options.locale, "the system's language, four hexadecimal digits")
      ->transform(CLI::Validator(checkLocale, "HHHH"))
      ->type_name("");
  app.add_option("--time", options.time,
                 "wall clock at the start, in Unix seconds (headless default: the year 2000)")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{253402300799}))
      ->type_name("SECONDS");
}

void addRunOptions(CLI::App& app, Options& options) {
  addNumber(app, "--ticks", options.ticks, "leave after N ticks");
  app.add_option("--time-limit", options.timeLimit, "leave after so much time, wherever the game is")
      ->check(CLI::Range(1U, 1000000U))
      ->type_name("SECONDS");
  app.add_option("--memory", options.memory,
                 "what a game may take; past it what is large is left out (default 1024)")
      ->check(CLI::Range(16U, 1U << 20))
      ->type_name("MB");
  app.add_option("--ini", options.ini, "name of the INI file (default footlight.ini)")->type_name("NAME");
  app.add_option("--big", options.bigFile, "run from this big file; what the disk has comes first")
      ->type_name("FILE");
  app.add_option("--modules", options.modules,
                 "load external modules from this folder, which no game may write to (default: " +
                     std::string(*kInstalledModules == 0 ? "none" : kInstalledModules) + ")")
      ->type_name("DIR");
  app.add_option("--input", options.input, "scripted events, one a line: TICK EVENT ...")->type_name("FILE");
  app.add_option("--record", options.record, "headless: write what was played as a WAV file")
      ->type_name("FILE")
      ->needs(app.get_option("--headless"));
  app.add_option("--record-input", options.recordInput, "write the player's events for --input")
      ->type_name("FILE");
  app.add_option("--shot", "after a tick, write the composed screen (may be repeated)")
      ->type_name("TICK:FILE.png")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->each([&options](const std::string& value) {
        const std::string fault = checkShot(value, options.shots);
        if (!fault.empty()) throw CLI::ValidationError("--shot", fault);
      });
  app.add_option("--seed", options.seed, "seed of the engine's random numbers (headless default 1)")
      ->type_name("N");
  app.add_option_function<std::string>(
         "--diagnose",
         [&options](const std::string& value) {
           options.diagnose = value == "stop"   ? Diagnose::stop
                              : value == "warn" ? Diagnose::warn
                                                : Diagnose::quiet;
         },
         "what the engine ignores in scripts: keep quiet (default), report, or report and stop")
      ->check(CLI::IsMember({"quiet", "warn", "stop"}))
      ->type_name("quiet|warn|stop");
  app.add_flag("--literal", options.literal, "read every statement anew at each run, for comparing");
  app.add_flag("--vocabulary", options.vocabulary, "print every type, property, signal and method as JSON");
}

void addPackOptions(CLI::App& app, Options& options) {
  app.add_option("--folder", options.packFolder, "with -bigfile: pack this folder")->type_name("DIR");
  app.add_option("--out", options.packFile, "with -bigfile: make this big file")->type_name("FILE");
  app.add_option("--name", options.packName, "with -bigfile: the name in its head (default: the file's own)")
      ->type_name("NAME");
}

void addMissingOptions(CLI::App& app) {
  for (const Missing& missing : kMissing) {
    app.add_option_function<std::string>(
           missing.name,
           [missing](const std::string&) {
             throw CLI::ValidationError(missing.name, std::string("not in this build: ") + missing.reason);
           })
        ->group("");
  }
}

// The host's own words with their values, and the rest as one line. A fault is a message.
struct Split {
  std::vector<std::string> host;
  std::string engine;
  std::string fault;
};

Split split(std::span<const char* const> words, const CLI::App& app) {
  Split result;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (!word.starts_with("--")) {
      if (!result.engine.empty()) result.engine += ' ';
      result.engine += word;
      continue;
    }
    const std::string name(word.substr(0, word.find('=')));
    const bool hasValue = name.size() < word.size();
    const CLI::Option* option = app.get_option_no_throw(name);
    if (option == nullptr) {
      result.fault = name + ": there is no such option";
      return result;
    }
    const bool takesValue = option->get_items_expected_min() > 0;
    if (hasValue && !takesValue) {
      result.fault = name + ": takes no value";
      return result;
    }
    result.host.emplace_back(word);
    if (hasValue || !takesValue) continue;
    if (i + 1 == words.size() || std::string_view(words[i + 1]).starts_with("--")) {
      result.fault = std::string(word) + ": a value is missing";
      return result;
    }
    result.host.emplace_back(words[++i]);
  }
  std::reverse(result.host.begin(), result.host.end());  // the order that the parser wants
  return result;
}

Parsed fault(const std::string& message) {
  return {std::nullopt, kBadCommandLine, message + "\nfootlight --help lists the options.\n"};
}

}  // namespace

Parsed parseOptions(std::span<const char* const> words) {
  Options options;
  CLI::App app("Footlight runs script-driven adventure games.", "footlight");
  app.set_help_flag("--help", "print this and leave");
  app.set_version_flag("--version", "footlight " FOOTLIGHT_VERSION);
  app.footer("Options of the engine have one dash: -window, -path DIR, -nosound and so on.");
  addMachineOptions(app, options);
  addRunOptions(app, options);
  addPackOptions(app, options);
  addMissingOptions(app);

  Split parts = split(words, app);
  if (!parts.fault.empty()) return fault(parts.fault);
  try {
    app.parse(parts.host);
  } catch (const CLI::CallForHelp&) {
    return {std::nullopt, 0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {std::nullopt, 0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    return fault(error.what());
  }
  options.engineLine = std::move(parts.engine);
  options.installedModules = kInstalledModules;
  return {std::move(options), 0, {}};
}

}  // namespace footlight::host
