// Scripts' methods of SOUND.

#include <algorithm>
#include <cstdint>

#include "objects/sound/mc_sound.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

constexpr int kRange = 3200;  // of what is heard, in hundredths of a decibel
constexpr int kEdge = 3099;   // beyond it there is silence
constexpr int kSilence = 10000;

// From the script's scale, 0 to 800, to hundredths of a decibel.
int volumeOf(int value) {
  const auto scaled = (std::int64_t{value} - 800) * kRange / 800;
  return scaled < -kEdge ? -kSilence : static_cast<int>(std::min<std::int64_t>(scaled, kSilence));
}

// The same for the sides, 400 is the middle.
int panOf(int value) {
  const auto scaled = (std::int64_t{value} - 400) * kRange / 1600;
  if (scaled < -kEdge) return -kSilence;
  return scaled > kEdge ? kSilence : static_cast<int>(scaled);
}

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
  sound.setVolume(volumeOf(call.integer(0)));
  return {};
}

Result setPan(CSound4& sound, Call& call) {
  sound.setPanning(panOf(call.integer(0)));
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
    {1, "PLAY", 0, 0, method<onSound<plain<&CSound4::play>>>},
    {2, "STOP", 0, 1, method<onSound<stop>>},
    {3, "PAUSE", 0, 0, method<onSound<plain<&CSound4::pause>>>},
    {4, "RESUME", 0, 0, method<onSound<plain<&CSound4::resume>>>},
    {7, "LOAD", 1, 1, method<onSound<load>>},
    {8, "SETVOLUME", 1, 1, method<onSound<setVolume>>},
    {9, "SETPAN", 1, 1, method<onSound<setPan>>},
    {10, "SETFREQ", 1, 1, method<onSound<setFreq>>},
    {11, "ISPLAYING", 0, 0, method<isPlaying>},
};

}  // namespace

std::span<const Method> methods::sound() { return kMethods; }

}  // namespace footlight
