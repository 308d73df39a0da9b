// Every signal that the engine sends, times every destructive act in its handler. In each cell the handler
// counts before and after the act, so that it shows whether the statements behind still ran; then the game
// leaves the scene, waits for the trash, and must stand as it does when the handler destroys nothing.
//
// A type that comes later adds its rows to kSignals, and its own ways to destroy to kActs.

#include <gtest/gtest.h>

#include "app/mc_application.h"
#include "foundation/xtimer.h"
#include "gfx/collision_inspector.h"
#include "gfx/refresh_screen.h"
#include "script/mc_variable_factory.h"
#include "support/block_fonts.h"
#include "support/game_world.h"

namespace footlight {
namespace {

using test::contentOf;
using test::Disk;
using test::World;

struct Signal {
  const char* name;
  const char* hero;  // the lines of the object HERO, on the scene or, for the word SCENE, of the scene itself
  const char* property;  // of HERO that the handler is bound to; null where `trigger` runs it in another way
  const char* trigger;   // what makes it happen; the clock does where it is empty
};

constexpr Signal kSignals[] = {
    {"ONSIGNAL", "TYPE=INTEGER", "ONSIGNAL^A", "HERO^SEND(\"A\");"},
    {"ONCHANGED of an INTEGER", "TYPE=INTEGER", "ONCHANGED", "HERO^SET([HERO+1]);"},
    {"ONCHANGED by INC", "TYPE=INTEGER", "ONCHANGED", "HERO^INC();"},
    {"ONCHANGED of a value", "TYPE=INTEGER", "ONCHANGED^7", "HERO^SET(7);"},
    {"ONBRUTALCHANGED", "TYPE=INTEGER", "ONBRUTALCHANGED", "HERO^SET(0);"},
    {"ONCHANGED of a STRING", "TYPE=STRING|VALUE=a", "ONCHANGED", "HERO^ADD(\"b\");"},
    {"ONBRUTALCHANGED of a STRING", "TYPE=STRING|VALUE=a", "ONBRUTALCHANGED", "HERO^SUB(0,1);"},
    {"ONCHANGED of a DOUBLE", "TYPE=DOUBLE|VALUE=1.5", "ONCHANGED", "HERO^MUL(2);"},
    {"ONCHANGED of a BOOL", "TYPE=BOOL", "ONCHANGED", "HERO^SWITCH(1,2);"},
    {"ONCHANGED with the INI", "TYPE=INTEGER|TOINI=TRUE", "ONCHANGED", "HERO^SET([HERO+1]);"},
    {"ONCHANGED of a result", "TYPE=INTEGER", "ONCHANGED", "HERO^RANDOM(5,9);"},
    {"ONINIT", "TYPE=INTEGER", "ONINIT", ""},
    {"ONINIT of a BEHAVIOUR", "TYPE=BEHAVIOUR|CODE={}", "ONINIT", ""},
    {"ONINIT of a loaded object", "LOADED", "ONINIT", "CNVLOADER^LOAD(\"HERO.cnv\");"},
    {"ONDONE by removal", "TYPE=INTEGER", "ONDONE", "MAIN^REMOVE(\"HERO\");"},
    {"ONDONE by release", "LOADED", "ONDONE",
     "CNVLOADER^LOAD(\"HERO.cnv\");CNVLOADER^RELEASE(\"HERO.cnv\");"},
    {"ONDONE at the end of the scene", "TYPE=INTEGER", "ONDONE", "EP^GOTO(\"AFTER\");"},
    {"ONDONE of a group", "TYPE=GROUP", "ONDONE", "HERO^ADD(\"HERO\",\"OTHER\");MAIN^REMOVE(\"HERO\");"},
    {"ONFOCUSON", "TYPE=EDITBOX|RECT=0,0,20,9", "ONFOCUSON", "HERO^ACTIVE();"},
    {"ONFOCUSOFF", "TYPE=EDITBOX|RECT=0,0,20,9", "ONFOCUSOFF", "HERO^ACTIVE();HERO^DISABLE();"},
    {"ONEMPTY", "TYPE=FIFO", "ONEMPTY", "HERO^POP();"},
    {"ONEMPTY of a LIFO", "TYPE=LIFO", "ONEMPTY", "HERO^PUSH(HERO^POP());"},
    {"ONDONE of a timer", "TYPE=TIMER|ELAPSE=5", "ONDONE", "MAIN^REMOVE(\"HERO\");"},
    {"ONDONE of a picture", "TYPE=IMAGE|FILENAME=A.IMG", "ONDONE", "MAIN^REMOVE(\"HERO\");"},
    {"ONRUNTIMESUCCESS", "TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUAL|OPERAND2=1", "ONRUNTIMESUCCESS",
     "HERO^CHECK();"},
    {"ONRUNTIMEFAILED", "TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUAL|OPERAND2=2", "ONRUNTIMEFAILED",
     "HERO^CHECK();"},
    {"ONRUNTIMESUCCESS of two", "TYPE=COMPLEXCONDITION|CONDITION1=HOLDS|OPERATOR=AND|CONDITION2=HOLDS",
     "ONRUNTIMESUCCESS", "HERO^CHECK();"},
    {"an inner condition's signal", "TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUAL|OPERAND2=1", "ONRUNTIMESUCCESS",
     "BOTH^CHECK();"},
    {"a guard", "TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUAL|OPERAND2=1", "ONRUNTIMESUCCESS", "GUARDED^RUNC();"},
    {"a condition's operand", "TYPE=CONDITION|OPERAND1=HANDLER^RUN()|OPERATOR=EQUAL|OPERAND2=1", nullptr,
     "HERO^CHECK();"},
    {"an operand", "TYPE=EXPRESSION|OPERAND1=HANDLER^RUN()|OPERATOR=ADD|OPERAND2=1", nullptr,
     "OTHER^SET(HERO);"},
    {"an inline operand", "TYPE=INTEGER", nullptr, "HERO^SET([1+HANDLER^RUN()]);"},
    {"an argument", "TYPE=INTEGER", nullptr, "HERO^SET(HANDLER^RUN());"},
    {"a text's operand", "TYPE=INTEGER", nullptr, "@IF(\"HANDLER^RUN()'1\",{OTHER^INC();});"},
    {"ONTICK", "TYPE=TIMER|ELAPSE=20|TICKS=2", "ONTICK", ""},
    {"a timer of code", "TYPE=INTEGER", nullptr, "@RUNONTIMER(20,2,\"HANDLER\");"},
    {"the end of a timer of code", "TYPE=INTEGER", nullptr,
     "@RUNONTIMER(20,1,\"OTHER^INC();\",\"HANDLER\");"},
    {"a loop", "TYPE=INTEGER", nullptr, "@LOOP(HANDLER,0,2,1);"},
    {"a loop of inline code", "TYPE=INTEGER", nullptr, "@LOOP({HANDLER^RUN();},0,2,1);"},
    {"a WHILE", "TYPE=INTEGER", nullptr, "@WHILE(\"OTHER\",<,2,{OTHER^INC();HANDLER^RUN();});"},
    {"a branch", "TYPE=INTEGER", nullptr, "@IF(1,_,1,{HANDLER^RUN();});"},
    {"a looped run", "TYPE=INTEGER", nullptr, "HANDLER^RUNLOOPED(0,2);"},
    {"clones", "TYPE=INTEGER", nullptr, "HERO^CLONE(2);MAIN^RUNCLONES(\"HERO\",1,2,\"HANDLER\");"},
    {"a clone's signal", "TYPE=INTEGER", "ONCHANGED", "HERO^CLONE(1);HERO_1^SET(4);"},
    {"a call of a group", "TYPE=INTEGER", "ONCHANGED", "CREW^ADD(\"HERO\",\"OTHER\");CREW^INC();"},
    {"a scene's RUN", "TYPE=INTEGER", nullptr, "MAIN^RUN(\"HANDLER\",\"RUN\");"},
    {"another environment", "TYPE=INTEGER", nullptr, "GAME^RUNENV(\"MAIN\",\"HANDLER\");"},
    {"a CONSTRUCTOR", "TYPE=CLASS|DEF=CTOR.cnv", nullptr, "HERO^NEW(\"ONE\");HERO^DELETE(\"ONE\");"},
    {"a DESTRUCTOR", "TYPE=CLASS|DEF=DTOR.cnv", nullptr, "HERO^NEW(\"ONE\");HERO^DELETE(\"ONE\");"},
    {"an instance's method", "TYPE=CLASS|DEF=WORK.cnv", nullptr,
     "HERO^NEW(\"ONE\");ONE^WORK();HERO^DELETE(\"ONE\");"},
    {"a picture's signal", "TYPE=IMAGE|FILENAME=A.IMG", "ONSIGNAL^A", "HERO^SEND(\"A\");"},
    {"ONCOLLISION", "TYPE=IMAGE|FILENAME=A.IMG|MONITORCOLLISION=TRUE", "ONCOLLISION", "HERO^MOVE(1,0);"},
    {"ONCOLLISIONFINISHED", "TYPE=IMAGE|FILENAME=A.IMG|MONITORCOLLISION=TRUE", "ONCOLLISIONFINISHED",
     "HERO^MOVE(1,0);@RUNONTIMER(20,1,{HERO^SETPOSITION(400,400);});"},
    {"ONCHANGED of an ARRAY", "TYPE=ARRAY|SENDONCHANGE=TRUE", "ONCHANGED", "HERO^ADD(1,2,3);"},
    {"ONCHANGED of all of an ARRAY", "TYPE=ARRAY|SENDONCHANGE=TRUE", "ONCHANGED^0",
     "HERO^FILL(3,1);HERO^SHIFTLEFT();"},
    {"ONSTARTED", "TYPE=ANIMO|FILENAME=A.ANN|VISIBLE=TRUE", "ONSTARTED", "HERO^PLAY(\"GO\");"},
    {"ONFRAMECHANGED", "TYPE=ANIMO|FILENAME=A.ANN|VISIBLE=TRUE", "ONFRAMECHANGED", "HERO^PLAY(\"GO\");"},
    {"ONFINISHED", "TYPE=ANIMO|FILENAME=A.ANN|VISIBLE=TRUE", "ONFINISHED^GO", "HERO^PLAY(\"GO\");"},
    {"ONFINISHED by STOP", "TYPE=ANIMO|FILENAME=A.ANN|VISIBLE=TRUE", "ONFINISHED",
     "HERO^PLAY(\"GO\");HERO^STOP();"},
    {"ONCLICK", "TYPE=IMAGE|FILENAME=A.IMG|TOCANVAS=TRUE|VISIBLE=TRUE|ASBUTTON=TRUE", "ONCLICK",
     "MOUSE^CLICK(0,0);"},
    {"ONRELEASE", "TYPE=IMAGE|FILENAME=A.IMG|TOCANVAS=TRUE|VISIBLE=TRUE|ASBUTTON=TRUE", "ONRELEASE^LEFT",
     "MOUSE^MOUSERELEASE(0,0);"},
    {"ONCLICKED", "TYPE=BUTTON|RECT=0,0,9,9|ENABLE=TRUE", "ONCLICKED", "MOUSE^CLICK(0,0);"},
    {"ONRELEASED", "TYPE=BUTTON|RECT=0,0,9,9|ENABLE=TRUE", "ONRELEASED", "MOUSE^MOUSERELEASE(0,0);"},
    {"ONACTION", "TYPE=BUTTON|GFXSTANDARD=WALL|ENABLE=TRUE", "ONACTION", "MOUSE^MOUSERELEASE(0,0);"},
    {"ONSTARTDRAGGING", "TYPE=BUTTON|GFXSTANDARD=WALL|ENABLE=TRUE|DRAGGABLE=TRUE", "ONSTARTDRAGGING",
     "MOUSE^CLICK(0,0);"},
    {"ONENDDRAGGING", "TYPE=BUTTON|GFXSTANDARD=WALL|ENABLE=TRUE|DRAGGABLE=TRUE", "ONENDDRAGGING",
     "MOUSE^CLICK(0,0);MOUSE^MOUSERELEASE(0,0);"},
    {"ONSTARTED of a SOUND", "TYPE=SOUND|FILENAME=A.WAV", "ONSTARTED", "HERO^PLAY();"},
    {"ONFINISHED of a SOUND", "TYPE=SOUND|FILENAME=A.WAV|FLUSHAFTERPLAYED=TRUE", "ONFINISHED",
     "HERO^PLAY();"},
    {"ONRESUMED", "TYPE=SOUND|FILENAME=A.WAV", "ONRESUMED", "HERO^PLAY();HERO^PAUSE();HERO^RESUME();"},
    {"ONSTARTED of a SEQUENCE", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONSTARTED", "HERO^PLAY(\"E\",\"1\");"},
    {"ONSTARTED of its picture", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONSTARTED^PIC",
     "HERO^PLAY(\"E\",\"1\");"},
    {"ONFINISHED of its picture", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONFINISHED^PIC",
     "HERO^PLAY(\"E\",\"1\");"},
    {"ONSTARTED of its sound", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONSTARTED^SND", "HERO^PLAY(\"E\",\"2\");"},
    {"ONFINISHED of a SEQUENCE", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONFINISHED", "HERO^PLAY(\"E\",\"2\");"},
    {"ONSTARTED of its speaker", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONSTARTED^TALK",
     "HERO^PLAY(\"E\",\"3\");"},
    {"ONFINISHED of its speaker", "TYPE=SEQUENCE|FILENAME=HERO.SEQ", "ONFINISHED^TALK",
     "HERO^PLAY(\"E\",\"3\");"},
    {"a text's signal",
     "TYPE=TEXT|TEXT=a b|FONT=LETTERS|HYPERTEXT=TRUE|TOCANVAS=TRUE|VISIBLE=TRUE|RECT=0,0,90,90", "ONSIGNAL^A",
     "HERO^SETWORDCOLOR(1,9,9,9);HERO^SEND(\"A\");HERO^SETTEXT(\"a<B>b\");"},
    {"ONDONE of a text", "TYPE=TEXT|TEXT=a b|FONT=LETTERS|TOCANVAS=TRUE|VISIBLE=TRUE|RECT=0,0,90,90",
     "ONDONE", "HERO^DRAWONTO(\"WALL\");MAIN^REMOVE(\"HERO\");"},
    {"a font's signal", "TYPE=FONT|DEF_A_STANDARD_9=A.FNT", "ONSIGNAL^A",
     "NOTE^SETFONT(\"HERO\");HERO^SEND(\"A\");NOTE^SETTEXT(\"b\");"},
    {"ONDONE of a font", "TYPE=FONT|DEF_A_STANDARD_9=A.FNT", "ONDONE",
     "NOTE^SETFONT(\"HERO\");MAIN^REMOVE(\"HERO\");NOTE^SETTEXT(\"b\");"},
    {"ONCLICK of a CANVAS", "TYPE=CANVAS|WIDTH=40|HEIGHT=40|ALPHA=TRUE|BACKGROUND=TRUE", "ONCLICK",
     "HERO^ADD(\"WALL\",2);HERO^ADD(\"NOTE\");HERO^DRAW(\"WALL\",3,3);MOUSE^CLICK(0,0);HERO^CAPTURE(TRUE);"},
    {"ONDONE of what a capture ends", "TYPE=IMAGE|FILENAME=A.IMG|VISIBLE=TRUE", "ONDONE",
     "SHEET^ADD(\"HERO\");SHEET^ADD(\"WALL\");SHEET^CAPTURE(TRUE);"},
    {"ONRELEASE of a PATTERN",
     "TYPE=PATTERN|WIDTH=40|HEIGHT=40|GRIDX=4|GRIDY=4|LAYERS=2|TOCANVAS=TRUE|VISIBLE=TRUE", "ONRELEASE^LEFT",
     "HERO^ADD(\"A\",0,0,\"WALL\",1);HERO^ADD(\"B\",1,1,\"NOTE\",0);MOUSE^MOUSERELEASE(0,0);"},
    {"a tile's signal", "TYPE=IMAGE|FILENAME=A.IMG|VISIBLE=TRUE", "ONSIGNAL^A",
     "FLOOR^ADD(\"A\",1,1,\"HERO\",0);FLOOR^ADD(\"B\",2,1,\"HERO\",0);HERO^SEND(\"A\");FLOOR^MOVE(1,1);"},
    {"a stamp's source", "TYPE=IMAGE|FILENAME=A.IMG|VISIBLE=TRUE", "ONSIGNAL^A",
     "STAMPS^CREATE(1,1);HERO^SEND(\"A\");STAMPS^DRAW(0,TRUE);STAMPS^UNDO(0,TRUE);"},
    {"a mask's signal", "TYPE=IMAGE|FILENAME=A.IMG|VISIBLE=TRUE", "ONSIGNAL^A",
     "GLASS^SETMASK(\"HERO\");GLASS^SETSOURCE(\"WALL\");HERO^SEND(\"A\");GLASS^MOVE(1,1);"},
    {"a scrolled picture's signal", "TYPE=IMAGE|FILENAME=A.IMG|TOCANVAS=TRUE|VISIBLE=TRUE", "ONSIGNAL^A",
     "ROLL^ADD(\"HERO\");ROLL^ADD(\"WALL\");HERO^SEND(\"A\");ROLL^SCROLLLEFT(9);"},
    {"ONUPDATE", "TYPE=CANVAS_OBSERVER", "ONUPDATE", "HERO^ENABLENOTIFY(TRUE);"},
    {"ONUPDATED", "TYPE=CANVAS_OBSERVER", "ONUPDATED", "HERO^ENABLENOTIFY(TRUE);"},
    {"ONINIT of the scene", "SCENE", "ONINIT", ""},
    {"ONRESTART", "EPISODE", "ONRESTART", "EP^RESTART();"},
    {"the end of the game", "GAME", nullptr, "GAME^EXIT();"},
    {"ONSIGNAL of the episode", "EPISODE", "ONSIGNAL^A", "EP^SEND(\"A\");"},
};

struct Act {
  const char* name;
  const char* code;    // BINDING stands for the property that the handler is bound to
  bool stops = false;  // the statements behind do not run
};

constexpr Act kActs[] = {
    {"nothing", "OTHER^INC();"},
    {"removes the sender", "MAIN^REMOVE(\"HERO\");"},
    {"removes the caller", "MAIN^REMOVE(\"STARTER\");"},
    {"removes another listener", "MAIN^REMOVE(\"LISTENER\");"},
    {"removes the handler", "MAIN^REMOVE(\"HANDLER\");"},
    {"removes the inline code", "MAIN^REMOVE(\"beh_HERO_BINDING\");"},
    {"removes the binding", "HERO^REMOVEBEHAVIOUR(\"BINDING\");LISTENER^DISABLE();"},
    {"removes the binding by force", "HERO^REMOVEBEHAVIOURFORCE(\"BINDING\");"},
    {"removes all bindings", "HERO^REMOVEALLBEHAVIOURS();"},
    {"replaces the binding", "HERO^ADDBEHAVIOUR(\"BINDING\",\"LISTENER\");"},
    {"binds itself again", "HERO^OVERIDESIGNALS(FALSE);HERO^ADDBEHAVIOUR(\"BINDING\",\"HANDLER\");"},
    {"loads", "CNVLOADER^LOAD(\"EXTRA.cnv\");"},
    {"loads and releases", "CNVLOADER^LOAD(\"EXTRA.cnv\");CNVLOADER^RELEASE(\"EXTRA.cnv\");"},
    {"releases the file whose code runs", "CNVLOADER^LOAD(\"EXTRA.cnv\");RELEASER^RUN();"},
    {"loads an object of the sender's name", "CNVLOADER^LOAD(\"TWIN.cnv\");"},
    {"loads a handler of the same name", "CNVLOADER^LOAD(\"TWINHANDLER.cnv\");"},
    {"creates an object of the sender's name", "@CREATE(\"IMAGE\",\"HERO\");"},
    {"makes clones and removes them", "HERO^CLONE(3);MAIN^REMOVECLONES(\"HERO\",1,3);HERO^RESETCLONES();"},
    {"clones the handler", "HANDLER^CLONE(2);MAIN^REMOVECLONES(\"HANDLER\",1,2);HANDLER^RESETCLONES();"},
    {"puts a group into itself", "CREW^ADD(\"CREW\",\"HERO\");CREW^SEND(\"B\");CREW^REMOVEALL();"},
    {"breaks the handler's timer", "HANDLER^BREAK();"},
    {"disables the handler", "HANDLER^DISABLE();"},
    {"goes elsewhere", "EP^GOTO(\"AFTER\");"},
    {"restarts the episode", "EP^RESTART();"},
    {"restarts the application", "GAME^RESTART();"},
    {"removes the scene", "MAIN^REMOVE(\"MAIN\");"},
    {"removes the levels above", "MAIN^REMOVE(\"EP\");MAIN^REMOVE(\"GAME\");"},
    {"stops the timers", "MAIN^PAUSE();MAIN^RESUME();"},
    {"starts a timer and ends it", "@RUNONTIMER(1,1,\"OTHER^INC();\");HERO^DISABLE();HERO^ENABLE();"},
    {"deletes the instance", "HERO^DELETE(\"ONE\");"},
    {"hides and loads a picture", "HERO^HIDE();HERO^LOAD(\"B.IMG\");HERO^SHOW();"},
    {"stops and plays", "HERO^STOP();HERO^LOAD(\"A.WAV\");HERO^PLAY();"},
    {"removes what a sequence plays", "MAIN^REMOVE(\"FIGURE\");MAIN^REMOVE(\"VOICE\");"},
    {"removes a picture of others", "MAIN^REMOVE(\"WALL\");HERO^DISABLE();"},
    {"removes the surfaces",
     "MAIN^REMOVE(\"SHEET\");MAIN^REMOVE(\"FLOOR\");MAIN^REMOVE(\"STAMPS\");MAIN^REMOVE(\"GLASS\");"
     "MAIN^REMOVE(\"ROLL\");"},
    {"removes a font in use", "MAIN^REMOVE(\"LETTERS\");NOTE^SETTEXT(\"c\");HERO^SETTEXT(\"c\");"},
    {"stops", "@BREAK();", true},
    {"ends the run", "@ONEBREAK();", true},
    {"ends the game", "GAME^EXIT();"},
};

constexpr const char* kTree =
    "DEF:MAIN(TYPE=SCENE)\nDEF:AFTER(TYPE=SCENE)\nDEF:EP(TYPE=EPISODE|SCENES=MAIN,AFTER|STARTWITH=MAIN)\n"
    "DEF:LAST(TYPE=SCENE)\nDEF:EP2(TYPE=EPISODE|SCENES=LAST)\nDEF:GAME(TYPE=APPLICATION|EPISODES=EP,EP2)\n";
// The game's own counters outlive the scene; the INI keeps them over a restart.
constexpr const char* kGame = "DEF:BEGUN(TYPE=INTEGER|TOINI=TRUE)\nDEF:ENDED(TYPE=INTEGER|TOINI=TRUE)\n";
constexpr const char* kMain =
    "DEF:OTHER(TYPE=INTEGER|ONCHANGED=LISTENER)\nDEF:LISTENER(TYPE=BEHAVIOUR|CODE={OTHERS^INC();})\n"
    "DEF:OTHERS(TYPE=INTEGER)\nDEF:CREW(TYPE=GROUP)\nDEF:MOUSE(TYPE=MOUSE)\n"
    "DEF:WALL(TYPE=IMAGE|FILENAME=B.IMG|TOCANVAS=TRUE|MONITORCOLLISION=TRUE)\n"
    "DEF:FIGURE(TYPE=ANIMO|FILENAME=FIGURE.ANN|FPS=60)\nDEF:VOICE(TYPE=SOUND|FILENAME=VOICE.WAV)\n"
    "DEF:LETTERS(TYPE=FONT|DEF_A_STANDARD_9=A.FNT)\n"
    "DEF:NOTE(TYPE=TEXT|TEXT=a b|FONT=LETTERS|TOCANVAS=TRUE|VISIBLE=TRUE|RECT=0,0,90,90)\n"
    "DEF:SHEET(TYPE=CANVAS|WIDTH=20|HEIGHT=20|ALPHA=TRUE|BACKGROUND=TRUE)\n"
    "DEF:FLOOR(TYPE=PATTERN|WIDTH=16|HEIGHT=16|GRIDX=4|GRIDY=4|LAYERS=1|TOCANVAS=TRUE|VISIBLE=TRUE)\n"
    "DEF:STAMPS(TYPE=GRBUFFER|SOURCE=HERO|DESTINY=SHEET)\nDEF:ROLL(TYPE=SCROLL|VIEWPORT=0,0,9,9)\n"
    "DEF:GLASS(TYPE=VIRTUALGRAPHICSOBJECT|SOURCE=WALL|MASK=WALL|TOCANVAS=TRUE|VISIBLE=TRUE)\n"
    "DEF:HOLDS(TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUAL|OPERAND2=1)\n"
    "DEF:BOTH(TYPE=COMPLEXCONDITION|CONDITION1=HERO|OPERATOR=AND|CONDITION2=HERO)\n"
    "DEF:GUARDED(TYPE=BEHAVIOUR|CODE={OTHER^INC();}|CONDITION=HERO)\n";
constexpr const char* kSequence =
    "NAME=HERO\nHERO:TYPE=SEQUENCE\nHERO:MODE=PARAMETER\nHERO:SEQEVENT=E=1\n"
    "NAME=PIC\nPIC:FILENAME=FIGURE\nPIC:TYPE=SIMPLE\nPIC:ADD=HERO\n"
    "NAME=SND\nSND:FILENAME=A.WAV\nSND:TYPE=SIMPLE\nSND:ADD=HERO\n"
    "NAME=TALK\nTALK:TYPE=SPEAKING\nTALK:ANIMOFN=FIGURE\nTALK:WAVFN=VOICE\nTALK:ADD=HERO\n";
constexpr const char* kExtra =
    "DEF:EXTRA(TYPE=INTEGER|ONDONE={OTHER^INC();})\n"
    "DEF:RELEASER(TYPE=BEHAVIOUR|CODE={CNVLOADER^RELEASE(\"EXTRA.cnv\");OTHER^INC();})\n";
constexpr const char* kTwin = "DEF:HERO(TYPE=STRING|VALUE=twin)\n";
constexpr const char* kTwinHandler = "DEF:HANDLER(TYPE=BEHAVIOUR|CODE={OTHER^INC();})\n";

// A picture file of 2 x 2 pixels.
const std::string& picture() {
  static const std::string file = [] {
    constexpr int kHeader[] = {2, 2, 16, 8, 0, 0, 0, 0, 0};
    std::string bytes("PIK", 4);
    for (const int number : kHeader) bytes += std::string{static_cast<char>(number), 0, 0, 0};
    return bytes + std::string(8, 'x');
  }();
  return file;
}

// An animation of two frames of 2 x 2 pixels and the event GO.
const std::string& animation() {
  static const std::string file = [] {
    const auto word = [](int n) {
      return std::string{static_cast<char>(n & 0xFF), static_cast<char>(n >> 8)};
    };
    const auto blank = [](std::size_t n) { return std::string(n, '\0'); };
    const std::string opaque(1, '\xFF');
    const std::string head = std::string("NVP", 4) + word(2) + word(16) + word(1) + blank(13) + word(60) +
                             blank(6) + opaque + blank(12);
    const std::string event =
        "GO" + blank(30) + word(2) + blank(12) + word(60) + blank(6) + opaque + blank(12);
    const std::string position = blank(24) + opaque + blank(5);
    const std::string frame = word(2) + word(2) + blank(6) + word(8) + blank(40);
    return head + blank(8) + event + word(0) + word(1) + position + position + frame + frame +
           std::string(16, 'x');
  }();
  return file;
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
  return text;
}

// The lines of one element in the long form, since code may hold bars.
std::string element(const std::string& name, const std::string& properties) {
  std::string text = "OBJECT=" + name + "\n";
  for (std::size_t start = 0; start < properties.size();) {
    const std::size_t end = std::min(properties.find('|', start), properties.size());
    text += name + ":" + properties.substr(start, end - start) + "\n";
    start = end + 1;
  }
  return text;
}

class Cell {
 public:
  // With `isInline` the sender's own code is the handler, else a named behaviour.
  Cell(const Signal& signal, const Act& act, bool isInline)
      : signal_(signal), act_(act), isInline_(isInline) {}

  // What is left of the game once it has left the scene; "ended" for a game that has ended.
  std::string run();
  bool endsTheGame() const { return std::string_view(signal_.hero) == "GAME"; }
  int begun() const { return begun_; }
  int ended() const { return ended_; }

 private:
  Disk disk() const;
  std::string handler() const;
  std::string hero() const;
  static std::string whatIsLeft(World& world);
  void readCounters(const World& world);

  const Signal& signal_;
  const Act& act_;
  bool isInline_;
  int begun_ = 0;
  int ended_ = 0;
};

// Acts a few times only: some acts make their own signal happen again.
std::string Cell::handler() const {
  const std::string property = signal_.property != nullptr ? signal_.property : "ONSIGNAL^A";
  return "{BEGUN^INC();@IF(BEGUN,<,4,{" + replaced(act_.code, "BINDING", property) + "});ENDED^INC();}";
}

std::string Cell::hero() const {
  std::string hero = signal_.hero;
  if (hero == "LOADED") hero = "TYPE=INTEGER";
  const std::string name = hero == "SCENE" ? "MAIN" : hero == "EPISODE" ? "EP" : "HERO";
  std::string text = name == "HERO" ? element(name, hero) : "OBJECT=" + name + "\n";
  if (signal_.property != nullptr)
    text += name + ":" + signal_.property + "=" + (isInline_ ? handler() : "HANDLER") + "\n";
  return text;
}

Disk Cell::disk() const {
  const std::string dane = "C:\\GAME\\Dane\\";
  const std::string classes = "C:\\GAME\\Common\\classes\\";
  const bool isLoaded = std::string_view(signal_.hero) == "LOADED";
  const bool isEpisode = std::string_view(signal_.hero) == "EPISODE";
  const bool isOnMain = !isLoaded && !isEpisode && !endsTheGame();
  const std::string handlerText = element("HANDLER", "TYPE=BEHAVIOUR|CODE=" + handler());
  Disk disk;
  disk[dane + "application.def"] = contentOf(kTree);
  const std::string atExit = element("__ONEXIT__", "TYPE=BEHAVIOUR|CODE=" + handler());
  disk[dane + "GAME.cnv"] = contentOf(kGame + (endsTheGame() ? atExit : ""));
  disk[dane + "EP.cnv"] = contentOf(isEpisode ? handlerText + hero() : std::string());
  disk[dane + "MAIN.cnv"] = contentOf(handlerText + (isOnMain ? hero() : "") + kMain);
  disk[dane + "A.IMG"] = disk[dane + "B.IMG"] = contentOf(picture());
  disk[dane + "A.ANN"] = contentOf(animation());
  disk[dane + "FIGURE.ANN"] = contentOf(animation());
  disk[dane + "HERO.SEQ"] = contentOf(kSequence);
  disk["C:\\GAME\\Wavs\\A.WAV"] = disk["C:\\GAME\\Wavs\\VOICE.WAV"] = contentOf(test::waveFile(700));
  disk[dane + "A.FNT"] = contentOf(test::blockFontFile());
  disk[dane + "AFTER.cnv"] = contentOf("DEF:QUIET(TYPE=INTEGER)\n");
  disk[dane + "LAST.cnv"] = contentOf("DEF:QUIET(TYPE=INTEGER)\n");
  disk[dane + "HERO.cnv"] = contentOf(isLoaded ? hero() : std::string());
  disk[dane + "EXTRA.cnv"] = contentOf(kExtra);
  disk[dane + "TWIN.cnv"] = contentOf(kTwin);
  disk[dane + "TWINHANDLER.cnv"] = contentOf(kTwinHandler);
  for (const char* word : {"CTOR", "DTOR", "WORK"}) {
    const std::string name = word == std::string("CTOR")   ? "CONSTRUCTOR"
                             : word == std::string("DTOR") ? "DESTRUCTOR"
                                                           : "WORK";
    disk[classes + word + ".cnv"] = contentOf("DEF:OWN(TYPE=INTEGER)\nDEF:" + name +
                                              "(TYPE=BEHAVIOUR|CODE={OWN^INC();HANDLER^RUN();OWN^INC();})\n");
  }
  return disk;
}

std::string Cell::whatIsLeft(World& world) {
  const auto count = [](const char* name, int number) { return std::string(name) + std::to_string(number); };
  const CMC_Scene* scene = world.scene();
  const CMC_ObjectsContainer* episode = scene->getParent();
  return scene->getName().str() + count(" objects ", scene->getElementsNo()) +
         count(" of the episode ", episode != nullptr ? episode->getElementsNo() : -1) +
         count(" of the game ", world.game()->getElementsNo()) +
         count(" timers ", world.window().GetTimerInterface()->getSize()) +
         count(" watched ", world.window().getCollisionInspector()->getMonitoredCount()) +
         count(" shown ", static_cast<int>(world.window().getRefreshScreen()->queue().elements().size())) +
         count(" temporaries ", CMC_VariableFactory::used());
}

void Cell::readCounters(const World& world) {
  const auto read = [&world](const char* name) {
    const auto* counter = world.game()->CMC_ObjectsContainer::find<CMC_Integer>(name);
    return counter != nullptr ? counter->getValue() : -1;
  };
  begun_ = read("BEGUN");
  ended_ = read("ENDED");
}

std::string Cell::run() {
  const Disk files = disk();
  World world(files, {});
  for (int i = 0; i < 3; ++i) world.tick();
  const std::string trigger = signal_.trigger;
  if (!trigger.empty() && !world.hasEnded()) world.run(world.scene(), "STARTER", trigger);
  for (int i = 0; i < 6; ++i) world.tick();
  // A handler at the end of the scene may bring it back a few times.
  for (int tries = 0; tries < 8 && !world.hasEnded() && world.scene()->getName() != "LAST"; ++tries) {
    world.run(world.game(), "LEAVER", "GAME^GOTO(\"EP2\");");
    for (int i = 0; i < 4; ++i) world.tick();
  }
  world.machine().clock().advance(11000);
  for (int i = 0; i < 3; ++i) world.tick();
  if (world.game() != nullptr) readCounters(world);
  return world.hasEnded() ? "ended" : whatIsLeft(world);
}

TEST(DeletionMatrix, EveryCellRunsOnAndLeavesNothing) {
  int cells = 0;
  for (const Signal& signal : kSignals) {
    for (const bool isInline : {false, true}) {
      // What a file brought leaves in the order of its making, inline code first.
      const bool endsWithItsCode = std::string_view(signal.name) == "ONDONE by release";
      if (isInline && (signal.property == nullptr || endsWithItsCode)) continue;
      std::string untouched;
      for (const Act& act : kActs) {
        SCOPED_TRACE(std::string(signal.name) + (isInline ? ", inline: " : ": ") + act.name);
        Cell cell(signal, act, isInline);
        const std::string left = cell.run();
        if (untouched.empty()) untouched = left;
        ++cells;
        EXPECT_GT(cell.begun(), 0) << "the handler never ran";
        if (!act.stops) EXPECT_EQ(cell.ended(), cell.begun()) << "the statements behind the act did not run";
        if (left != "ended") EXPECT_EQ(left, untouched);
        EXPECT_EQ(left == "ended", cell.endsTheGame() || std::string_view(act.name) == "ends the game");
      }
    }
  }
  RecordProperty("cells", cells);
}

}  // namespace
}  // namespace footlight
