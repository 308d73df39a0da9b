// Scripts' methods of SOUND.

#include <algorithm>
#include <cstdint>

#include "objects/sound/mc_sound.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "sound/volume_scale.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// An object without a sound has methods of no effect.
template <Result (*kMethod)(CSound4&, Call&)>
Result onSound(CMC_Sound& object, Call& call) {
  const Ref<CSound4> sound = object.getSound();
  return sound ? kMethod(*sound, call) : Result();
}

template <void (CSound4::*kMethod)()>
Result plain(CSound4& sound, Call& /*call*/) {
  (sound.*kMethod)();
  return {};
}

Result stop(CSound4& sound, Call& call) {
  sound.stop(!call.has(0) || call.boolean(0));
  return {};
}

Result load(CSound4& sound, Call& call) { return Factory::makeBool(sound.Load(call.text(0))); }

Result setVolume(CSound4& sound, Call& call) {
  sound.setVolume(volume_scale::volume(call.integer(0)));
  return {};
}

Result setPan(CSound4& sound, Call& call) {
  sound.setPanning(volume_scale::pan(call.integer(0)));
  return {};
}

Result setFreq(CSound4& sound, Call& call) {
  sound.setFrequency(call.integer(0));
  return {};
}

Result isPlaying(CMC_Sound& object, Call& /*call*/) {
  const CSound4* sound = object.getSound();
  return Factory::makeBool(sound != nullptr && sound->isPlaying());
}

constexpr Method kMethods[] = {
    {1, "PLAY", "", method<onSound<plain<&CSound4::play>>>, "Plays from the beginning."},
    {2, "STOP", "[signals:bool]", method<onSound<stop>>,
     "Stops; with FALSE no ONFINISHED comes, without it as with TRUE."},
    {3, "PAUSE", "", method<onSound<plain<&CSound4::pause>>>, "Holds it where it is."},
    {4, "RESUME", "", method<onSound<plain<&CSound4::resume>>>, "Plays on from where it was held."},
    {7, "LOAD", "file:file -> bool", method<onSound<load>>,
     "Takes another file of the sound folder; TRUE when it was read."},
    {8, "SETVOLUME", "volume:int", method<onSound<setVolume>>,
     "800 is the full volume, 25 and less silence."},
    {9, "SETPAN", "pan:int", method<onSound<setPan>>,
     "400 is the middle, less is to the left, more to the right; 0 and 800 are 8 decibels."},
    {10, "SETFREQ", "hertz:int", method<onSound<setFreq>>, "Plays at that many samples a second."},
    {11, "ISPLAYING", "-> bool", method<isPlaying>, "Whether it plays."},
};

constexpr auto kSignals = signalTable<SoundSignal>({
    {SoundSignal::onStarted, "ONSTARTED", "It begins to play."},
    {SoundSignal::onFinished, "ONFINISHED", "It has ended or was stopped."},
    {SoundSignal::onResumed, "ONRESUMED", "It goes on after a pause."},
});

constexpr Property kProperties[] = {
    {"FILENAME", PropertyKind::file, "", "Its file in the sound folder."},
    {"PRELOAD", PropertyKind::boolean, "FALSE", "TRUE reads the file at once, else when it is first played."},
    {"FLUSHAFTERPLAYED", PropertyKind::boolean, "FALSE",
     "TRUE lets the sound go from memory after it was played."},
};

}  // namespace

extern constinit const ScriptType kSoundType = {
    .number = type::kSound,
    .idWord = "SOUND",
    .stringWord = "SOUND",
    .definitionWord = "SOUND",
    .meaning = "A sound from a file.",
    .pass = 5,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Sound>,
    .makeBare = makeBareFrom<CMC_Sound>,
};

}  // namespace footlight
