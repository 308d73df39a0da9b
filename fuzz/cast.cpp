#include "cast.h"

#include <algorithm>

#include "code_maker.h"
#include "gfx/ann_format.h"
#include "gfx/img_format.h"
#include "objects/system/mc_cnv_loader.h"
#include "objects/system/mc_system.h"
#include "script/type_registry.h"
#include "support/block_fonts.h"

namespace footlight::fuzz {

using test::Content;
using test::contentOf;

namespace {

constexpr const char* kDane = "C:\\GAME\\Dane\\";
constexpr const char* kClasses = "C:\\GAME\\COMMON\\CLASSES\\";

constexpr const char* kBaseClass =
    "DEF:MOVE(TYPE=BEHAVIOUR|CODE={N^ADD($1);SEEN^SET(N);})\n"
    "DEF:ONLYBASE(TYPE=BEHAVIOUR|CODE={@RETURN(SEEN);})\n"
    "DEF:SEEN(TYPE=INTEGER|VALUE=3|ONCHANGED={N^INC();})\n"
    "DEF:CLOCK(TYPE=TIMER|ELAPSE=20|ONTICK={SEEN^INC();})\n";
constexpr const char* kDerivedClass =
    "DEF:CONSTRUCTOR(TYPE=BEHAVIOUR|CODE={N^SET($1);OWN^SET(\"$2\");})\n"
    "DEF:DESTRUCTOR(TYPE=BEHAVIOUR|CODE={TEXT1^ADD(OWN);N^DEC();})\n"
    "DEF:OWN(TYPE=STRING|VALUE=x|TOINI=TRUE)\n"
    "DEF:INNER(TYPE=CLASS|DEF=BASE.cnv)\n"
    "DEF:MOVE(TYPE=BEHAVIOUR|CODE={SUPER_MOVE^RUN($1);THIS^ONLYBASE();})\n"
    "DEF:MAKE(TYPE=BEHAVIOUR|CODE={INNER^NEW(\"$1\",$2);@RETURN(SEEN);})\n"
    "DEF:GONE(TYPE=BEHAVIOUR|CODE={CLASS1^DELETE(\"$1\");SEEN^INC();})\n";
constexpr const char* kExtra =
    "DEF:EXTRAVALUE(TYPE=INTEGER|VALUE=1|ONCHANGED={N^ADD(EXTRAVALUE);}|ONINIT={N^INC();}|ONDONE={N^SET(9);})"
    "\n"
    "DEF:EXTRARUN(TYPE=BEHAVIOUR|CONDITION=CONDITION1|CODE={EXTRAVALUE^INC();CNVLOADER^RELEASE(\"EXTRA.cnv\")"
    ";})\n"
    "DEF:EXTRACLOCK(TYPE=TIMER|ELAPSE=10|ONTICK=EXTRARUN)\n"
    "DEF:EXTRAPICTURE(TYPE=IMAGE|FILENAME=A.IMG|VISIBLE=TRUE|TOCANVAS=TRUE|ONCLICK={N^INC();})\n"
    "DEF:MOUSE(TYPE=MOUSE|ONCLICK={N^INC();})\n";
constexpr const char* kOther =
    "DEF:N(TYPE=INTEGER|VALUE=100|TOINI=TRUE|ONCHANGED={TEXT1^ADD(\"o\");})\n"
    "DEF:BODY1(TYPE=BEHAVIOUR|CODE={N^DEC();})\n"
    "DEF:GROUP1(TYPE=GROUP)\n"
    "DEF:CLASS1(TYPE=CLASS|DEF=BASE.cnv)\n";

constexpr const char* kTale =
    "NAME=TALE\nTALE:TYPE=SEQUENCE\nTALE:MODE=PARAMETER\nTALE:SEQEVENT=a=x2\nNAME=PART\nPART:FILENAME="
    "ANIMO1\n"
    "PART:EVENT=GO\nPART:TYPE=SIMPLE\nPART:ADD=TALE\nNAME=LINE\nLINE:TYPE=SPEAKING\nLINE:ANIMOFN=ANIMO2\n"
    "LINE:WAVFN=SOUND1\nLINE:PREFIX=GO\nLINE:ADD=TALE\n";

Content picture(CXSize size, CXPoint position, int bpp) {
  ImgPicture made;
  made.size = size;
  made.bpp = bpp;
  made.position = position;
  const auto pixels = static_cast<std::size_t>(size.width * size.height);
  for (std::size_t i = 0; i < pixels * 2; ++i) made.colour.push_back(static_cast<std::byte>(i * 37));
  for (std::size_t i = 0; i < pixels; ++i) made.alpha.push_back(static_cast<std::byte>(i * 85));
  return std::make_shared<const std::vector<std::byte>>(writeImg(made, _compression::none));
}

// Two frames and two events, one of which goes round.
Content animation() {
  AnnFile made;
  for (int i = 0; i < 2; ++i) {
    AnnFrame frame;
    frame.size = {3, 3};
    frame.position = {9 + i, 9};
    frame.colour.assign(18, static_cast<std::byte>(i * 90));
    made.frames.push_back(std::move(frame));
  }
  for (const char* name : {"GO", "ROUND"}) {
    _annEventInfo3 event;
    event.name = name;
    event.frames = {0, 1, 0, 1};
    event.loopTo = made.events.empty() ? 0 : 2;
    event.loopCount = 3;
    made.events.push_back(std::move(event));
  }
  return std::make_shared<const std::vector<std::byte>>(writeAnn(made));
}

const char* numbered(const char* word) {
  for (const char* single : {"MOUSE", "KEYBOARD", "CANVAS_OBSERVER"}) {
    if (std::string_view(word) == single) return "";
  }
  return "1";
}

std::string nameOf(const ScriptType& description) {
  const std::string word = description.definitionWord;
  return (word == "CANVAS_OBSERVER" ? "CANVASOBSERVER" : word) + numbered(description.definitionWord);
}

void addVariables(Cast& cast) {
  cast.add("INT1", "INTEGER", "VALUE=5|DEFAULT=2|ONCHANGED=BODY2(a,b)|ONCHANGED^5=BODY3");
  cast.add("TEXT1", "STRING", "VALUE=INT1|ONCHANGED=BODY3|ONSIGNAL^GO=BODY1(1)");
  cast.add("BOOL1", "BOOL", "VALUE=TRUE|ONCHANGED^TRUE=BODY2");
  cast.add("REAL1", "DOUBLE", "VALUE=1.5");
}

void addTests(Cast& cast) {
  cast.add("CONDITION1", "CONDITION",
           "OPERAND1=INT1|OPERATOR=LESS|OPERAND2=BODY1^RUN()|ONRUNTIMESUCCESS=BODY2");
  cast.add("CONDITION2", "CONDITION",
           "OPERAND1=TEXT1|OPERATOR=EQUAL|OPERAND2=[INT1+1]|ONRUNTIMEFAILED=BODY3(x)");
  cast.add("BOTH1", "COMPLEXCONDITION", "CONDITION1=CONDITION1|CONDITION2=CONDITION2|OPERATOR=OR");
  cast.add("SUM1", "EXPRESSION", "OPERAND1=INT1|OPERATOR=ADD|OPERAND2=REAL1");
}

void addStructures(Cast& cast) {
  cast.add("STRUCT1", "STRUCT", "FIELDS=A<INTEGER>,B<STRING>,C<DOUBLE>|TOINI=TRUE");
  cast.add("STRUCT2", "STRUCT", "FIELDS=A<INTEGER>,D<BOOL>");
  cast.add("GROUP1", "GROUP");
  cast.add("GROUP2", "GROUP");
  cast.add("CLASS1", "CLASS", "DEF=DERIVED.cnv|BASE=BASE.cnv");
  cast.add("CLASS2", "CLASS", "DEF=NOSUCH.cnv");
}

void addSights(Cast& cast) {
  cast.add("IMAGE1", "IMAGE",
           "FILENAME=A.IMG|VISIBLE=TRUE|TOCANVAS=TRUE|PRIORITY=3|ASBUTTON=TRUE|ONCLICK=BODY1|"
           "ONFOCUSON=BODY2|ONFOCUSOFF=BODY3");
  cast.add(
      "IMAGE2", "IMAGE",
      "FILENAME=B.IMG|VISIBLE=TRUE|TOCANVAS=TRUE|PRIORITY=1|MONITORCOLLISIONALPHA=TRUE|ONCOLLISION=BODY2|"
      "ONCOLLISIONFINISHED=BODY3");
  cast.add("ANIMO2", "ANIMO", "FILENAME=a.ann|VISIBLE=TRUE|ASBUTTON=TRUE|ONCLICK=BODY1|ONFRAMECHANGED=BODY2");
  cast.add(
      "ANIMO1", "ANIMO",
      "FILENAME=A.ANN|VISIBLE=TRUE|TOCANVAS=TRUE|PRIORITY=2|FPS=30|MONITORCOLLISION=TRUE|ONSTARTED=BODY1|"
      "ONFINISHED=BODY2|ONFRAMECHANGED=BODY3|ONCOLLISION=BODY1");
  cast.add("BUTTON1", "BUTTON",
           "GFXSTANDARD=IMAGE2|GFXONMOVE=ANIMO1|DRAGGABLE=TRUE|ENABLE=TRUE|SNDONCLICK=SOUND1|ONCLICKED=BODY1|"
           "ONACTION=BODY2|ONENDDRAGGING=BODY3|ONFOCUSON=BODY1|ONFOCUSOFF=BODY2");
  cast.add("SOUND1", "SOUND", "FILENAME=A.WAV|FLUSHAFTERPLAYED=TRUE|ONSTARTED=BODY1|ONFINISHED=BODY3");
  cast.add("SEQUENCE1", "SEQUENCE", "FILENAME=TALE.SEQ|ONSTARTED^PART=BODY2|ONFINISHED=BODY1");
  cast.add("FONT1", "FONT", "DEF_A_STANDARD_9=A.FNT|DEF_A_BOLD_9=A.FNT");
  cast.add("NOTE1", "TEXT",
           "TEXT=a <B>b<B> <COLOR "
           "9>c|FONT=FONT1|HYPERTEXT=TRUE|RECT=IMAGE1|VISIBLE=TRUE|TOCANVAS=TRUE|PRIORITY=4");
  cast.add("CANVAS1", "CANVAS",
           "WIDTH=30|HEIGHT=20|ALPHA=TRUE|BACKGROUND=TRUE|PRIORITY=5|ONCLICK=BODY1|ONFOCUSON=BODY3");
  cast.add("PATTERN1", "PATTERN",
           "WIDTH=32|HEIGHT=24|GRIDX=4|GRIDY=4|LAYERS=2|TOCANVAS=TRUE|VISIBLE=TRUE|ONRELEASE=BODY2");
  cast.add("SCROLL1", "SCROLL", "VIEWPORT=2,2,20,20");
  cast.add("STAMPS1", "GRBUFFER", "SOURCE=IMAGE1|DESTINY=CANVAS1");
  cast.add("GLASS1", "VIRTUALGRAPHICSOBJECT", "SOURCE=IMAGE1|MASK=CANVAS1|VISIBLE=TRUE|TOCANVAS=TRUE");
  cast.add("TIMER1", "TIMER", "ELAPSE=30|TICKS=4|ONTICK=BODY2|ONTICK^3=BODY3");
  cast.add("TIMER2", "TIMER", "ELAPSE=100|ENABLED=FALSE|ONTICK=BODY1");
}

// Types of which there is none yet. An object without methods of its own is like any other of its kind: of
// these a few will do.
void addOtherTypes(Cast& cast) {
  constexpr int kPlainOnes = 4;
  int plain = 0;
  for (const ScriptType* description : allTypes()) {
    const bool isThere = std::any_of(cast.names.begin(), cast.names.end(),
                                     [&](const Named& named) { return named.type == description->number; });
    if (description->definitionWord == nullptr || isThere) continue;
    if (methodsOf(description->number).empty() && ++plain > kPlainOnes) continue;
    cast.add(nameOf(*description), description->definitionWord);
  }
}

void addKnown(Cast& cast, const std::string& level) {
  for (const char* name : {"BODY1", "BODY2", "BODY3"}) cast.know(name, type::kBehaviour);
  cast.know(level.c_str(), type::kScene);
  cast.know("GAME", type::kApplication);
  cast.know("CNVLOADER", type::kCnvLoader);
  cast.know("SYSTEM", type::kSystem);
  cast.know("RANDOM", type::kRandom);
  // What code makes.
  for (const char* name : {"MADE1", "MADE2"}) cast.know(name, type::kClass);
  for (const char* name : {"LOCAL1", "INT1_1", "EXTRAVALUE", "_I_", "__RETURN__"})
    cast.know(name, type::kInteger);
  cast.know("EXTRARUN", type::kBehaviour);
  cast.know("NOSUCH", type::kInteger);
}

}  // namespace

void Cast::add(const std::string& name, const char* type, const std::string& properties) {
  names.push_back({name, findTypeByDefinition(type)->number});
  text += "DEF:" + name + "(TYPE=" + type + (properties.empty() ? "" : "|") + properties + ")\n";
}

void addSharedVariables(Cast& cast) {
  cast.add("N", "INTEGER", "VALUE=7|TOINI=TRUE|ONBRUTALCHANGED=BODY1");
  cast.add("TEXT2", "STRING", "VALUE=a b");
}

Cast smallCast(const std::string& level) {
  Cast cast;
  addSharedVariables(cast);
  addVariables(cast);
  cast.add("CONDITION1", "CONDITION", "OPERAND1=INT1|OPERATOR=GREATER|OPERAND2=3");
  cast.add("GROUP1", "GROUP");
  cast.add("TIMER1", "TIMER", "ELAPSE=50|ONTICK=BODY1");
  addKnown(cast, level);
  return cast;
}

Cast wholeCast(const std::string& level) {
  Cast cast;
  cast.know("N", type::kInteger);
  cast.know("TEXT2", type::kString);
  addVariables(cast);
  addTests(cast);
  addStructures(cast);
  addSights(cast);
  addOtherTypes(cast);
  addKnown(cast, level);
  return cast;
}

void addCommonFiles(Disk& disk) {
  const std::string classes = kClasses;
  const std::string dane = kDane;
  disk[classes + "BASE.cnv"] = contentOf(kBaseClass);
  disk[classes + "DERIVED.cnv"] = contentOf(kDerivedClass);
  disk[dane + "EXTRA.cnv"] = contentOf(kExtra);
  disk[dane + "OTHER.cnv"] = contentOf(kOther);
  disk[dane + "A.IMG"] = picture({4, 3}, {10, 10}, 16);
  disk[dane + "B.IMG"] = picture({6, 5}, {12, 8}, 15);
  disk[dane + "A.ANN"] = animation();
  disk[dane + "TALE.SEQ"] = contentOf(kTale);
  disk[dane + "A.FNT"] = contentOf(test::blockFontFile());
  disk["C:\\GAME\\Wavs\\A.WAV"] = contentOf(test::waveFile(500));
}

}  // namespace footlight::fuzz
