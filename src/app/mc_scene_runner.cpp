// Scripts' methods of SCENE.

#include <algorithm>

#include "app/application.h"
#include "app/mc_scene.h"
#include "app/script_run.h"
#include "foundation/arithmetic.h"
#include "foundation/limits.h"
#include "foundation/xtimer.h"
#include "gfx/animation_manager.h"
#include "gfx/window.h"
#include "input/hot_spot.h"
#include "objects/gfx/mc_animo.h"
#include "objects/system/mc_timer.h"
#include "script/mc_behaviour.h"
#include "script/mc_groupped.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"
#include "sound/sound_manager.h"

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

constexpr int kSilent = -10000;  // hundredths of a decibel

// The script's scale of 0 to 800 in hundredths of a decibel.
int volumeOf(int value) {
  const int volume = wrap_mul(wrap_sub(value, 800), 4);
  return volume <= -3100 ? kSilent : volume;
}

Result setMusicVolume(CMC_Scene& scene, Call& call) {
  scene.getWindow()->setMusicVolume(volumeOf(call.integer(0)));
  return {};
}

Result getMusicVolume(CMC_Scene& scene, Call& /*call*/) {
  return Factory::makeInteger(volumeOf(scene.getWindow()->getMusicVolume()));
}

Result setMusicPan(CMC_Scene& scene, Call& call) {
  int pan = wrap_mul(wrap_sub(call.integer(0), 400), 2);
  if (pan <= -3100) pan = kSilent;
  if (pan >= 3100) pan = -kSilent;
  scene.getWindow()->setMusicPan(pan);
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
  for (std::int64_t i = range.from; i <= range.to; ++i)
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

// Sequences are not there yet: none plays, none is paused.
Result nothing(CMC_Scene& /*scene*/, Call& /*call*/) {
  diagnose::reportCall(diagnose::Group::method, "does nothing in this build");
  return {};
}

// Pause

CAnimationManager* animationsOf(const CMC_Scene& scene) {
  CApplication* application = scene.getWindow()->getApplication();
  return application != nullptr ? application->getAnimationManager() : nullptr;
}

CSoundManager* soundsOf(const CMC_Scene& scene) {
  CApplication* application = scene.getWindow()->getApplication();
  return application != nullptr ? application->getSoundManagerIfc() : nullptr;
}

Result pause(CMC_Scene& scene, Call& call) {
  CWindow* window = scene.getWindow();
  if (CWindow::isPaused()) return {};
  if (CAnimationManager* animations = animationsOf(scene)) animations->pause();
  if (CSoundManager* sounds = soundsOf(scene)) sounds->pause();
  CWindow::pause();
  const bool timersRun = call.has(0) && call.boolean(0);
  if (!timersRun) window->GetTimerInterface()->pause();
  CXTimer::enable(timersRun);
  return {};
}

Result resume(CMC_Scene& scene, Call& call) {
  if (!CWindow::isPaused()) return {};
  if (CAnimationManager* animations = animationsOf(scene)) animations->resume(nullptr);
  if (CSoundManager* sounds = soundsOf(scene)) sounds->resume();
  CWindow::resume();
  const bool timersToo = !call.has(0) || call.boolean(0);
  if (timersToo) scene.getWindow()->GetTimerInterface()->resume();
  CXTimer::enable(timersToo);
  return {};
}

Result resumeOnly(CMC_Scene& scene, Call& call) {
  if (!CWindow::isPaused()) return {};
  auto* group = call.named<CMC_Groupped>(0);
  CAnimationManager* animations = animationsOf(scene);
  if (group != nullptr && animations != nullptr) animations->resume(group);
  if (CSoundManager* sounds = soundsOf(scene)) sounds->resume();
  CWindow::resume();
  const bool isGiven = call.has(1);
  if (!isGiven || call.boolean(1)) scene.getWindow()->GetTimerInterface()->resume();
  CXTimer::enable(isGiven && call.boolean(1));
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
    {1, "STARTMUSIC", 0, 1, method<startMusic>},
    {2, "STOPMUSIC", 0, 0, method<stopMusic>},
    {3, "GETDRAGGEDNAME", 0, 0, method<getDraggedName>},
    {4, "GETPLAYINGSEQ", 1, 1, method<nothing>},
    {5, "RUN", 2, Method::kAny, method<run>},
    {6, "RUNCLONES", 4, Method::kAny, method<runClones>},
    {7, "CREATEOBJECT", 2, 2, method<createObject>},
    {8, "REMOVE", 1, 1, method<remove>},
    {9, "REMOVECLONES", 3, 3, method<removeClones>},
    {16, "SETMUSICVOLUME", 1, 1, method<setMusicVolume>},
    {17, "GETMUSICVOLUME", 0, 0, method<getMusicVolume>},
    {18, "SETMUSICPAN", 1, 1, method<setMusicPan>},
    {19, "SETMUSICFREQ", 1, 1, method<setMusicFreq>},
    {20, "PAUSE", 0, 1, method<pause>},
    {21, "RESUME", 0, 1, method<resume>},
    {22, "SETMINHSPRIORITY", 1, 1, method<setMinHsPriority>},
    {23, "SETMAXHSPRIORITY", 1, 1, method<setMaxHsPriority>},
    {24, "GETELEMENTSNO", 0, 0, method<getElementsNo>},
    {25, "TOTIME", 1, 1, method<toTime>},
    {26, "ISPAUSED", 0, 0, method<isPaused>},
    {27, "GETPLAYINGANIMO", 1, 1, method<getPlayingAnimo>},
    {28, "RESUMEONLY", 1, 2, method<resumeOnly>},
    {29, "GETMINHSPRIORITY", 0, 0, method<getMinHsPriority>},
    {30, "GETMAXHSPRIORITY", 0, 0, method<getMaxHsPriority>},
    {31, "GETRUNNINGTIMER", 1, 1, method<getRunningTimer>},
    {32, "GETOBJECTS", 2, 2, method<getObjects>},
    {33, "RESUMESEQONLY", 1, 1, method<nothing>},
};

}  // namespace

std::span<const Method> methods::scene() { return kMethods; }

}  // namespace footlight
