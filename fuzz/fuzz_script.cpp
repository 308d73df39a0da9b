// Script text on a scene: the bytes are code as they stand, words of the language in any order, code made
// by the rules of the language, or the definition file of the scene. The code runs, then the game goes on
// for 50 ticks.

#include "app/mc_scene.h"
#include "cast.h"
#include "code_maker.h"
#include "oracle.h"
#include "state.h"

namespace footlight::fuzz {

using test::contentOf;

namespace {

constexpr int kTicks = 50;
constexpr int kBudget = 400;
constexpr std::size_t kMostText = 1536;
constexpr std::size_t kMostBytes = 256;  // that become code; each makes several characters
constexpr const char* kDefinition = "C:\\GAME\\Dane\\MAIN.cnv";

// The first byte of an input says what the others are; one of the letters below.
enum class Form : std::uint8_t { code = 'c', words = 'w', rules = 'r', definition = 'd' };

Form formOf(std::uint8_t byte) {
  constexpr Form kForms[] = {Form::rules, Form::code, Form::words, Form::definition};
  for (const Form form : kForms) {
    if (static_cast<std::uint8_t>(form) == byte) return form;
  }
  return kForms[byte % 4];
}

const Cast& cast() {
  static const Cast made = wholeCast("MAIN");
  return made;
}

Disk baseDisk() {
  Disk disk;
  addCommonFiles(disk);
  disk["C:\\GAME\\Dane\\application.def"] =
      contentOf("DEF:S2(TYPE=SCENE)\nDEF:MAIN(TYPE=SCENE)\nDEF:GAME(TYPE=APPLICATION|SCENES=MAIN,S2)\n");
  disk["C:\\GAME\\Dane\\S2.cnv"] =
      contentOf("DEF:N(TYPE=INTEGER)\nDEF:BACK(TYPE=TIMER|ELAPSE=100|ONTICK={GAME^GOTO(\"MAIN\");})\n");
  disk[kDefinition] = contentOf(cast().text);
  Cast above;
  addSharedVariables(above);
  disk["C:\\GAME\\Dane\\GAME.cnv"] = contentOf(above.text);
  return disk;
}

// A procedure of the scene as definition text.
std::string procedure(const char* name, const std::string& code) {
  return std::string("OBJECT=") + name + "\n" + name + ":TYPE=BEHAVIOUR\n" + name + ":CODE={" + code + "}\n";
}

struct Script {
  std::string definition;  // of the scene; empty: the usual one
  std::string code;        // to run
};

Script scriptOf(Form form, InputBytes& bytes) {
  if (form == Form::rules || form == Form::words) bytes.cut(kMostBytes);
  CodeMaker maker(bytes, cast());
  switch (form) {
    case Form::code:
      return {{}, std::string(bytes.text(kMostText))};
    case Form::words:
      return {{}, maker.soup(kMostText)};
    case Form::definition:
      return {std::string(bytes.text(kMostText)), {}};
    case Form::rules:
      break;
  }
  Script script{cast().text, {}};
  for (const char* name : {"BODY1", "BODY2", "BODY3"}) script.definition += procedure(name, maker.block(6));
  while (!bytes.isOver() && script.code.size() < kMostText) script.code += maker.statement();
  return script;
}

void play(std::span<const std::uint8_t> input) {
  static const Disk base = baseDisk();
  InputBytes bytes(input);
  const Form form = formOf(bytes.next());
  const std::uint8_t choice = bytes.next();
  const Script script = scriptOf(form, bytes);
  Disk disk = base;
  if (form == Form::definition || form == Form::rules) disk[kDefinition] = contentOf(script.definition);
  playAndCompare(disk, kBudget, choice, [&script](World& world) {
    world.run(world.scene(), "CODE", script.code);
    for (int i = 0; i < kTicks; ++i) world.tick();
    return describe(world);
  });
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
