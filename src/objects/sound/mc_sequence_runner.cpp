// Scripts' methods of SEQUENCE.

#include "objects/data/mc_array.h"
#include "objects/sound/mc_sequence.h"
#include "script/mc_runner.h"
#include "script/mc_variable.h"
#include "script/mc_variable_factory.h"
#include "sequence/multimedia_sequence_creator.h"
#include "sequence/sequenced_playable.h"
#include "sound/volume_scale.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// An object without a tree has methods of no effect.
template <Result (*kMethod)(CPlayable&, Call&)>
Result onSequence(CMC_Sequence& object, Call& call) {
  CPlayable* sequence = object.getSequence();
  if (sequence == nullptr) return {};
  const Ref<CXObject> keep(sequence->asObject());
  return kMethod(*sequence, call);
}

template <void (CPlayable::*kMethod)()>
Result plain(CPlayable& sequence, Call& /*call*/) {
  (sequence.*kMethod)();
  return {};
}

// The text with its places, marked by an "x", filled with the characters for the numbers of an array. Only as
// many characters are looked at as the array has elements.
CXString filled(CXString text, const CMC_Array& numbers) {
  int next = 0;
  for (int i = 0; i < numbers.size() && i < text.Length(); ++i) {
    if (text.GetAt(i) != 'x' && text.GetAt(i) != 'X') continue;
    const Ref<CMC_Variable> number = numbers.at(next++);
    text.SetAt(i, CMultimediaSequenceCreator::getParameter(number->asInteger()));
  }
  return text;
}

Result play(CPlayable& sequence, Call& call) {
  const CXString event = call.text(0);
  if (call.has(1)) {
    const CXString name = call.text(1);
    const auto* numbers = call.find<CMC_Array>(name);
    sequence.setParameter(event, numbers != nullptr ? filled(sequence.getParameter(event), *numbers) : name);
  }
  sequence.play(event);
  return {};
}

Result stop(CPlayable& sequence, Call& call) {
  const bool notifies = !call.has(0) || call.boolean(0);
  if (sequence.isPlaying()) sequence.stop(notifies);
  return {};
}

Result setVolume(CPlayable& sequence, Call& call) {
  sequence.setVolume(volume_scale::volume(call.integer(0)));
  return {};
}

Result setPan(CPlayable& sequence, Call& call) {
  sequence.setPanning(volume_scale::pan(call.integer(0)));
  return {};
}

Result setFreq(CPlayable& sequence, Call& call) {
  sequence.setFrequency(call.integer(0));
  return {};
}

Result isPlaying(CMC_Sequence& object, Call& /*call*/) {
  const CPlayable* sequence = object.getSequence();
  return Factory::makeBool(sequence != nullptr && sequence->isPlaying());
}

Result getEventName(CMC_Sequence& object, Call& call) {
  const CPlayable* sequence = object.getSequence();
  if (sequence == nullptr) return Factory::makeString({});
  if (!call.has(0)) return Factory::makeString(sequence->getLastPlayedEvent());
  const auto* node = dynamic_cast<const CSequencedPlayable*>(sequence);
  return Factory::makeString(node != nullptr ? node->getLastPlayedEvent(call.text(0)) : CXString());
}

Result getPlaying(CMC_Sequence& object, Call& /*call*/) {
  CPlayable* sequence = object.getSequence();
  const CPlayable* playing = sequence != nullptr ? sequence->getPlaying() : nullptr;
  return Factory::makeString(playing != nullptr ? playing->getName() : CXString());
}

constexpr Method kMethods[] = {
    {1, "PLAY", "[event:text], [parameter:text]", method<onSequence<play>>,
     "Plays with the parameter that the file gives for the event. The second argument is another parameter, "
     "or the name of an ARRAY whose numbers, from 0, replace the x of the parameter one after the other. "
     "Either becomes the event's parameter from then on."},
    {2, "STOP", "[signals:bool]", method<onSequence<stop>>,
     "Stops; with FALSE no ONFINISHED comes, without it as with TRUE."},
    {3, "PAUSE", "", method<onSequence<plain<&CPlayable::pause>>>, "Holds the element that plays."},
    {4, "RESUME", "", method<onSequence<plain<&CPlayable::resume>>>, "Goes on after PAUSE."},
    {5, "SHOW", "", method<onSequence<plain<&CPlayable::show>>>, "Shows its animations."},
    {6, "HIDE", "", method<onSequence<plain<&CPlayable::hide>>>, "Hides its animations."},
    {7, "ISPLAYING", "-> bool", method<isPlaying>, "Whether it plays; one that is held does."},
    {8, "SETVOLUME", "volume:int", method<onSequence<setVolume>>,
     "For what starts from now on: 800 is the full volume, 25 and less silence."},
    {9, "SETPAN", "pan:int", method<onSequence<setPan>>,
     "For what starts from now on: 400 is the middle, less is to the left, more to the right."},
    {10, "SETFREQ", "hertz:int", method<onSequence<setFreq>>,
     "What starts from now on plays at that many samples a second."},
    {11, "GETEVENTNAME", "[element:text] -> text", method<getEventName>,
     "The event that was played last; with an element of the file the element that plays in it, or empty."},
    {12, "GETPLAYING", "-> text", method<getPlaying>,
     "The element that plays: an animation, a sound or a figure that speaks; empty when nothing does."},
};

constexpr auto kSignals = signalTable<SequenceSignal>({
    {SequenceSignal::onStarted, "ONSTARTED", "It begins; as ONSTARTED^ELEMENT when an element of it begins."},
    {SequenceSignal::onFinished, "ONFINISHED",
     "It has ended; as ONFINISHED^ELEMENT when an element of it has ended."},
});

constexpr Property kProperties[] = {
    {"FILENAME", PropertyKind::file, "", "The file that tells its elements."},
};

}  // namespace

extern constinit const ScriptType kSequenceType = {
    .number = type::kSequence,
    .idWord = "SEQUENCE",
    .stringWord = "SEQUENCE",
    .definitionWord = "SEQUENCE",
    .meaning = "Animations, sounds and figures that speak, as a file joins them.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Sequence>,
    .makeBare = makeBareFrom<CMC_Sequence>,
};

}  // namespace footlight
