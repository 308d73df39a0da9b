// Scripts' methods of SCENE.

#include <algorithm>

#include "app/application.h"
#include "app/level_words.h"
#include "app/mc_scene.h"
#include "app/script_run.h"
#include "foundation/arithmetic.h"
#include "foundation/limits.h"
#include "foundation/xtimer.h"
#include "gfx/animation_manager.h"
#include "gfx/window.h"
#include "input/hot_spot.h"
#include "objects/data/mc_array.h"
#include "objects/gfx/mc_animo.h"
#include "objects/sound/mc_sequence.h"
#include "objects/system/mc_timer.h"
#include "script/mc_behaviour.h"
#include "script/mc_groupped.h"
#include "script/mc_runner.h"
#include "script/mc_variable.h"
#include "script/mc_variable_factory.h"
#include "script/watchdog.h"
#include "sound/sound_manager.h"
#include "sound/volume_scale.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// Music

Result startMusic(CMC_Scene& scene, Call& call) {
  if (call.has(0)) {
    scene.startMusic(call.text(0).c_str(), true);
  } else {
    scene.startMusic(nullptr, true);
  }
  return {};
}

Result stopMusic(CMC_Scene& scene, Call& /*call*/) {
  scene.stopMusic();
  return {};
}

Result setMusicVolume(CMC_Scene& scene, Call& call) {
  scene.getWindow()->setMusicVolume(volume_scale::volume(call.integer(0)));
  return {};
}

Result getMusicVolume(CMC_Scene& scene, Call& /*call*/) {
  return Factory::makeInteger(volume_scale::volume(scene.getWindow()->getMusicVolume()));
}

Result setMusicPan(CMC_Scene& scene, Call& call) {
  scene.getWindow()->setMusicPan(volume_scale::pan(call.integer(0)));
  return {};
}

Result setMusicFreq(CMC_Scene& scene, Call& call) {
  scene.getWindow()->setMusicFreq(call.integer(0));
  return {};
}

// Objects and behaviours

Result getDraggedName(CMC_Scene& scene, Call& /*call*/) {
  return Factory::makeString(scene.getDraggedName());
}

Result run(CMC_Scene& scene, Call& call) { return runByName(&scene, call, RunWords::exact); }

// Numbers of clones; none when they are more than one call may touch.
struct CloneRange {
  CloneRange(std::int64_t first, std::int64_t last) : from(first), to(last) {
    if (to - from < limits::kClonesByOneCall) return;
    limitHit("clones by one call");
    to = from - 1;
  }

  std::int64_t from, to;  // wide enough to step past the last clone that there can be
};

CXString cloneName(const CMC_Object& object, std::int64_t index) {
  return object.getName() + "_" + std::to_string(index);
}

// The object that the first argument names, as the scene knows it.
CMC_Object* objectOf(const CMC_Scene& scene, const Call& call) {
  const CXString name = call.text(0);
  CMC_Object* object = scene.getObject(name);
  if (object == nullptr && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object, "no object of the name " + name.str());
  return object;
}

Result runClones(CMC_Scene& scene, Call& call) {
  const Ref<CMC_Object> object(objectOf(scene, call));
  if (!object) return {};
  const CXString code = call.text(3);
  Owned<CMC_Behaviour> throwaway;
  Ref<CMC_Behaviour> behaviour(call.find<CMC_Behaviour>(code));
  if (!behaviour) {
    throwaway.reset(new CMC_Behaviour(&scene, "temp", code));
    behaviour = Ref<CMC_Behaviour>(throwaway.get());
    behaviour->init();
  }
  TextList arguments(1);
  const TextList further = call.textsFrom(4);
  arguments.insert(arguments.end(), further.begin(), further.end());
  const int from = call.integer(1);
  const int to = call.integer(2);
  const CloneRange range(from > 0 ? from : 1, to > 0 ? to : object->getClonesNo());
  for (std::int64_t i = range.from; i <= range.to; ++i) {
    arguments[0] = cloneName(*object, i);
    behaviour->run(nullptr, &arguments, false);
  }
  return {};
}

Result createObject(CMC_Scene& scene, Call& call) {
  scene.createObject(call.text(0), call.text(1));
  return {};
}

Result remove(CMC_Scene& scene, Call& call) {
  scene.removeAndDestroy(objectOf(scene, call));
  return {};
}

Result removeClones(CMC_Scene& scene, Call& call) {
  const Ref<CMC_Object> object(objectOf(scene, call));
  if (!object) return {};
  const int from = call.integer(1);
  const int to = call.integer(2);
  const CloneRange range(from == -1 ? 1 : std::max(from, 1), to == -1 ? object->getClonesNo() : to);
  for (std::int64_t i = range.from; i <= range.to && watchdog::mayContinue(); ++i)
    scene.removeAndDestroy(scene.getOwnObject(cloneName(*object, i)));
  return {};
}

Result getElementsNo(CMC_Scene& scene, Call& /*call*/) { return Factory::makeInteger(scene.getElementsNo()); }

// Fills a group with the objects of a type that a test picks.
template <class Test>
Result fillGroup(CMC_Scene& scene, const Call& call, int type, Test belongs) {
  auto* group = call.named<CMC_Groupped>(0);
  if (group == nullptr) return {};
  group->removeAll();
  for (CMC_Object* object : scene.getObjectsOfType(type)) {
    if (belongs(object)) group->add(object);
  }
  return {};
}

Result getRunningTimer(CMC_Scene& scene, Call& call) {
  return fillGroup(scene, call, type::kTimer,
                   [](CMC_Object* o) { return object_cast<CMC_Timer>(o)->isEnabled(); });
}

Result getPlayingAnimo(CMC_Scene& scene, Call& call) {
  return fillGroup(scene, call, type::kAnimo, [](CMC_Object* o) {
    const CAnimo6* animation = object_cast<CMC_Animo>(o)->getAnimo();
    return animation != nullptr && animation->isPlaying();
  });
}

Result getObjects(CMC_Scene& scene, Call& call) {
  auto* group = call.named<CMC_Groupped>(0);
  if (group == nullptr) return {};
  const CXString word = call.text(1);
  if (CMC_Object::getTypeId(word) < 0 && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no type has the word " + word.str());
  scene.getObjects(word, group);
  return {};
}

// The tree of a sequence of the scene, null for one that is not loaded.
CPlayable* sequenceOf(CMC_Object* object) { return object_cast<CMC_Sequence>(object)->getLoadedSequence(); }

Result getPlayingSeq(CMC_Scene& scene, Call& call) {
  auto* array = call.named<CMC_Array>(0);
  if (array == nullptr) return {};
  array->removeAll();
  for (CMC_Object* object : scene.getObjectsOfType(type::kSequence)) {
    const CPlayable* sequence = sequenceOf(object);
    CMC_String name(object->getName());
    if (sequence != nullptr && sequence->isPlaying()) array->add(&name);
  }
  return {};
}

// Pause

Result pause(CMC_Scene& scene, Call& call) {
  CWindow* window = scene.getWindow();
  if (CWindow::isPaused()) return {};
  if (CAnimationManager* animations = CWindow::animationsOf(scene.getWindow())) animations->pause();
  if (CSoundManager* sounds = CWindow::soundsOf(scene.getWindow())) sounds->pause();
  CWindow::pause();
  const bool timersRun = call.has(0) && call.boolean(0);
  if (!timersRun) window->GetTimerInterface()->pause();
  CXTimer::enable(timersRun);
  return {};
}

Result resume(CMC_Scene& scene, Call& call) {
  if (!CWindow::isPaused()) return {};
  if (CAnimationManager* animations = CWindow::animationsOf(scene.getWindow())) animations->resume();
  if (CSoundManager* sounds = CWindow::soundsOf(scene.getWindow())) sounds->resume();
  CWindow::resume();
  const bool timersToo = !call.has(0) || call.boolean(0);
  if (timersToo) scene.getWindow()->GetTimerInterface()->resume();
  CXTimer::enable(timersToo);
  return {};
}

bool isMember(const CMC_Groupped& group, const CPlayable& playable) {
  const std::vector<CMC_Object*> members = group.getList();
  return std::ranges::any_of(members, [&](CMC_Object* member) {
    const auto* object = object_cast<CMC_Animo>(member);
    return object != nullptr && object->getAnimo() == &playable;
  });
}

Result resumeOnly(CMC_Scene& scene, Call& call) {
  if (!CWindow::isPaused()) return {};
  const Ref<CMC_Groupped> group(call.named<CMC_Groupped>(0));
  CAnimationManager* animations = CWindow::animationsOf(scene.getWindow());
  if (group && animations != nullptr) {
    animations->resume([&group](const CPlayable& playable) { return isMember(*group, playable); });
  }
  if (CSoundManager* sounds = CWindow::soundsOf(scene.getWindow())) sounds->resume();
  CWindow::resume();
  const bool isGiven = call.has(1);
  if (!isGiven || call.boolean(1)) scene.getWindow()->GetTimerInterface()->resume();
  CXTimer::enable(isGiven && call.boolean(1));
  return {};
}

bool holdsText(const CMC_Array& array, const CXString& text) {
  for (int i = 0; i < array.size(); ++i) {
    if (array.at(i)->toString() == text) return true;
  }
  return false;
}

Result resumeSeqOnly(CMC_Scene& scene, Call& call) {
  const Ref<CMC_Array> array(call.named<CMC_Array>(0));
  if (!array) return {};
  std::vector<Ref<CMC_Object>> sequences;
  for (CMC_Object* object : scene.getObjectsOfType(type::kSequence)) sequences.emplace_back(object);
  for (const Ref<CMC_Object>& object : sequences) {
    CPlayable* sequence = object->isDisposed() ? nullptr : sequenceOf(object.get());
    const bool goesOn = sequence != nullptr && sequence->isPaused() && holdsText(*array, object->getName());
    if (goesOn) sequence->resume();
  }
  return {};
}

Result isPaused(CMC_Scene& /*scene*/, Call& /*call*/) { return Factory::makeBool(CWindow::isPaused()); }

// Hot spots and time

Result setMinHsPriority(CMC_Scene& /*scene*/, Call& call) {
  CHotSpot::setMinPriority(call.integer(0));
  return {};
}

Result setMaxHsPriority(CMC_Scene& /*scene*/, Call& call) {
  CHotSpot::setMaxPriority(call.integer(0));
  return {};
}

Result getMinHsPriority(CMC_Scene& /*scene*/, Call& /*call*/) {
  return Factory::makeInteger(CHotSpot::getMinPriority());
}

Result getMaxHsPriority(CMC_Scene& /*scene*/, Call& /*call*/) {
  return Factory::makeInteger(CHotSpot::getMaxPriority());
}

Result toTime(CMC_Scene& /*scene*/, Call& call) {
  const int total = call.integer(0);
  const int minutes = total / 60;
  const int seconds = total % 60;
  return Factory::makeString(
      CXString::Format("%d%d%d%d", minutes / 10, minutes % 10, seconds / 10, seconds % 10));
}

constexpr Method kMethods[] = {
    {1, "STARTMUSIC", "[file:file]", method<startMusic>,
     "Starts its music; with a file that becomes its music."},
    {2, "STOPMUSIC", "", method<stopMusic>, "Stops the music."},
    {3, "GETDRAGGEDNAME", "-> text", method<getDraggedName>,
     "The name of the picture that is being dragged, empty for none."},
    {4, "GETPLAYINGSEQ", "array:name", method<getPlayingSeq>,
     "Fills an ARRAY with the names of the sequences that play."},
    {5, "RUN", "object:name, method:text, [arguments:value...] -> value", method<run>,
     "Calls a method of an object by their names, with the arguments; gives what it gives."},
    {6, "RUNCLONES", "object:name, from:int, to:int, code:code, [arguments:text...]", method<runClones>,
     "Runs a BEHAVIOUR or code for the clones from to to, with the clone's name as $1 and the arguments "
     "behind it; 0 or less stands for the first and the last."},
    {7, "CREATEOBJECT", "type:text, name:text", method<createObject>,
     "Makes an object of that name: with BUTTON a BUTTON, with VGO a picture seen through a mask."},
    {8, "REMOVE", "object:name", method<remove>, "Takes an object out of the scene and ends it."},
    {9, "REMOVECLONES", "object:name, from:int, to:int", method<removeClones>,
     "Ends the clones of an object from to to; -1 stands for the first and the last."},
    {16, "SETMUSICVOLUME", "volume:int", method<setMusicVolume>,
     "800 is the full volume, 25 and less silence."},
    {17, "GETMUSICVOLUME", "-> int", method<getMusicVolume>,
     "Not the number of SETMUSICVOLUME: -10000 at the full volume and below it."},
    {18, "SETMUSICPAN", "pan:int", method<setMusicPan>,
     "400 is the middle, less is to the left, more to the right."},
    {19, "SETMUSICFREQ", "hertz:int", method<setMusicFreq>, "Plays the music at that many samples a second."},
    {20, "PAUSE", "[timers:bool]", method<pause>,
     "Holds animations, sounds and timers; with TRUE the timers go on."},
    {21, "RESUME", "[timers:bool]", method<resume>,
     "Ends PAUSE; with FALSE the timers stay held, without it as with TRUE they go on."},
    {22, "SETMINHSPRIORITY", "priority:int", method<setMinHsPriority>,
     "BUTTONs of a lower priority than this hear the mouse no more; 0 at the start."},
    {23, "SETMAXHSPRIORITY", "priority:int", method<setMaxHsPriority>,
     "BUTTONs of a higher priority than this hear the mouse no more; 10000000 at the start."},
    {24, "GETELEMENTSNO", "-> int", method<getElementsNo>, "How many objects the scene has."},
    {25, "TOTIME", "seconds:int -> text", method<toTime>,
     "Seconds as four digits, minutes and seconds: 125 is 0205."},
    {26, "ISPAUSED", "-> bool", method<isPaused>, "Whether PAUSE holds the game."},
    {27, "GETPLAYINGANIMO", "group:name", method<getPlayingAnimo>,
     "Fills a GROUP with the animations of the scene that play."},
    {28, "RESUMEONLY", "group:name, [timers:bool]", method<resumeOnly>,
     "Ends PAUSE, but of the animations only those of a GROUP go on; the timers go on with TRUE only."},
    {29, "GETMINHSPRIORITY", "-> int", method<getMinHsPriority>,
     "The least priority of a BUTTON that hears the mouse."},
    {30, "GETMAXHSPRIORITY", "-> int", method<getMaxHsPriority>,
     "The greatest priority of a BUTTON that hears the mouse."},
    {31, "GETRUNNINGTIMER", "group:name", method<getRunningTimer>,
     "Fills a GROUP with the TIMERs of the scene that are enabled."},
    {32, "GETOBJECTS", "group:name, type:type", method<getObjects>,
     "Fills a GROUP with all objects of the scene of that type."},
    {33, "RESUMESEQONLY", "array:name", method<resumeSeqOnly>,
     "Lets the paused sequences go on whose names an ARRAY holds."},
};

}  // namespace

extern constinit const ScriptType kSceneType = {
    .number = type::kScene,
    .idWord = "SCENE",
    .stringWord = "SCENE",
    .meaning = "A place of the game, with all that is in it.",
    .signals = level_words::kSignals,
    .properties = level_words::kProperties,
    .methods = kMethods,
};

}  // namespace footlight
