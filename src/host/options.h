#pragma once

// The program's command line. Words with two dashes are the host's own and are taken out; everything else,
// unknown and bare words among it, is one raw line for the engine, which ignores what it does not know.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace footlight::host {

enum class Diagnose { quiet, warn, stop };

struct ShotRequest {
  std::uint32_t tick;  // after this one; the first tick is 1
  std::string file;    // the machine's name
};

struct Options {
  std::string engineLine;  // UTF-8, words joined by blanks

  bool headless = false;
  std::uint32_t step = 16;             // headless: milliseconds before each tick
  std::uint32_t clockStart = 10000;    // headless
  bool pacedReal = false;              // headless
  std::optional<std::uint32_t> ticks;  // leave after so many
  std::string ini = "footlight.ini";
  std::string bigFile;                  // to run from; the machine's name, empty: none
  std::string packFolder;               // with -bigfile: the machine's name of what to pack
  std::string packFile;                 // and of the big file to make
  std::optional<std::string> packName;  // and the name in its head; else the file's own
  int bpp = 16;
  std::string locale;                  // four hexadecimal digits, upper case; empty: by the platform
  std::optional<std::int64_t> time;    // Unix seconds at the start
  std::optional<std::string> modules;  // the machine's folder of external modules
  std::string installedModules;        // the one to take otherwise; empty: none
  std::string input;                   // the machine's name of a script of events; empty: none
  std::string record;                  // headless: the machine's name of a WAV file of what was played
  std::string recordInput;             // the machine's name of the file for the player's events; empty: none
  std::vector<ShotRequest> shots;
  std::optional<std::uint32_t> seed;
  Diagnose diagnose = Diagnose::quiet;
  bool vocabulary = false;
  std::uint32_t memory = 1024;             // what the game may take, in MiB
  std::optional<std::uint32_t> timeLimit;  // seconds of the machine's time after which the run ends
  bool literal = false;                    // read every statement anew, without caches
};

// What the command line asks for: either a run, or a text for the player and the end.
struct Parsed {
  std::optional<Options> options;
  int exitStatus = 0;   // without options: 0 for help and version, 1 for a bad command line
  std::string message;  // without options: for standard output with status 0, else for standard error
};

// `words` are the program's arguments without its name.
Parsed parseOptions(std::span<const char* const> words);

}  // namespace footlight::host
