// Sequences as scripts see them: which element starts and ends in which tick.

#include <gtest/gtest.h>

#include "app/mc_scene.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/random.h"
#include "objects/gfx/mc_animo.h"
#include "objects/sound/mc_sequence.h"
#include "sequence/sequence_parameter.h"
#include "sequence/sequenced_playable.h"
#include "support/sequence_stage.h"

namespace footlight {
namespace {

using test::leaf;
using test::node;
using test::sound;
using test::speaker;
using test::Stage;

struct Course {
  const char* what;
  std::string text;
  std::string code;
  std::string heard;
};

void expectHeard(const std::vector<Course>& courses, int ticks = 60) {
  for (const Course& course : courses) {
    SCOPED_TRACE(course.what);
    EXPECT_EQ(Stage(course.text).run(course.code).ticks(ticks).heard(), course.heard);
  }
}

const std::string kPlay = "S^PLAY(\"E\");";

// A sound ends with the tick behind its last sample, an animation with its last step; what comes next starts
// in the same call. The parent hears of an end before the script does.
TEST(Sequence, HandsOverToTheTick) {
  const std::string three = sound("a", "A") + leaf("b", "FIGURE.ANN", "GO") + sound("c", "C");
  const std::string missing = sound("a", "NONE") + sound("b", "NONE2") + sound("c", "C");
  expectHeard({
      {"sound, picture, sound", node("S") + three, kPlay, "0<+a 7+b-a 13+c-b 20>-c"},
      {"no children", node("S"), kPlay, "0<"},
      {"nothing at all", "NAME=a\na:TYPE=SEQUENCE\n", kPlay, ""},
      {"a node within",
       node("S") + node("n", "SEQUENCE", "S") + sound("a", "A", "n") + leaf("b", "FIGURE", "GO", "n") +
           sound("c", "C"),
       kPlay, "0<+n+a 7+b-a 13+c-n-b 20>-c"},
      {"missing sounds go with the clock", node("S") + missing, kPlay, "0< 13+c 20>-c"},
      {"a missing sound at the end says nothing", node("S") + sound("a", "A") + sound("b", "NONE"), kPlay,
       "0<+a 7-a"},
      {"an event by its number, in the file's name's place an object",
       node("S") + leaf("a", "FIGURE", "3") + leaf("b", "FIGURE", "start"), kPlay, "0<+a 9+b-a 19>-b"},
      {"an event that is not there, and one without frames",
       node("S") + leaf("a", "FIGURE", "99") + leaf("b", "FIGURE", "EMPTY") + sound("c", "C"), kPlay,
       "0<+a 6+b 13+c 20>-c"},
      {"two elements of one file are one sound, of the last one's name",
       node("S") + sound("a", "A") + sound("b", "A"), kPlay, "0<+b 7+b-b 14>-b"},
  });
}

TEST(Sequence, StartsTogetherUpToTheFirstThatIsWaitedFor) {
  const std::string rest = sound("b", "B") + sound("c", "C");
  expectHeard({
      {"the first", node("S") + sound("a", "A") + "a:WAIT=FALSE\n" + rest, kPlay, "0<+a+b 7-a 13+c-b 20>-c"},
      {"all", node("S") + sound("a", "A") + "a:WAIT=FALSE\n" + sound("b", "B") + "b:WAIT=FALSE\n", kPlay,
       "0<+a+b 7-a 13>-b"},
      {"another word waits", node("S") + sound("a", "A") + "a:WAIT=NO\n" + rest, kPlay,
       "0<+a 7+b-a 20+c-b 27>-c"},
      {"only at the begin of a run",
       node("S") + sound("a", "A") + sound("b", "B") + "b:WAIT=FALSE\n" + sound("c", "C"), kPlay,
       "0<+a 7+b-a 20+c-b 27>-c"},
  });
}

TEST(Sequence, GoesByParametersAndByChance) {
  const std::string choice = node("S", "PARAMETER") + sound("a", "A") + node("n", "PARAMETER", "S") +
                             sound("b", "B", "n") + sound("c", "C", "n");
  const std::string events = "S:SEQEVENT=E=22\nS:SEQEVENT=F=1\nS:SEQEVENT=T=xX\nS:SEQEVENT=G=0\n";
  const std::string byTwo = node("S") + "S:SEQEVENT=E=21\n" + node("n", "PARAMETER", "S") +
                            sound("a", "A", "n") + sound("b", "B", "n") + node("m", "PARAMETER", "S") +
                            sound("c", "C", "m") + sound("d", "D", "m");
  expectHeard({
      {"two levels", choice + events, kPlay, "0<+n+c 7>-n-c"},
      {"one level", choice + events, "S^PLAY(\"f\");", "0<+a 7>-a"},
      {"before the first", choice + events, "S^PLAY(\"G\");", "0<"},
      {"no such event", choice + events, "S^PLAY(\"NONE\");", "0<"},
      {"no event", choice + events, "S^PLAY();", "0<"},
      {"another parameter", choice + events, "S^PLAY(\"E\",\"21\");", "0<+n+b 13>-n-b"},
      {"behind the last", choice + events, "S^PLAY(\"E\",\"3\");", "0<"},
      {"numbers of an array", choice + events, "LIST^ADD(1);LIST^ADD(0);S^PLAY(\"T\",\"LIST\");",
       "0<+n+b 13>-n-b"},
      {"a longer array", choice + events, "LIST^ADD(1,1,0,7);S^PLAY(\"T\",\"LIST\");", "0<+n+c 7>-n-c"},
      {"an array shorter than the text leaves the rest", choice + events,
       "LIST^ADD(0);S^PLAY(\"T\",\"LIST\");", "0<+a 7>-a"},
      {"an array for an event without places", choice + events, "LIST^ADD(9);S^PLAY(\"F\",\"LIST\");",
       "0<+a 7>-a"},
      {"another object is a text", choice + events, "S^PLAY(\"E\",\"FIGURE\");", "0<"},
      {"what a child leaves is the next one's", byTwo, kPlay, "0<+n+b 13+m+c-n-b 20>-m-c"},
      {"by chance one", node("S", "RANDOM") + sound("a", "A"), kPlay, "0<+a 7>-a"},
      {"by chance none", node("S", "RANDOM"), kPlay, "0<"},
  });
}

TEST(SequenceParameter, CountsFromDigitsToLetters) {
  constexpr std::pair<char, int> kPlaces[] = {{'1', 0},  {'9', 8},  {'A', 9},  {'Z', 34},
                                              {'a', 35}, {'0', -1}, {' ', -17}};
  for (const auto& [character, place] : kPlaces) EXPECT_EQ(sequence_parameter::decode(character), place);
  constexpr std::pair<int, char> kCharacters[] = {{0, '1'}, {8, '9'}, {9, 'A'}, {33, 'Y'}, {34, 'a'}};
  for (const auto& [place, character] : kCharacters) EXPECT_EQ(sequence_parameter::encode(place), character);
}

TEST(SequenceText, IsReadInEveryWayOfSeparating) {
  const std::string plain = node("S") + sound("a", "A");
  expectHeard({
      {"blanks", "NAME S\nS TYPE SEQUENCE\nNAME a\na FILENAME A.WAV\na TYPE SIMPLE\na ADD S\n", kPlay,
       "0<+a 7>-a"},
      {"mixed, with line ends of two bytes",
       "NAME:S\r\n=S==TYPE: SEQUENCE\r\nNAME=a\r\na=FILENAME:A.WAV\r\na TYPE:SIMPLE\r\na:ADD=S", kPlay,
       "0<+a 7>-a"},
      {"comments, unknown elements and keys, numbers, a second declaration",
       "# a:TYPE\n" + node("S") + "b:TYPE=SIMPLE\nS:COLOUR=1\nS:12=3\nS:SEQUENCE=x\nNAME=S\n" +
           sound("a", "A"),
       kPlay, "0<+a 7>-a"},
      {"words in another case",
       node("S") + sound("a", "A") + "a:wait=FALSE\na:WAIT=false\nS:mode=RANDOM\n" + sound("b", "B"), kPlay,
       "0<+a 7+b-a 20>-b"},
      {"a file behind the type is too late",
       node("S") + "NAME=a\na:TYPE=SIMPLE\na:FILENAME=A.WAV\na:ADD=S\n" + sound("c", "C"), kPlay,
       "0<+c 7>-c"},
      {"the usual parent",
       "NAME=ROOT\nROOT:TYPE=SEQUENCE\n" + sound("a", "A", "") + "a:ADD\n" + node("S") + "ROOT:ADD=S\n",
       kPlay, "0<+a 7>-a"},
      {"a mode that is none", node("S", "SEQUENCE") + "S:MODE=ANY\n" + sound("a", "A"), kPlay, "0<+a 7>-a"},
      {"twice the same", plain + "a:ADD=S\n", kPlay, "0<+a 7+a-a 14>-a"},
      {"a ring", plain + node("n", "SEQUENCE", "S") + sound("b", "B", "n") + "S:ADD=n\nn:ADD=n\n", kPlay,
       "0<+a 7+n+b-a 20>-n-b"},
      {"a root that is a sound", sound("S", "A", ""), kPlay, "0< 7>"},
  });
}

TEST(Sequence, IsStoppedHeldAndAsked) {
  const std::string two = node("S") + sound("a", "B") + leaf("b", "FIGURE", "GO");
  const std::string nested = node("S") + node("n", "SEQUENCE", "S") + sound("a", "B", "n");
  {
    Stage stage(two);
    EXPECT_EQ(stage.run(kPlay).ticks(3).run("S^STOP();").ticks(9).heard(), "0<+a 4>-a");
    EXPECT_EQ(stage.run("S^STOP();").ticks(9).heard(), "0<+a 4>-a") << "what does not play is not stopped";
  }
  EXPECT_EQ(Stage(nested).run(kPlay).ticks(3).run("S^STOP(FALSE);").ticks(9).heard(), "0<+n+a");
  EXPECT_EQ(Stage(two).run(kPlay).ticks(15).run("S^STOP();").ticks(9).heard(), "0<+a 13+b-a 15>-b");
  {
    Stage stage(nested);
    stage.run(kPlay).ticks(5).run("S^PAUSE();").ticks(30);
    EXPECT_EQ(stage.run("SAID^SET(S^ISPLAYING());").text("SAID"), "TRUE");
    EXPECT_EQ(stage.run("S^RESUME();").ticks(30).heard(), "0<+n+a 43>-n-a");
  }
  {
    Stage stage(nested);
    stage.run(kPlay).ticks(5).run("S^PAUSE();S^STOP();").ticks(5);
    EXPECT_EQ(stage.run(kPlay).ticks(30).heard(), "0<+n+a 6-a 10<+n+a 23>-n-a") << "no part is held any more";
  }
  Stage stage(nested);
  const std::string ask =
      "SAID^SET(S^GETPLAYING());SAID^ADD(\"_\");SAID^ADD(S^GETEVENTNAME());SAID^ADD(\"_\");"
      "SAID^ADD(S^GETEVENTNAME(\"\"));SAID^ADD(\"_\");SAID^ADD(S^GETEVENTNAME(\"n\"));SAID^ADD(\"_\");"
      "SAID^ADD(S^GETEVENTNAME(\"x\"));SAID^ADD(S^ISPLAYING());";
  EXPECT_EQ(stage.run(ask).text("SAID"), "____FALSE");
  EXPECT_EQ(stage.run(kPlay + ask).text("SAID"), "a_E_a_a_TRUE");
  EXPECT_EQ(stage.ticks(20).run(ask).text("SAID"), "_E___FALSE");
}

TEST(Sequence, IsStoppedByItsOwnSignals) {
  const std::string three =
      node("S") + node("n", "SEQUENCE", "S") + sound("a", "A", "n") + sound("b", "B", "n") + sound("c", "C");
  const auto with = [&](const char* signal, const char* code) {
    Stage stage(three, std::string("S:") + signal + "={LOG^ADD(\"*\");" + code + "}\n");
    return stage.run(kPlay).ticks(60).heard();
  };
  EXPECT_EQ(with("ONSTARTED", "S^STOP();"), "0*") << "before the first child";
  EXPECT_EQ(with("ONSTARTED^A", "S^STOP();"), "0<+n* 1>-n-a");
  EXPECT_EQ(with("ONSTARTED^N", "S^STOP();"), "0<*");
  EXPECT_EQ(with("ONFINISHED^A", "S^STOP();"), "0<+n+a 7+b*>-n-b");
  EXPECT_EQ(with("ONFINISHED^A", "MAIN^REMOVE(\"S\");"), "0<+n+a 7+b*");
  EXPECT_EQ(with("ONSTARTED^B", "MAIN^REMOVE(\"S\");"), "0<+n+a 7*");
  EXPECT_EQ(with("ONSTARTED^N", "MAIN^REMOVE(\"S\");"), "0<*");
}

TEST(Sequence, ShowsAndPlacesWhatIsBelow) {
  Stage stage(node("S") + node("n", "SEQUENCE", "S") + leaf("a", "FIGURE", "GO", "n") +
              leaf("b", "FIGURE.ANN", "GO") + leaf("c", "FIGURE", "1"));
  stage.run("S^PAUSE();");
  const auto* object = stage.world().scene()->CMC_ObjectsContainer::find<CMC_Sequence>("S");
  auto* root = dynamic_cast<CSequencedPlayable*>(object->getLoadedSequence());
  ASSERT_NE(root, nullptr);
  const auto animations = root->getAllAnimations();
  ASSERT_EQ(animations.size(), 2U) << "each once";
  EXPECT_EQ(root->getAllOfType(6).size(), 3U);
  for (const char* code : {"S^HIDE();", "S^SHOW();", "S^HIDE();"}) {
    stage.run(code);
    for (const CAnimo* animation : animations)
      EXPECT_EQ(animation->isVisible(), std::string_view(code) == "S^SHOW();");
  }
  root->move(5, 7);
  EXPECT_EQ(root->getPosition(1), CXPoint(5, 7));
  EXPECT_EQ(root->getBoundingBox(0), CXRect()) << "none plays";
  root->setPosition(9, 9);
  EXPECT_EQ(animations[0]->GetPosition(), CXPoint(5, 7)) << "leaves have no place of their own";
  root->addEvent("P", "12");
  EXPECT_EQ(root->get("P")->getName(), "a");
  EXPECT_EQ(root->get("NONE"), root);
  for (const auto& [to, current] : {std::pair{CSequencedPlayable::kLast, 2},
                                    {CPlayable::kPrevious, 1},
                                    {CPlayable::kNext, 2},
                                    {CPlayable::kNext, -1},
                                    {CSequencedPlayable::kFirst, 0},
                                    {7, -1},
                                    {CPlayable::kPrevious, -1}}) {
    root->seek(to);
    EXPECT_EQ(root->getCurrent(), current) << to;
  }
}

TEST(Sequence, LosesWhatScriptsTakeAway) {
  const std::string text = node("S") + leaf("a", "FIGURE", "GO") + sound("b", "B");
  EXPECT_EQ(Stage(text).run(kPlay).ticks(1).run("MAIN^REMOVE(\"FIGURE\");").ticks(60).heard(),
            "0<+a 6+b 19>-b");
  {
    Stage stage(text);
    stage.run(kPlay).ticks(1).run("FIGURE^LOAD(\"FIGURE.ANN\");").ticks(60);
    EXPECT_EQ(stage.heard(), "0<+a 6+b 19>-b");
    EXPECT_EQ(stage.run(kPlay).ticks(60).heard(), "0<+a 6+b 19>-b 61<+a 67+b-a 80>-b") << "the new one";
  }
  Stage stage(text);
  stage.run(kPlay).ticks(1).run("GAME^GOTO(\"LAST\");").ticks(60);
  EXPECT_EQ(stage.world().scene()->getName(), "LAST");
}

// Figures that speak

TEST(Speaking, TalksAsLongAsTheSoundRuns) {
  const std::string ends = "a:STARTING=TRUE\na:ENDING=TRUE\n";
  const std::string next = sound("b", "C");
  expectHeard({
      {"a sound longer than the events", node("S") + speaker("a", "B.WAV") + next, kPlay,
       "0<+a 13+b-a 20>-b"},
      {"a start and an end", node("S") + speaker("a", "A.WAV", ends) + next, kPlay, "0<+a 24+b-a 31>-b"},
      {"with a prefix there is no END but a STOP",
       node("S") + speaker("a", "A.WAV", ends + "a:PREFIX=P\n") + next, kPlay, "0<+a 24+b-a 31>-b"},
      {"no such events", node("S") + speaker("a", "A.WAV", ends + "a:PREFIX=Q\n") + next, kPlay,
       "0<+a 7+b-a 14>-b"},
      {"hidden it ends without its end event", node("S") + speaker("a", "A.WAV", "a:ENDING=TRUE\n") + next,
       kPlay + "FIGURE^HIDE();", "0<+a 7+b-a 14>-b"},
      {"no events at all", node("S") + speaker("a", "A.WAV", "a:ANIMOFN=NOEVENTS.ANN\n") + next, kPlay,
       "0<+a 7+b-a 14>-b"},
      {"no animation", node("S") + speaker("a", "A.WAV", "a:ANIMOFN=NONE.ANN\n") + next, kPlay,
       "0<+a 7+b-a 14>-b"},
      {"a sound of an object", node("S") + speaker("a", "VOICE") + next, kPlay, "0<+a 7+b-a 14>-b"},
      {"a sound that is an element", node("S") + sound("c", "A", "") + speaker("a", "c") + next, kPlay,
       "0<+a< 7+b-a-c 14>-b"},
      {"what is no sound", node("S") + speaker("a", "FIGURE") + next, kPlay, "0<+a-a+b 7>-b"},
  });
}

TEST(Speaking, EndsInItsStartWithoutRecursion) {
  std::string text = node("S");
  for (const char* name : {"a", "b", "c"}) text += speaker(name, "NONE.WAV");
  expectHeard({{"each in turn", text, kPlay, "0<+a-a+b-b+c-c>"},
               {"within a node", node("S") + node("n", "RANDOM", "S") + speaker("a", "NONE.WAV", "", "n"),
                kPlay, "0<+n+a-a-n>"}});
  for (int i = 0; i < 2000; ++i) text += "c:ADD=S\n";
  Stage stage(text);
  const std::string heard = stage.run(kPlay).heard();
  EXPECT_EQ(heard.substr(heard.size() - 5), "+c-c>");
}

TEST(Speaking, IsStoppedOnce) {
  for (const char* further : {"", "a:STARTING=TRUE\n", "a:ANIMOFN=NOEVENTS.ANN\n"}) {
    const std::string text = node("S") + speaker("a", "B.WAV", further);
    const std::string heard = Stage(text).run(kPlay).ticks(3).run("S^STOP();").ticks(30).heard();
    const bool hasNoEvents = std::string_view(further).ends_with("NOEVENTS.ANN\n");
    EXPECT_EQ(heard, hasNoEvents ? "0<+a 4>-a" : "0<+a 3>-a") << further;
    EXPECT_EQ(Stage(text).run(kPlay).ticks(3).run("S^STOP(FALSE);").ticks(30).heard(), "0<+a") << further;
  }
  Stage held(node("S") + speaker("a", "B.WAV"));
  held.run(kPlay).ticks(3).run("MAIN^PAUSE();").ticks(30).run("MAIN^RESUME();");
  EXPECT_EQ(held.ticks(30).heard(), "0<+a 43>-a");
}

// The numbers that scripts see are those behind ten thousand draws where no event can come.
TEST(Speaking, DrawsAsOftenAsItMust) {
  Stage stage(node("S") + speaker("a", "A.WAV", "a:PREFIX=Q\n"));
  stage.run("S^GETPLAYING();");
  CXRandom::seed(7);
  for (int i = 0; i < 10000; ++i) CXRandom::next();
  const std::int32_t expected = CXRandom::next();
  CXRandom::seed(7);
  stage.run(kPlay);
  EXPECT_EQ(CXRandom::next(), expected);
}

// Too much

std::string chain(int depth, bool fromBelow) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += node(i == 0 ? "S" : "n" + std::to_string(i));
  for (int k = 1; k < depth; ++k) {
    const int i = fromBelow ? depth - k : k;
    text += "n" + std::to_string(i) + ":ADD=" + (i == 1 ? "S" : "n" + std::to_string(i - 1)) + "\n";
  }
  return text + sound("a", "A", "n" + std::to_string(depth - 1));
}

TEST(SequenceLimits, HoldInDepthAndInPlaces) {
  for (const bool fromBelow : {false, true}) {
    EXPECT_NE(Stage(chain(limits::kTreeDepth - 1, fromBelow)).run(kPlay).heard().find("+a"),
              std::string::npos);
    EXPECT_EQ(Stage(chain(limits::kTreeDepth, fromBelow)).run(kPlay).heard().find("+a"), std::string::npos);
  }
  const auto places = [](int levels) {
    std::string text = node("S") + node("n0");
    for (int i = 1; i < levels; ++i) {
      const std::string name = "n" + std::to_string(i);
      text += node(name) + name + ":ADD=n" + std::to_string(i - 1) + "\n" + name + ":ADD=n" +
              std::to_string(i - 1) + "\n";
    }
    return text + "n0:ADD=S\n";
  };
  EXPECT_EQ(Stage(places(16)).run(kPlay).heard().substr(0, 2), "0<") << "2^16 - 1 places and the root";
  EXPECT_EQ(Stage(places(17)).run(kPlay).heard(), "");
}

}  // namespace
}  // namespace footlight
