#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "findings.h"
#include "gfx/ann_format.h"
#include "nearest.h"
#include "run.h"
#include "support/test_platform.h"

namespace footlight::check {

namespace {

using test::TemporaryFolder;

constexpr const char* kApplication =
    "DEF:GAME(TYPE=APPLICATION|SCENES=MAIN,OTHER)\nDEF:MAIN(TYPE=SCENE)\nDEF:OTHER(TYPE=SCENE)\n";

struct File {
  const char* name;
  std::string content;
};

// What is found in a game, each as "FILE:LINE: kind: text", the file without its folders.
std::vector<std::string> findingsIn(const std::vector<File>& files, Options options = {}) {
  const TemporaryFolder folder;
  folder.write("Dane/application.def", kApplication);
  for (const File& file : files) folder.write(file.name, file.content);
  options.dataRoot = folder.path().string();
  const Outcome outcome = run(options);
  if (!outcome.failure.empty()) return {outcome.failure};
  std::vector<std::string> lines;
  for (Finding finding : outcome.findings.list()) {
    finding.file = finding.file.substr(finding.file.rfind('/') + 1);
    lines.push_back(asLine(finding));
  }
  return lines;
}

std::vector<std::string> findingsInMain(const std::string& content) {
  return findingsIn({{"Dane/MAIN.cnv", content}});
}

// Each kind of mistake

struct Mistake {
  const char* name;
  const char* content;  // of MAIN.cnv
  std::vector<std::string> found;
};

void PrintTo(const Mistake& mistake, std::ostream* out) { *out << mistake.name; }

std::string nameOf(const testing::TestParamInfo<Mistake>& parameter) { return parameter.param.name; }

class Mistakes : public testing::TestWithParam<Mistake> {};

TEST_P(Mistakes, AreFoundWhereTheyStand) {
  EXPECT_THAT(findingsInMain(GetParam().content), testing::UnorderedElementsAreArray(GetParam().found));
}

const Mistake kDefinitionMistakes[] = {
    {"NoSuchElement",
     "# a comment\nOBJECT=COUNT\nCUONT:TYPE=INTEGER\nCOUNT:TYPE=INTEGER\n",
     {"MAIN.cnv:3: definition: CUONT: no element of this name (did you mean COUNT?)"}},
    {"ElementBeforeItsLine",
     "\nA:TYPE=INTEGER\nOBJECT=A\nA:TYPE=INTEGER\n",
     {"MAIN.cnv:2: definition: A: no element of this name yet: it is defined further down"}},
    {"MisspeltKeyword",
     "OBJETC=A\n",
     {"MAIN.cnv:1: definition: OBJETC: no element of this name (did you mean OBJECT?)"}},
    {"ElementTwice",
     "OBJECT=A\nA:TYPE=BOOL\nOBJECT=A\nDEF:B(TYPE=BOOL)\nDEF:B(TYPE=INTEGER)\n",
     {"MAIN.cnv:3: definition: A: there is an element of this name already",
      "MAIN.cnv:5: definition: another B: it takes the place of the one of line 4"}},
    {"PropertyTwice",
     "OBJECT=A\nA:TYPE=BOOL\nA:VALUE=TRUE\nA:VALUE=FALSE\nA:ONINIT={}\nA:ONINIT={}\n",
     {"MAIN.cnv:4: definition: A:VALUE has no effect: the value of line 3 counts",
      "MAIN.cnv:6: definition: A:ONINIT takes the place of the binding of line 5"}},
    {"NoType", "OBJECT=A\n", {"MAIN.cnv:1: definition: A has no TYPE: no object is made of it"}},
    {"ShortFormCutsAtBars",
     "DEF:S(TYPE=STRUCT|FIELDS=X<INTEGER>)\nDEF:B(TYPE=BEHAVIOUR|CODE={S|X^INC();})\n",
     {"MAIN.cnv:2: definition: X^INC();}: no equals sign in a property of DEF",
      "MAIN.cnv:2: brackets: the braces around \"{S\" are no pair",
      "MAIN.cnv:2: statement: the last statement has no semicolon and is dropped: S"}},
    {"UnknownType",
     "OBJECT=A\n\nA:TYPE=INTEGR\nDEF:B(TYPE=Timer)\n",
     {"MAIN.cnv:3: type: no TYPE INTEGR (did you mean INTEGER?)",
      "MAIN.cnv:4: type: no TYPE Timer (did you mean TIMER?)"}},
    {"UnknownTypeOfAField",
     "OBJECT=S\nS:TYPE=STRUCT\nS:FIELDS=A<INTEGER>,B<INTEGR>,C\n",
     {"MAIN.cnv:3: type: no field is made of B<INTEGR>: NAME<TYPE> is wanted (did you mean INTEGER?)",
      "MAIN.cnv:3: definition: no field is made of C: NAME<TYPE> is wanted"}},
    {"UnknownProperty",
     "OBJECT=A\nA:TYPE=TIMER\nA:ELAPSED=5\nA:TOINI=TRUE\n",
     {"MAIN.cnv:3: property: ELAPSED is no property of TIMER (did you mean ELAPSE?)",
      "MAIN.cnv:4: property: TOINI is no property of TIMER"}},
    {"PropertyOfALevelInItsFile",
     "OBJECT=MAIN\nMAIN:MUSIC=a.wav\n",
     {"MAIN.cnv:2: property: MAIN:MUSIC is not read here: properties of a level stand in application.def"}},
    {"UnknownSignal",
     "OBJECT=A\nA:TYPE=TIMER\nA:ONTIK={}\nA:ONTICKS={}\nOBJECT=MAIN\nMAIN:ONINITT={}\n",
     {"MAIN.cnv:3: signal: A:ONTIK: nobody raises such a signal (did you mean ONTICK?)",
      "MAIN.cnv:4: signal: A:ONTICKS: nobody raises such a signal (did you mean ONTICK?)",
      "MAIN.cnv:6: signal: MAIN:ONINITT: nobody raises such a signal (did you mean ONINIT?)"}},
    {"UnknownSignalOfABinding",
     "DEF:B(TYPE=BEHAVIOUR)\nDEF:A(TYPE=INTEGER|ONINIT={A^ADDBEHAVIOUR(\"ONCHNGED$5\",B); /\n"
     "A^ADDBEHAVIOUR(\"ONCHANGED$5\",BB);A^ADDBEHAVIOUR(\"@OWN\",\"B\");})\n",
     {"MAIN.cnv:2: signal: nobody raises a signal ONCHNGED$5 (did you mean ONCHANGED?)",
      "MAIN.cnv:3: behaviour: no behaviour BB"}},
    {"NoBehaviourToBind",
     "DEF:STARTUP(TYPE=BEHAVIOUR)\nOBJECT=MAIN\nMAIN:ONINIT=STARTUPP\nMAIN:ONDONE=STARTUP(1\n"
     "DEF:N(TYPE=INTEGER|ONCHANGED=N)\n",
     {"MAIN.cnv:3: behaviour: MAIN:ONINIT: no behaviour STARTUPP (did you mean STARTUP?)",
      "MAIN.cnv:4: brackets: MAIN:ONDONE: the round brackets are no pair: STARTUP(1",
      "MAIN.cnv:5: behaviour: N:ONCHANGED: N is no BEHAVIOUR"}},
    {"BehaviourBoundBeforeItIsThere",
     "DEF:A(TYPE=BEHAVIOUR|ONINIT=B)\nDEF:B(TYPE=BEHAVIOUR|ONINIT=A)\n",
     {"MAIN.cnv:1: behaviour: A:ONINIT: B is defined further down: here it is not there yet"}},
    {"NoCondition",
     "DEF:C(TYPE=CONDITION|OPERAND1=1|OPERATOR=EQUALS|OPERAND2=1)\n"
     "DEF:B(TYPE=BEHAVIOUR|CONDITION=D)\nDEF:X(TYPE=COMPLEXCONDITION|CONDITION1=C|CONDITION2=B|OPERATOR=XOR)"
     "\n"
     "DEF:E(TYPE=EXPRESSION|OPERAND1=1|OPERATOR=PLUS|OPERAND2=2)\n",
     {"MAIN.cnv:1: operator: C:OPERATOR: no such operator: EQUALS",
      "MAIN.cnv:2: object: B:CONDITION: no condition D",
      "MAIN.cnv:3: object: X:CONDITION2: B is no CONDITION",
      "MAIN.cnv:3: operator: X:OPERATOR: no such operator: XOR",
      "MAIN.cnv:4: operator: E:OPERATOR: no such operator: PLUS"}},
    {"NoClassFile",
     "DEF:C(TYPE=CLASS|DEF=none.cnv|BASE=a.cnv, b.cnv)\n",
     {"MAIN.cnv:1: file: C:DEF: there is no class file none.cnv",
      "MAIN.cnv:1: file: C:BASE: there is no class file a.cnv",
      "MAIN.cnv:1: file: C:BASE: there is no class file b.cnv"}},
};
INSTANTIATE_TEST_SUITE_P(Definitions, Mistakes, testing::ValuesIn(kDefinitionMistakes), nameOf);

const Mistake kTextMistakes[] = {
    {"SlashInAPath",
     "OBJECT=A\nA:TYPE=IMAGE\nA:FILENAME=pictures/a.img\nA:VISIBLE=TRUE\n",
     {"MAIN.cnv:3: slash: the slash behind \"A:FILENAME=pictures\" vanishes, and the next line becomes a "
      "part "
      "of this one",
      "MAIN.cnv:4: slash: belongs to the line above: the slash there makes both one line",
      "MAIN.cnv:4: separator: a colon does not reach the value of A:FILENAME: it only separates"}},
    {"SlashAtTheEndOfAPath",
     "OBJECT=A\nA:TYPE=STRING\nA:VALUE=pictures/\n\nOBJECT=B\n",
     {"MAIN.cnv:5: definition: B has no TYPE: no object is made of it"}},
    {"SlashInAComment",
     "# yes/no\nDEF:A(TYPE=BOOL)\n# this/that\n\n# both /\n# of them\nDEF:B(TYPE=BOOL)\n",
     {"MAIN.cnv:2: slash: belongs to the comment above: the slash there makes both one line"}},
    {"EqualsSignAndColon",
     "OBJECT=A\nA:TYPE=STRING\nA:VALUE=1=2\nA:DEFAULT=C:\\x\nDEF:B(TYPE=STRING|VALUE=1=2:3)\nA:TOINI==TRUE\n",
     {"MAIN.cnv:3: separator: an equals sign does not reach the value of A:VALUE: it only separates",
      "MAIN.cnv:4: separator: a colon does not reach the value of A:DEFAULT: it only separates",
      "MAIN.cnv:6: separator: an equals sign does not reach the value of A:TOINI: it only separates"}},
    {"SignsInSeveralLines",
     "OBJECT=A\nA:TYPE=BEHAVIOUR\nA:CODE={ /\n  @IF(\"1'1\",{ /\n  A^RUN(\"a:b\");});}\n",
     {"MAIN.cnv:5: separator: a colon does not reach the value of A:CODE: it only separates"}},
};
INSTANTIATE_TEST_SUITE_P(Texts, Mistakes, testing::ValuesIn(kTextMistakes), nameOf);

// Code that stands in MAIN.cnv from line 4 on.
#define CODE(text) "DEF:COUNT(TYPE=INTEGER)\nDEF:B(TYPE=BEHAVIOUR)\nOBJECT=MAIN\nMAIN:ONINIT={ /\n" text "}\n"

const Mistake kCodeMistakes[] = {
    {"NoSuchObject",
     CODE("COUNT^INC(); /\nCUONT^INC();count^INC();^INC(); /\n *NONE^INC();"),
     {"MAIN.cnv:6: object: no object CUONT (did you mean COUNT?)",
      "MAIN.cnv:6: object: no object count (did you mean COUNT?)",
      "MAIN.cnv:6: object: no name stands before the ^", "MAIN.cnv:7: object: no object NONE"}},
    {"NoSuchMethod",
     CODE("COUNT^INCC();B^RUNS(COUNT^GETT()); /\n @LOPP({},0,1,1);THIS^NOSUCHMETHOD();B^PLAY();"),
     {"MAIN.cnv:5: method: COUNT (INTEGER) has no method INCC (did you mean INC?)",
      "MAIN.cnv:5: method: B (BEHAVIOUR) has no method RUNS (did you mean RUN?)",
      "MAIN.cnv:5: method: COUNT (INTEGER) has no method GETT (did you mean GET?)",
      "MAIN.cnv:6: method: no statement @LOPP (did you mean LOOP?)",
      "MAIN.cnv:6: method: no type has a method NOSUCHMETHOD",
      "MAIN.cnv:6: method: B (BEHAVIOUR) has no method PLAY"}},
    {"TooFewArguments",
     CODE("COUNT^SET();@INT(\"N\");MAIN^REMOVE(); /\n @WHILE(COUNT,<,3);COUNT^SET(,);"),
     {"MAIN.cnv:5: arguments: COUNT^SET needs at least 1 argument, not 0",
      "MAIN.cnv:5: arguments: @INT needs at least 2 arguments, not 1",
      "MAIN.cnv:5: arguments: MAIN^REMOVE needs at least 1 argument, not 0",
      "MAIN.cnv:6: arguments: @WHILE needs at least 4 arguments, not 3",
      "MAIN.cnv:6: arguments: COUNT^SET needs at least 1 argument, not 0"}},
    {"NoSemicolon",
     CODE("COUNT^INC(); /\n@IF(\"1'1\",{COUNT^INC()}); /\n COUNT^DEC()"),
     {"MAIN.cnv:6: statement: the last statement has no semicolon and is dropped: COUNT^INC()",
      "MAIN.cnv:7: statement: the last statement has no semicolon and is dropped: COUNT^DEC()"}},
    {"StatementsThatDoNothing",
     CODE("COUNT;COUNT.INC(); /\n [COUNT+1];THISCOUNT^INC();"),
     {"MAIN.cnv:5: statement: calls nothing: COUNT", "MAIN.cnv:5: statement: calls nothing: COUNT.INC()",
      "MAIN.cnv:6: statement: calls nothing: [COUNT+1]",
      "MAIN.cnv:6: statement: begins with THIS and so calls the sender, whatever follows: THISCOUNT^INC()"}},
    {"OpenBracket",
     CODE("COUNT^INC(); /\n COUNT^SET((1); /\n COUNT^INC();"),
     {"MAIN.cnv:6: brackets: a round bracket is not closed, and no statement behind it ends: "
      "COUNT^SET((1);COUNT^INC();"}},
    {"ClosedBracket",
     CODE("COUNT^INC(); /\n COUNT^SET(1)); /\n COUNT^INC();"),
     {"MAIN.cnv:6: brackets: a round bracket closes that none opened, and no statement behind it ends: "
      "COUNT^SET(1))"}},
    {"OtherBrackets",
     CODE("COUNT^INC;COUNT^SET([1+2);COUNT^SET(1)2; /\n @IF(\"1'1\",{COUNT^SET(1),COUNT^SET(2);}); /\n"
          "COUNT^SET(\"a,b\");COUNT^SET(a\");COUNT^SET([(1+2)]);"),
     {"MAIN.cnv:5: brackets: a call needs its round brackets: COUNT^INC",
      "MAIN.cnv:5: brackets: the square bracket is not closed: [1+2",
      "MAIN.cnv:5: brackets: does not end with the round bracket of its arguments: COUNT^SET(1)2",
      "MAIN.cnv:6: brackets: the braces around \"{COUNT^SET(1)\" are no pair",
      "MAIN.cnv:6: statement: the last statement has no semicolon and is dropped: COUNT^SET(1)",
      "MAIN.cnv:6: brackets: does not end with the round bracket of its arguments: COUNT^SET(2);}",
      "MAIN.cnv:7: brackets: the quotation marks are no pair (a comma outside of round brackets ends a "
      "text): "
      "\"a",
      "MAIN.cnv:7: brackets: the quotation marks are no pair (a comma outside of round brackets ends a "
      "text): "
      "a\"",
      "MAIN.cnv:7: statement: is no call (in square brackets round ones group nothing, and @ divides): (1"}},
    {"StatementInsideSquareBrackets",
     CODE("COUNT^SET([COUNT+@VALUE(\"B\")]);COUNT^SET([\"a(b)\"+1]);"),
     {"MAIN.cnv:5: statement: is no call (in square brackets round ones group nothing, and @ divides): "
      "VALUE(\"B\")"}},
    {"OperatorInsideRoundBrackets",
     CODE("COUNT^SET([COUNT^ADD(1-2)]);"),
     {"MAIN.cnv:5: brackets: does not end with the round bracket of its arguments: COUNT^ADD(1"}},
    {"Braces",
     "DEF:B(TYPE=BEHAVIOUR|CODE={B^RUN();)\nDEF:C(TYPE=BEHAVIOUR|CODE=B^RUN();})\n",
     {"MAIN.cnv:1: brackets: the braces around \"{B^RUN();\" are no pair",
      "MAIN.cnv:2: brackets: the braces around \"B^RUN();}\" are no pair"}},
    {"NoSuchCode",
     CODE("@IF(\"1'1\",\"BB\",B);@LOOP(COUNT,0,1,1);@LOOP(NONE,0,1,1); /\n @RUNONTIMER(1,1,B,\"MAIN\"); /\n"
          "MAIN^RUNCLONES(\"COUNT\",1,1,\"C\");"),
     {"MAIN.cnv:5: behaviour: no behaviour BB", "MAIN.cnv:5: behaviour: no behaviour NONE",
      "MAIN.cnv:6: behaviour: MAIN is no BEHAVIOUR", "MAIN.cnv:7: behaviour: no behaviour C"}},
    {"CodeInTexts",
     CODE("@IF(\"1'1\",\"{NONE^INC();}\");@IF(\"1'1\",\"COUNT^INCC();\"); /\n"
          "@IF(\"COUNT^GETT()'1&&[NONE^GET()+1]>2\",{});@WHILE(\"NONE^GET()\",_,1,{});"),
     {"MAIN.cnv:5: object: no object NONE",
      "MAIN.cnv:5: method: COUNT (INTEGER) has no method INCC (did you mean INC?)",
      "MAIN.cnv:6: method: COUNT (INTEGER) has no method GETT (did you mean GET?)",
      "MAIN.cnv:6: object: no object NONE"}},
    {"Tests",
     CODE("@IF(COUNT,=,5,B);@WHILE(COUNT,is,5,B); /\n @IF(\"COUNT?INTEGRE\",B);@IF(\"COUNT\",?,GROUP,B);"),
     {"MAIN.cnv:5: separator: an equals sign does not reach the value of MAIN:ONINIT: it only separates",
      "MAIN.cnv:5: operator: no such comparison: is",
      "MAIN.cnv:6: type: no type reads INTEGRE: the test never holds (did you mean INTEGER?)",
      "MAIN.cnv:6: type: no type reads GROUP: the test never holds (did you mean 3000?)"}},
    {"References",
     CODE("COUNT^ADD(&COUNTS);COUNT^ADD(&COUNT);COUNT^ADD(&5);"),
     {"MAIN.cnv:5: object: no object COUNTS to refer to (did you mean COUNT?)"}},
    {"Goto",
     CODE("GAME^GOTO(\"OTHR\");GAME^GOTO(OTHERR);GAME^GOTO(\"OTHER\");GAME^RUN(\"GAME\",\"GOTO\",\"X\");"),
     {"MAIN.cnv:5: object: GAME has no OTHR to go to (did you mean OTHER?)",
      "MAIN.cnv:5: object: GAME has no OTHERR to go to (did you mean OTHER?)"}},
    {"Load",
     CODE("CNVLOADER^LOAD(\"none.cnv\");"),
     {"MAIN.cnv:5: file: there is no definition file none.cnv"}},
};
INSTANTIATE_TEST_SUITE_P(Code, Mistakes, testing::ValuesIn(kCodeMistakes), nameOf);

TEST(Mistake, FieldsOfStructures) {
  EXPECT_THAT(
      findingsInMain(
          "OBJECT=S\nS:TYPE=STRUCT\nS:FIELDS=LEFT<INTEGER>,A_TOP<STRING>\nDEF:N(TYPE=INTEGER)\n"
          "OBJECT=MAIN\nMAIN:ONINIT={S|LEFT^INC();S|LEFTT^INC();S|LEFT^INCC();S|TOP^INC();N|X^INC(); /\n"
          "NONE|X^INC();N^SET(S|LEFTT);N^SET(a|b);N^SET(\"S|x\");}\n"),
      testing::UnorderedElementsAre(
          "MAIN.cnv:6: object: the structure has no field LEFTT (did you mean LEFT?)",
          "MAIN.cnv:6: method: S|LEFT (INTEGER) has no method INCC (did you mean INC?)",
          "MAIN.cnv:6: object: N is no STRUCT", "MAIN.cnv:7: object: no object NONE",
          "MAIN.cnv:7: object: the structure has no field LEFTT (did you mean LEFT?)"));
}

TEST(Mistake, LevelsOfTheGame) {
  EXPECT_THAT(
      findingsIn({{"Dane/application.def",
                   "OBJECT=GAME\nGAME:TYPE=APPLICATION\nGAME:SCENES=HALL,ROM\nGAME:STARTWIT=HALL\n"
                   "OBJECT=HALL\nHALL:TYPE=SCNE\nOBJECT=ROOM\nROOM:TYPE=SCENE\nROOM:ONINIT={}\nOBJECT=X\n"}}),
      testing::UnorderedElementsAre(
          "application.def:3: object: no episode or scene HALL for GAME:SCENES",
          "application.def:3: object: no episode or scene ROM for GAME:SCENES (did you mean ROOM?)",
          "application.def:4: property: STARTWIT is no property of APPLICATION (did you mean STARTWITH?)",
          "application.def:6: type: no level of a game has the TYPE SCNE (did you mean SCENE?)",
          "application.def:9: property: ONINIT is not read here: signals are bound in the file of ROOM",
          "application.def:10: definition: X has no TYPE: nothing is made of it"));
  EXPECT_THAT(findingsIn({{"Dane/application.def", "DEF:S(TYPE=SCENE)\n"}}),
              testing::ElementsAre(
                  "application.def:1: definition: no element has the TYPE APPLICATION: there is no game"));
}

TEST(Mistake, StandsInCodedTextAtItsPlainLine) {
  // Two lines of text in one of the file: "\nA:X=1" with the shifts +1 and -1.
  EXPECT_THAT(findingsInMain("{<C:2>}\n<E>B9Y<1<E>\n"),
              testing::ElementsAre("MAIN.cnv:2: definition: A: no element of this name"));
}

// What is right

// Names that only a run makes, and rules of scopes: nothing of it is a mistake.
TEST(RightGames, HaveNoFindings) {
  const std::vector<File> games[] = {
      // Locals, clones, results, timers, inline behaviours.
      {{"Dane/MAIN.cnv",
        "DEF:B(TYPE=BEHAVIOUR|CODE={@INT(\"N\",1);N^INC();@STRING(\"T$1\",x);TX^ADD(1);INNER^RUN();})\n"
        "DEF:INNER(TYPE=BEHAVIOUR|CODE={N^INC();__RETURN__^SET(1);@LOOP({_I_^SET(1);},0,2,1);})\n"
        "DEF:A(TYPE=INTEGER|ONINIT={A^CLONE(2);A_1^INC();A_2^CLONE();A_2_1^INC();A_0^INC();A_0_0^INC();})\n"
        "DEF:X(TYPE=STRING|ONCHANGED={beh_X_ONCHANGED^RUN();X^SET(@RUNONTIMER(1,1,{A^ADD(&1);},\"\"));*X^"
        "BREAK();})\n"}},
      // Names in variables, arguments and expressions.
      {{"Dane/MAIN.cnv",
        "DEF:NAME(TYPE=STRING)\nDEF:B(TYPE=BEHAVIOUR|CODE={*NAME^INC();*[\"A\"+NAME]^INC();$1^INC();A$1B^$2()"
        "; /\n"
        "$1;@IF(\"$1'1\",$2,$3);NAME^$1();NAME^SET($1);@IF($1);THIS^INC();})\n"}},
      {{"Dane/MAIN.cnv",
        "DEF:NAME(TYPE=STRING)\nOBJECT=MAIN\nMAIN:ONINIT={@INT(NAME,1);WHATEVER^INC();@LOOP(NAME,0,1,1);}"
        "\n"}},
      {{"Dane/MAIN.cnv",
        "DEF:I(TYPE=INTEGER)\nOBJECT=MAIN\nMAIN:ONINIT={@INT([\"N\"+I],1);N7^INC();@CREATE(\"IMAGE\",\"P$1\")"
        ";P3^SHOW(); /\n"
        "MAIN^CREATEOBJECT(\"BUTTON\",\"KNOB\");KNOB^ENABLE();MAIN^RUN(\"I\",\"CLONE\");I_1^INC();}\n"}},
      // Levels see what is above them; those above see the scene that is shown.
      {{"Dane/application.def",
        "DEF:GAME(TYPE=APPLICATION|EPISODES=E)\nDEF:E(TYPE=EPISODE|SCENES=S|STARTWITH=S)\nDEF:S(TYPE=SCENE)"
        "\n"},
       {"Dane/GAME.cnv", "DEF:TOP(TYPE=BEHAVIOUR|CODE={BOTTOM^INC();E^NEXT();S^PAUSE();})\n"},
       {"Dane/E.cnv", "DEF:MIDDLE(TYPE=BEHAVIOUR|CODE={BOTTOM^INC();TOP^RUN();GAME^EXIT();})\n"},
       {"Dane/S.cnv",
        "DEF:BOTTOM(TYPE=INTEGER|ONCHANGED=TOP|ONINIT=MIDDLE)\nOBJECT=S\nS:ONINIT={E^GOTO(\"S\");S^PAUSE();"
        "GAME^EXIT(); /\n"
        "RANDOM^GET(5);SYSTEM^GETDAY();CNVLOADER^RELEASE(\"x.cnv\");}\n"}},
      // Classes see their bases and the code that makes them; instances answer with their behaviours.
      {{"COMMON/CLASSES/base.cnv", "DEF:M(TYPE=BEHAVIOUR|CODE={OUTSIDE^INC();})\n"},
       {"COMMON/CLASSES/car.cnv",
        "DEF:M(TYPE=BEHAVIOUR|CODE={SUPER_M^RUN();THIS^OTHERM();INMAIN^INC();})\nDEF:OTHERM(TYPE=BEHAVIOUR|"
        "ONINIT=M)\n"
        "DEF:P(TYPE=INTEGER|ONINIT={beh_ONE_P_ONINIT^RUN();})\n"},
       {"Dane/GAME.cnv", "DEF:CAR(TYPE=CLASS|DEF=car.cnv|BASE=base.cnv)\nDEF:OUTSIDE(TYPE=INTEGER)\n"},
       {"Dane/MAIN.cnv",
        "DEF:INMAIN(TYPE=INTEGER|ONINIT={CAR^NEW(\"ONE\",1);ONE^M();ONE^OTHERM(1);CAR^DELETE(\"ONE\");})\n"
        "DEF:G(TYPE=GROUP|ONINIT={G^ADD(\"ONE\");G^M();G^INC();*G^M();})\n"}},
      {{"COMMON/CLASSES/car.cnv", "DEF:M(TYPE=BEHAVIOUR|CODE={INMAIN^INC();})\n"},
       {"Dane/GAME.cnv", "DEF:CAR(TYPE=CLASS|DEF=car.cnv)\n"},
       {"Dane/MAIN.cnv",
        "DEF:N(TYPE=STRING|VALUE=CAR)\nDEF:INMAIN(TYPE=INTEGER|ONINIT={*N^NEW(\"ONE\");ONE^M();*N^NEW(N);TWO^"
        "M();})\n"}},
      // Loaded files bring their names; one that is loaded by a computed name may be any.
      {{"Dane/MAIN.cnv",
        "DEF:B(TYPE=BEHAVIOUR|CODE={CNVLOADER^LOAD(\"more.cnv\");MORE^INC();more.cnv^GETSIZE();BROUGHT^INC();"
        "})\n"},
       {"Dane/more.cnv", "DEF:MORE(TYPE=INTEGER|ONINIT={B^RUN();@INT(\"BROUGHT\",1);})\n"}},
      {{"Dane/MAIN.cnv", "DEF:B(TYPE=BEHAVIOUR|CODE={CNVLOADER^LOAD(\"$1.cnv\");MORE^INC();})\n"},
       {"Dane/parts/more.cnv", "DEF:MORE(TYPE=INTEGER|ONINIT={B^RUN();})\n"}},
      // Modules may make anything.
      {{"Dane/application.def", "DEF:GAME(TYPE=APPLICATION|SCENES=S)\nDEF:S(TYPE=SCENE|DLLS=module)\n"},
       {"Dane/S.cnv", "DEF:A(TYPE=SPECIAL|WHATEVER=1|ONINIT={B^FLY();A^FLY();})\n"}},
      // Types whose tables are not there yet may have any property and method.
      {{"Dane/MAIN.cnv",
        "DEF:A(TYPE=ANIMO|FILENAME=a.ann|ONCLICK={A^PLAY(\"X\");G^PLAY(\"X\");THIS^PLAY();})\nDEF:G(TYPE="
        "GROUP)\n"}},
      // Brackets in texts, several lines, comments, the ignored tail.
      {{"Dane/MAIN.cnv",
        "DEF:T(TYPE=STRING|VALUE=(:)\nOBJECT=MAIN\nMAIN:ONINIT={T^SET(\"[\");T^SET(\"}\");T^SET(\"a;b\");T^"
        "SET({a});T^"
        "SET(-1); /\n"
        "@IF(\"T'x||T<y&&T>'z\",{});@IF(T,!_,\"x\",{T^SET(1);},{});@IF(\"1'1\",);}\n! "
        "/\nno:line;counts=/\n"}},
  };
  for (const std::vector<File>& game : games) {
    EXPECT_THAT(findingsIn(game), testing::IsEmpty()) << game.back().content;
  }
}

TEST(RightGames, AreNotRightInAnotherScope) {
  EXPECT_THAT(
      findingsIn({{"Dane/MAIN.cnv", "DEF:HERE(TYPE=INTEGER|ONINIT={THERE^INC();})\n"},
                  {"Dane/OTHER.cnv", "DEF:THERE(TYPE=INTEGER|ONINIT={HERE^INC();@INT(\"LOCAL\",1);})\n"},
                  {"Dane/GAME.cnv", "DEF:A(TYPE=INTEGER|ONINIT={HERE^INC();THERE^INC();LOCAL^INC();})\n"}}),
      testing::ElementsAre("MAIN.cnv:1: object: no object THERE (did you mean HERE?)",
                           "OTHER.cnv:1: object: no object HERE (did you mean THERE?)"));
}

TEST(ClassCode, IsCheckedInTheScopesThatUseIt) {
  EXPECT_THAT(
      findingsIn(
          {{"COMMON/CLASSES/c.cnv",
            "DEF:M(TYPE=BEHAVIOUR|CODE={INMAIN^INC();INOTHER^INC();NOWHERE^INC();THIS^NONE();})\n"},
           {"Dane/MAIN.cnv", "DEF:C(TYPE=CLASS|DEF=c.cnv)\nDEF:INMAIN(TYPE=INTEGER)\n"},
           {"Dane/OTHER.cnv",
            "DEF:C(TYPE=CLASS|DEF=c.cnv)\nDEF:INOTHER(TYPE=INTEGER|ONINIT={C^NEW(\"I\");I^MM();})\n"}}),
      testing::UnorderedElementsAre("c.cnv:1: object: no object NOWHERE",
                                    "c.cnv:1: method: THIS (CLASS) has no method NONE",
                                    "OTHER.cnv:2: method: I (CLASS) has no method MM"));
}

TEST(LoadedFiles, BindInTheirOrder) {
  EXPECT_THAT(findingsIn({{"Dane/MAIN.cnv", "DEF:B(TYPE=BEHAVIOUR|CODE={CNVLOADER^LOAD(\"m.cnv\");})\n"},
                          {"Dane/m.cnv",
                           "DEF:A(TYPE=INTEGER|ONINIT=LATER)\nDEF:LATER(TYPE=BEHAVIOUR)\n"
                           "DEF:C(TYPE=INTEGER|ONINIT=LATER)\n"}}),
              testing::ElementsAre(
                  "m.cnv:1: behaviour: A:ONINIT: LATER is defined further down: here it is not there yet"));
}

TEST(Languages, EachHaveTheirFiles) {
  const std::vector<File> game = {{"Dane/MAIN.cnv", "DEF:A(TYPE=BOLL)\n"},
                                  {"Dane/POL/MAIN.cnv", "\nDEF:A(TYPE=BUL)\n"},
                                  {"Dane/CZE/left.cnv", "\n\nDEF:A(TYPE=BLO)\n"}};
  EXPECT_THAT(findingsIn(game), testing::ElementsAre("left.cnv:3: type: no TYPE BLO",
                                                     "MAIN.cnv:1: type: no TYPE BOLL (did you mean BOOL?)",
                                                     "MAIN.cnv:2: type: no TYPE BUL"));
  EXPECT_THAT(findingsIn(game, {.languages = {"POL"}}),
              testing::ElementsAre("MAIN.cnv:2: type: no TYPE BUL"));
  EXPECT_THAT(findingsIn(game, {.languages = {"XXX"}}),
              testing::ElementsAre(testing::HasSubstr("no such language")));
}

TEST(FilesThatNothingNames, AreCheckedWithAllNamesInSight) {
  EXPECT_THAT(findingsIn({{"Dane/MAIN.cnv", "DEF:A(TYPE=INTEGER)\n"},
                          {"Dane/old/spare.cnv",
                           "OBJECT=spare\nspare:ONINIT={A^INC();B^INC();C^INC();}\nDEF:C(TYPE=BOOL)\n"}}),
              testing::ElementsAre("spare.cnv:2: object: no object B"));
}

std::string figure() {
  AnnFile made;
  for (const char* name : {"GO", "SAY_1", "SAY_STOP"}) made.events.emplace_back().name = name;
  const std::vector<std::byte> bytes = writeAnn(made);
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST(Texts, HaveTheirCodesChecked) {
  const char* scene =
      "DEF:LETTERS(TYPE=FONT|DEF_PLAIN_STANDARD_9=a.fnt|DEF_PLAIN_Bold_9=b.fnt)\n"
      "DEF:A(TYPE=TEXT|FONT=LETTERS|TEXT=<B>a<B> 1<2 <COLOR 9>b<COLOR> <E,20,x>)\n"
      "DEF:B(TYPE=TEXT|FONT=LETTERS|TEXT=a <I>b<I> <COLOUR 9>c)\n"
      "DEF:C(TYPE=TEXT|TEXT=a <I>b <bold>c)\n";
  EXPECT_THAT(findingsIn({{"Dane/MAIN.cnv", scene}}),
              testing::UnorderedElementsAre(
                  "MAIN.cnv:3: markup: B:TEXT: <I> has no effect: the font has no style ITALIC",
                  "MAIN.cnv:3: markup: B:TEXT: no code <COLOUR 9>: it vanishes from the text",
                  "MAIN.cnv:4: markup: C:TEXT: no code <bold>: it vanishes from the text"));
}

TEST(Sequences, AreReadWithTheFilesThatTheyName) {
  const char* scene =
      "DEF:FIGURE(TYPE=ANIMO|FILENAME=figure.ann)\nDEF:VOICE(TYPE=SOUND|FILENAME=a.wav)\n"
      "DEF:S(TYPE=SEQUENCE|FILENAME=tale.seq)\nDEF:T(TYPE=SEQUENCE|FILENAME=none.seq)\n"
      "DEF:U(TYPE=SEQUENCE|FILENAME=lost.seq)\n";
  const char* tale =
      "# right\nNAME=tale\ntale:TYPE=SEQUENCE\r\ntale:SEQEVENT=E=1\ntale:3=4\nNAME=a\na:FILENAME=FIGURE\n"
      "a:EVENT=go\na:TYPE=SIMPLE\na:ADD=tale\nNAME=b\nb:TYPE=SPEAKING\nb:ANIMOFN=figure.ann\nb:WAVFN=VOICE\n"
      "b:PREFIX=SAY\nb:ENDING=TRUE\nb:ADD=tale\n";
  const char* wrong =
      "NAME=c\nc:FILENAME=FIGURE\nc:EVENT=GOO\nc:TYPE=SIMPLE\nc:EVENT=1\nc:WAIT=NO\nc:COLOR=1\nd:TYPE="
      "SIMPLE\n"
      "c:ADD=talk\nNAME=c\nNAME=e\ne:WAIT=TRUE\nNAME=f\nf:TYPE=SPEAKING\nf:WAVFN=b.wav\nf:ANIMOFN=FIGURE\n"
      "f:STARTING=TRUE\nf:ENDING=TRUE\nf:ADD=c\nNAME=g\ng:FILENAME=h.ann\ng:TYPE=SIMPLE\nNAME=i\n"
      "i:FILENAME=x.txt\ni:TYPE=SIMPEL\ni:TYPE=SIMPLE\nNAME\n";
  EXPECT_THAT(
      findingsIn({{"Dane/MAIN.cnv", scene},
                  {"Dane/tale.seq", tale},
                  {"Dane/lost.seq", wrong},
                  {"Dane/figure.ann", figure()},
                  {"Wavs/a.wav", "x"}}),
      testing::UnorderedElementsAre(
          "MAIN.cnv:4: file: T:FILENAME: there is no file none.seq",
          "lost.seq:1: definition: nothing plays: there is no element lost, the file's name",
          "lost.seq:3: event: c: FIGURE has no event GOO (did you mean GO?)",
          "lost.seq:5: definition: c:EVENT has no effect: it must stand before the TYPE",
          "lost.seq:6: property: c: the value NO has no effect", "lost.seq:7: property: c: no key COLOR",
          "lost.seq:8: definition: d: no element of this name",
          "lost.seq:9: object: c:ADD: no element talk yet",
          "lost.seq:10: definition: c: there is an element of this name already",
          "lost.seq:11: definition: e has no TYPE: nothing is made of it",
          "lost.seq:12: definition: e:WAIT has no effect: it must stand behind the TYPE",
          "lost.seq:15: file: f:WAVFN: there is no sound b.wav",
          "lost.seq:16: event: f: FIGURE has no event to talk with, whose name begins with a digit",
          "lost.seq:16: event: f: FIGURE has no event START for STARTING",
          "lost.seq:16: event: f: FIGURE has no event END for ENDING",
          "lost.seq:19: object: f:ADD: c is no SEQUENCE and has no children",
          "lost.seq:22: file: g: there is no animation h.ann",
          "lost.seq:25: property: i: the value SIMPEL has no effect (did you mean SIMPLE?)",
          "lost.seq:26: object: i: x.txt is no ANIMO, and no ANN or WAV file",
          "lost.seq:27: definition: NAME without a name"));
}

// Bad input

TEST(BadInput, WithoutAGameIsAFailure) {
  const TemporaryFolder folder;
  EXPECT_THAT(run({.dataRoot = "/no/such/folder"}).failure,
              testing::HasSubstr("/no/such/folder: no such folder"));
  EXPECT_THAT(run({.dataRoot = folder.path().string()}).failure,
              testing::HasSubstr("no Dane/application.def"));
  folder.write("file", "");
  EXPECT_THAT(run({.dataRoot = (folder.path() / "file").string()}).failure,
              testing::HasSubstr("no such folder"));
}

TEST(BadInput, GarbageEndsCleanly) {
  constexpr std::string_view kMeaningful = "OBJECT=A\nDEF:{}()[]\"|^@*&$1;,'/:=THIS";
  std::mt19937 random(1);
  for (int round = 0; round < 20; ++round) {
    std::string garbage;
    for (int i = 0; i < 20000; ++i) {
      const bool isMeaningful = random() % 3 != 0;
      garbage += isMeaningful ? kMeaningful[random() % kMeaningful.size()] : static_cast<char>(random());
    }
    findingsIn({{"Dane/MAIN.cnv", "OBJECT=MAIN\nMAIN:ONINIT={" + garbage}, {"Dane/OTHER.cnv", garbage}});
    findingsIn({{"Dane/application.def", garbage}});
  }
}

TEST(BadInput, LongAndDeepTextEndsCleanly) {
  const auto repeat = [](const char* text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
  };
  EXPECT_THAT(findingsInMain(std::string(64 << 20, 'x')),
              testing::UnorderedElementsAre(testing::HasSubstr("MAIN.cnv:1: limit: "),
                                            testing::HasSubstr("MAIN.cnv:1: definition: ")));
  EXPECT_THAT(findingsInMain(std::string((64 << 20) + 1, 'x')),
              testing::ElementsAre(testing::HasSubstr("MAIN.cnv:1: limit: is too large")));
  const std::string deep[] = {repeat("[", 100000),
                              repeat("A^B(", 100000),
                              repeat("@IF(1,{", 100000),
                              repeat("{", 100000),
                              repeat("\"{", 100000),
                              repeat("[[1]+", 50000),
                              repeat("@IF(\"1'1\",{", 150) + repeat("});", 150)};
  for (const std::string& text : deep) findingsInMain("OBJECT=MAIN\nMAIN:ONINIT={" + text + "}\n");
  findingsInMain(repeat("a/\n", 1000000));
  EXPECT_EQ(findingsInMain(repeat("nobody:is=1\n", 100000)).size(), Findings::kMost);
}

TEST(BadInput, ManyOfOneKindEndSoon) {
  std::string names;
  std::string patterns;
  std::string levels = "DEF:GAME(TYPE=APPLICATION|SCENES=";
  for (int i = 0; i < 20000; ++i) {
    const std::string number = std::to_string(i);
    names += "DEF:A(TYPE=INTEGER)\n";
    patterns +=
        "DEF:B" + number + "(TYPE=BEHAVIOUR|CODE={@INT(\"N" + number + "$1\",1);C" + number + "^INC();})\n";
    levels += "S" + number + ",";
  }
  findingsIn({{"Dane/MAIN.cnv", names}, {"Dane/OTHER.cnv", patterns}});
  levels += ")\n";
  for (int i = 0; i < 20000; i += 2) levels += "DEF:S" + std::to_string(i) + "(TYPE=SCENE)\n";
  EXPECT_EQ(findingsIn({{"Dane/application.def", levels}}).size(), Findings::kMost);
}

TEST(BadInput, CyclesEndCleanly) {
  const std::vector<File> game = {
      {"COMMON/CLASSES/a.cnv",
       "DEF:B(TYPE=CLASS|DEF=b.cnv|BASE=a.cnv)\nDEF:M(TYPE=BEHAVIOUR|CODE={B^NEW(\"X$1\");X1^M();})\n"},
      {"COMMON/CLASSES/b.cnv",
       "DEF:A(TYPE=CLASS|DEF=a.cnv|BASE=b.cnv,b.cnv)\nDEF:M(TYPE=BEHAVIOUR|CODE={A^NEW(\"Y\");Y^M();})\n"},
      {"Dane/MAIN.cnv",
       "DEF:A(TYPE=CLASS|DEF=a.cnv)\nDEF:B(TYPE=BEHAVIOUR|CODE={CNVLOADER^LOAD(\"MAIN.cnv\");CNVLOADER^LOAD("
       "\"x.cnv\");})\n"},
      {"Dane/x.cnv",
       "DEF:C(TYPE=BEHAVIOUR|CODE={CNVLOADER^LOAD(\"MAIN.cnv\");CNVLOADER^LOAD(\"x.cnv\");A^NEW(\"Z\");Z^M();"
       "})\n"},
      {"Dane/application.def",
       "DEF:GAME(TYPE=APPLICATION|EPISODES=E,F|SCENES=GAME)\nDEF:E(TYPE=EPISODE|SCENES=E F "
       "MAIN|STARTWITH=MAIN)\n"
       "DEF:F(TYPE=EPISODE|SCENES=E,MAIN|STARTWITH=MAIN)\nDEF:MAIN(TYPE=SCENE|SCENES=E)\n"}};
  EXPECT_THAT(findingsIn(game),
              testing::ElementsAre("application.def:4: property: SCENES is no property of SCENE"));
}

TEST(BadInput, LinkedFoldersEndCleanly) {
  const TemporaryFolder folder;
  folder.write("Dane/application.def", kApplication);
  std::filesystem::create_directory_symlink(folder.path() / "Dane", folder.path() / "Dane" / "a");
  std::filesystem::create_directory_symlink(folder.path() / "Dane", folder.path() / "Dane" / "b");
  const Outcome outcome = run({.dataRoot = folder.path().string()});
  EXPECT_EQ(outcome.files.size(), 1U);
}

// Parts

TEST(Nearest, GivesTheNearestNameThatIsNearEnough) {
  Nearest::beginRun();
  const auto nearest = [](const char* word) {
    Nearest search(word);
    for (const char* name : {"COUNT", "COUNTER", "MOUNT", "N", "Score", "SECONDTIMER"}) search.consider(name);
    return search.name();
  };
  EXPECT_EQ(nearest("CONUT"), "COUNT");  // a swap is one mistake
  EXPECT_EQ(nearest("COUNTE"), "COUNT");
  EXPECT_EQ(nearest("score"), "Score");
  EXPECT_EQ(nearest("SCENDTMER"), "SECONDTIMER");
  EXPECT_EQ(nearest("M"), "");
  EXPECT_EQ(nearest("COUNT"), "MOUNT");  // the word itself is no help
  EXPECT_EQ(nearest("XXXXX"), "");
}

TEST(Findings, AreOneLineAndValidJson) {
  Findings findings;
  EXPECT_EQ(asJson(findings), "[]");
  findings.add({"a\"b\\c.cnv", 0, Kind::object, "\xB9\n", "no \"\x01\"", ""});
  findings.add({"a\"b\\c.cnv", 0, Kind::object, "\xB9\n", "no \"\x01\"", ""});
  EXPECT_EQ(asLine(*findings.list().begin()), "a\"b\\c.cnv:1: object: no \"?\"");
  EXPECT_EQ(
      asJson(findings),
      "[\n {\"file\": \"a\\\"b\\\\c.cnv\", \"line\": 1, \"kind\": \"object\", \"object\": \"\xC4\x85?\", "
      "\"text\": \"no \\\"?\\\"\", \"suggestion\": \"\"}\n]");
}

}  // namespace

}  // namespace footlight::check
