// Every method of every runner with none to eight arguments of every kind. There is nothing to expect but
// that the game goes on: the sanitizers judge.

#include <gtest/gtest.h>

#include "app/mc_application.h"
#include "objects/data/mc_array.h"
#include "objects/data/mc_database.h"
#include "objects/data/mc_multi_array.h"
#include "objects/data/mc_path_nodes.h"
#include "objects/data/mc_quene.h"
#include "objects/data/mc_vector.h"
#include "objects/gfx/mc_animo.h"
#include "objects/gfx/mc_canvas.h"
#include "objects/gfx/mc_canvas_observer.h"
#include "objects/gfx/mc_gr_buffer.h"
#include "objects/gfx/mc_image.h"
#include "objects/gfx/mc_pattern.h"
#include "objects/gfx/mc_scroll.h"
#include "objects/gfx/mc_virtual_graphics_object.h"
#include "objects/input/mc_button.h"
#include "objects/input/mc_dialog.h"
#include "objects/input/mc_joystick.h"
#include "objects/input/mc_keyboard.h"
#include "objects/input/mc_mouse.h"
#include "objects/sound/mc_sequence.h"
#include "objects/sound/mc_sound.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "objects/system/mc_timer.h"
#include "objects/text/mc_edit_box.h"
#include "objects/text/mc_font.h"
#include "objects/text/mc_text.h"
#include "script/mc_runner.h"
#include "support/block_fonts.h"
#include "support/game_world.h"

namespace footlight {
namespace {

using test::contentOf;
using test::Disk;
using test::World;

constexpr int kMostArguments = 8;

// What a method is called on: an object of its type.
struct Target {
  int type;
  const char* name;
  const char* definition;  // empty for what every game has
};

constexpr Target kTargets[] = {
    {type::kBuiltIns, "@", ""},
    {type::kInteger, "INT", "DEF:INT(TYPE=INTEGER|VALUE=7|TOINI=TRUE|ONCHANGED=CODE)"},
    {type::kString, "TEXT", "DEF:TEXT(TYPE=STRING|VALUE=Some text)"},
    {type::kBool, "FLAG", "DEF:FLAG(TYPE=BOOL|VALUE=TRUE)"},
    {type::kDouble, "REAL", "DEF:REAL(TYPE=DOUBLE|VALUE=1.5)"},
    {type::kExpression, "SUM", "DEF:SUM(TYPE=EXPRESSION|OPERAND1=INT|OPERATOR=ADD|OPERAND2=2)"},
    {type::kCondition, "TEST", "DEF:TEST(TYPE=CONDITION|OPERAND1=INT|OPERATOR=LESS|OPERAND2=9)"},
    {type::kComplexCondition, "BOTH",
     "DEF:BOTH(TYPE=COMPLEXCONDITION|CONDITION1=TEST|OPERATOR=AND|CONDITION2=TEST)"},
    {type::kBehaviour, "CODE", "DEF:CODE(TYPE=BEHAVIOUR|CODE={COUNT^INC();@RETURN([$1+1]);})"},
    {type::kStructure, "RECORD", "DEF:RECORD(TYPE=STRUCT|FIELDS=A<INTEGER>,B<STRING>)"},
    {type::kClass, "KIND", "DEF:KIND(TYPE=CLASS|DEF=KIND.cnv)"},
    {type::kArray, "LIST", "DEF:LIST(TYPE=ARRAY|SENDONCHANGE=TRUE|ONCHANGED=CODE)"},
    {type::kGroup, "CREW", "DEF:CREW(TYPE=GROUP)"},
    {type::kMultiArray, "GRID", "DEF:GRID(TYPE=MULTIARRAY|DIMENSIONS=2)"},
    {type::kDatabase, "TABLE", "DEF:TABLE(TYPE=DATABASE|MODEL=RECORD)"},
    {type::kFifo, "QUEUE", "DEF:QUEUE(TYPE=FIFO|ONEMPTY=CODE)"},
    {type::kLifo, "STACK", "DEF:STACK(TYPE=LIFO|ONEMPTY=CODE)"},
    {type::kVector, "NUMBERS", "DEF:NUMBERS(TYPE=VECTOR|SIZE=2|VALUE=1,2)"},
    {type::kPath, "WAY", "DEF:WAY(TYPE=PATH|NODES=INT,LIST)"},
    {type::kTimer, "CLOCK", "DEF:CLOCK(TYPE=TIMER|ELAPSE=20|ONTICK=CODE)"},
    {type::kImage, "PICTURE", "DEF:PICTURE(TYPE=IMAGE)"},
    {type::kDialog, "TALK", "DEF:TALK(TYPE=DIALOG)"},
    {type::kMouse, "MOUSE", "DEF:MOUSE(TYPE=MOUSE)"},
    {type::kAnimo, "FIGURE", "DEF:FIGURE(TYPE=ANIMO)"},
    {type::kJoystick, "STICK", "DEF:STICK(TYPE=JOYSTICK|PORT=0)"},
    {type::kButton, "PAD", "DEF:PAD(TYPE=BUTTON|RECT=0,0,9,9|ENABLE=TRUE|DRAGGABLE=TRUE|ONCLICKED=CODE)"},
    {type::kEditBox, "BOX",
     "DEF:BOX(TYPE=EDITBOX|RECT=0,0,40,20|TEXT=ab|FONT=NONE|ONCHANGED=CODE|ONFOCUSON=CODE|ONFOCUSOFF=CODE)"},
    {type::kSound, "BELL", "DEF:BELL(TYPE=SOUND|FILENAME=A.WAV|ONSTARTED=CODE|ONFINISHED=CODE)"},
    {type::kSequence, "TALE", "DEF:TALE(TYPE=SEQUENCE|FILENAME=TALE.SEQ|ONSTARTED=CODE|ONFINISHED^A=CODE)"},
    {type::kFont, "LETTERS", "DEF:LETTERS(TYPE=FONT|DEF_A_STANDARD_9=A.FNT|DEF_A_BOLD_9=A.FNT)"},
    {type::kText, "NOTE",
     "DEF:NOTE(TYPE=TEXT|TEXT=a <B>b<B> "
     "c|FONT=LETTERS|HYPERTEXT=TRUE|TOCANVAS=TRUE|VISIBLE=TRUE|RECT=PICTURE)"},
    {type::kCanvas, "SHEET",
     "DEF:SHEET(TYPE=CANVAS|WIDTH=40|HEIGHT=30|ALPHA=TRUE|BACKGROUND=TRUE|ONCLICK=CODE)"},
    {type::kPattern, "FLOOR",
     "DEF:FLOOR(TYPE=PATTERN|WIDTH=40|HEIGHT=30|GRIDX=8|GRIDY=8|LAYERS=2|TOCANVAS=TRUE|VISIBLE=TRUE)"},
    {type::kScroll, "ROLL", "DEF:ROLL(TYPE=SCROLL|VIEWPORT=5,5,30,30)"},
    {type::kGrBuffer, "STAMPS", "DEF:STAMPS(TYPE=GRBUFFER|SOURCE=PICTURE|DESTINY=SHEET)"},
    {type::kVirtualGraphicsObject, "GLASS",
     "DEF:GLASS(TYPE=VIRTUALGRAPHICSOBJECT|SOURCE=SHEET|MASK=PICTURE|TOCANVAS=TRUE|VISIBLE=TRUE)"},
    {type::kRandom, "RANDOM", ""},
    {type::kSystem, "SYSTEM", ""},
    {type::kCnvLoader, "CNVLOADER", ""},
    {type::kApplication, "GAME", ""},
    {type::kEpisode, "EP", ""},
    {type::kScene, "MAIN", ""},
};

// SELF stands for the object that is called.
constexpr const char* kArguments[] = {"\"\"",
                                      "-1",
                                      "0",
                                      "2147483647",
                                      "-2147483648",
                                      "12abc",
                                      "BIG",
                                      "INT",
                                      "&INT",
                                      "\"TEXT\"",
                                      "REAL",
                                      "FLAG",
                                      "SUM",
                                      "CODE",
                                      "RECORD",
                                      "CREW",
                                      "PICTURE",
                                      "SHEET",
                                      "FLOOR",
                                      "GLASS",
                                      "LETTERS",
                                      "MAIN",
                                      "SELF",
                                      "\"SELF\"",
                                      "REMOVED",
                                      "KIND",
                                      "@BREAK()",
                                      "[INT*2147483647]",
                                      "{COUNT^INC();}",
                                      "\"INTEGER\"",
                                      "99999999.99",
                                      "\"..\\..\\x.def\"",
                                      "$1"};

Disk game() {
  std::string text = "DEF:COUNT(TYPE=INTEGER)\nDEF:BIG(TYPE=STRING)\nDEF:REMOVED(TYPE=INTEGER)\n";
  for (const Target& target : kTargets) text += std::string(target.definition) + "\n";
  Disk disk;
  const std::string dane = "C:\\GAME\\Dane\\";
  disk[dane + "application.def"] = contentOf(
      "DEF:MAIN(TYPE=SCENE)\nDEF:NEXT(TYPE=SCENE)\nDEF:EP(TYPE=EPISODE|SCENES=MAIN,NEXT|STARTWITH=MAIN)\n"
      "DEF:GAME(TYPE=APPLICATION|EPISODES=EP)\n");
  disk[dane + "MAIN.cnv"] = contentOf(text);
  disk["C:\\GAME\\Common\\classes\\KIND.cnv"] =
      contentOf("DEF:OWN(TYPE=INTEGER)\nDEF:CONSTRUCTOR(TYPE=BEHAVIOUR|CODE={OWN^ADD($1);})\n");
  disk[dane + "A.FNT"] = contentOf(test::blockFontFile());
  disk["C:\\GAME\\Wavs\\A.WAV"] = contentOf(test::waveFile(300));
  disk[dane + "TALE.SEQ"] = contentOf(
      "NAME=TALE\nTALE:TYPE=SEQUENCE\nTALE:MODE=PARAMETER\nTALE:SEQEVENT=12abc=xX1\nNAME=A\n"
      "A:FILENAME=A.WAV\nA:TYPE=SIMPLE\nA:ADD=TALE\nNAME=B\nB:TYPE=SPEAKING\nB:WAVFN=A.WAV\nB:ADD=TALE\n");
  return disk;
}

std::string callText(const Target& target, const char* method, int count, std::size_t first) {
  constexpr std::size_t kStride = 7;  // so that neighbours differ from call to call
  const bool isStatement = target.type == type::kBuiltIns;
  std::string text = (isStatement ? std::string("@") : std::string(target.name) + "^") + method + "(";
  for (int i = 0; i < count; ++i) {
    std::string argument =
        kArguments[(first + static_cast<std::size_t>(i) * kStride) % std::size(kArguments)];
    if (const auto self = argument.find("SELF"); self != std::string::npos)
      argument.replace(self, 4, isStatement ? "CODE" : target.name);
    text += (i > 0 ? "," : "") + argument;
  }
  return text + ");";
}

// The runners exist while a game does; their tables always.
std::vector<const Method*> methodsOf(const Disk& disk, int type) {
  const World world(disk, {});
  std::vector<const Method*> methods;
  for (const Method& method : CMC_RunnerFactory::getRunner(type)->ownMethods()) methods.push_back(&method);
  // What every object has is the same for most.
  const bool isOwnKind = type == type::kInteger || type == type::kBehaviour || type == type::kImage ||
                         type == type::kGroup || type == type::kClass || type == type::kScene;
  if (!isOwnKind) return methods;
  for (const Method& method : CMC_Runner::baseMethods()) methods.push_back(&method);
  return methods;
}

// One method in a game of its own, as long as that lasts.
class Caller {
 public:
  explicit Caller(const Disk& disk) : disk_(disk) { start(); }

  void call(const std::string& text) {
    if (world_->hasEnded() || world_->isBudgetUsedUp() || world_->scene()->getName() != "MAIN") start();
    world_->run(world_->scene(), "STARTER", text);
    world_->tick();
  }

 private:
  void start() {
    world_.reset();
    world_ = std::make_unique<World>(disk_, test::Rules{.literal = false, .budget = 1 << 17});
    world_->run(world_->scene(), "SETUP", "BIG^INSERTAT(0,\"x\",1048576);MAIN^REMOVE(\"REMOVED\");");
  }

  const Disk& disk_;
  std::unique_ptr<World> world_;
};

class ArgumentMatrix : public testing::TestWithParam<Target> {};

TEST_P(ArgumentMatrix, BearsEveryArgument) {
  const Target& target = GetParam();
  const Disk disk = game();
  for (const Method* method : methodsOf(disk, target.type)) {
    SCOPED_TRACE(std::string(target.name) + "^" + method->name);
    Caller caller(disk);
    for (int count = 0; count <= kMostArguments; ++count) {
      const std::size_t kinds = count == 0 ? 1 : std::size(kArguments);
      for (std::size_t first = 0; first < kinds; ++first)
        caller.call(callText(target, method->name, count, first));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Targets, ArgumentMatrix, testing::ValuesIn(kTargets), [](const auto& target) {
  return std::string(target.param.name) == "@" ? std::string("Statements") : std::string(target.param.name);
});

}  // namespace
}  // namespace footlight
