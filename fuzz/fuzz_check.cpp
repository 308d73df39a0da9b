// A game as the checker for authors reads it: the input is the definitions of its application, a scene, an
// episode and a class, with a byte of FF between them. What is found is found again.

#include <array>

#include "check/game.h"
#include "demand.h"
#include "files/language_os_ver.h"
#include "foundation/command_line6.h"
#include "gfx/window.h"
#include "objects/all_types.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight::fuzz {

namespace {

constexpr std::array kFiles = {"C:\\GAME\\DANE\\APPLICATION.DEF", "C:\\GAME\\DANE\\MAIN\\MAIN.CNV",
                               "C:\\GAME\\DANE\\EP\\EP.CNV", "C:\\GAME\\COMMON\\CLASSES\\A.CLASS"};
constexpr const char* kUsual =
    "DEF:GAME(TYPE=APPLICATION|EPISODES=EP)\nDEF:EP(TYPE=EPISODE|SCENES=MAIN|PATH=EP)\n"
    "DEF:MAIN(TYPE=SCENE|PATH=MAIN)\n";

std::size_t check() {
  CCommandLine6 commandLine("-window");
  CLanguageOSVer language;
  CWindow window(&commandLine, &language, commandLine.getResolution(), "C:\\");
  window.setDataRoot("C:\\GAME\\");
  check::Findings findings;
  check::Game game(
      window, [](const CXString& name) { return name.str(); }, findings);
  if (!game.load()) return 0;
  game.check();
  return findings.list().size();
}

void play(std::string_view text) {
  test::Disk disk;
  for (const char* name : kFiles) {
    const std::string_view part = text.substr(0, text.find('\xFF'));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    disk[name] = test::contentOf(part.empty() && name == kFiles[0] ? kUsual : part);
  }
  const Machine machine(disk);
  installAllTypes();
  CMC_VariableFactory::initialize();
  CMC_RunnerFactory::initialize();
  demand(check() == check());
  CMC_RunnerFactory::done();
  CMC_VariableFactory::done();
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play(footlight::fuzz::textOf({data, size}));
  return 0;
}
