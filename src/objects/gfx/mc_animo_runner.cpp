// Scripts' methods of ANIMO.

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "objects/data/mc_array.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_animo.h"
#include "script/mc_runner.h"
#include "script/mc_variable.h"
#include "sound/volume_scale.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;
using namespace graphics_methods;

template <auto F>
Result onAnimo(CMC_Animo& object, Call& call) {
  return onGraphic<F>(object.getAnimo(), call);
}

bool isInteger(const Call& call, int index) {
  const Ref<CMC_Variable> value = call.variable(index);
  return value && value->getType() == type::kInteger;
}

// The event of an argument: a number, -1 for the current one, or a name.
int eventArgument(const CAnimo6& animo, const Call& call, int index) {
  return isInteger(call, index) ? animo.GetEventNo(call.integer(index)) : animo.GetEventNo(call.text(index));
}

// Showing and placing

Result setPosition(CAnimo6& animo, Call& call) {
  animo.Invalidate();
  animo.setPosition(point(call, 0));
  animo.Invalidate();
  return {};
}

Result getAnchor(CAnimo6& animo, Call& call) {
  auto* array = call.named<CMC_Array>(0);
  if (array == nullptr) return {};
  CMC_Integer x(animo.getAnchor().x);
  CMC_Integer y(animo.getAnchor().y);
  array->add(&x);
  array->add(&y);
  return {};
}

Result setOpacity(CAnimo6& animo, Call& call) {
  animo.SetOpacity(static_cast<std::uint8_t>(call.integer(0) % 257 & 0xFF));
  return {};
}

Result mergeAlpha(CAnimo6& animo, Call& call) {
  CGraphicsObject* other = graphicsArgument(call, 2);
  if (other == nullptr) return {};
  animo.mergeAlpha(point(call, 0), other);
  animo.Invalidate();
  return {};
}

Result isAt(CAnimo6& animo, Call& call) {
  return Factory::makeBool(animo.isAt(point(call, 0), call.boolean(2)));
}

// Playing

Result load(CMC_Animo& object, Call& call) {
  object.load(call.text(0), true);
  return {};
}

Result play(CMC_Animo& object, Call& call) {
  const Ref<CAnimo6> animo(object.getAnimo());
  if (!animo) return {};
  if (call.has(0)) {
    animo->addNotifier(&object);
    animo->Play(call.text(0), 0, CAnimo::kUsualFps);
  } else {
    animo->play();
  }
  return {};
}

Result stop(CAnimo6& animo, Call& call) {
  animo.stop(!call.has(0) || call.boolean(0));
  return {};
}

Result isPlaying(CAnimo6& animo, Call& call) {
  if (!call.has(0)) return Factory::makeBool(animo.isPlaying());
  const CXString name = isInteger(call, 0) ? animo.GetEventName(eventArgument(animo, call, 0)) : call.text(0);
  return Factory::makeBool(animo.isPlaying(name));
}

Result playReverse(CAnimo6& animo, Call& call) {
  const Ref<CMC_Variable> event = call.variable(0);
  const int kind = event ? event->getType() : 0;
  if (kind != type::kInteger && kind != type::kString) return {};
  animo.ensureLoaded();
  const CXString name =
      kind == type::kInteger ? animo.GetEventName(eventArgument(animo, call, 0)) : call.text(0);
  animo.playReverse(name, call.has(1) ? call.integer(1) : CAnimo::kCurrent);
  return {};
}

Result nPlay(CAnimo6& animo, Call& call) {
  animo.ensureLoaded();
  const CXString name = animo.GetEventName(animo.GetEventNo(call.integer(0)));
  animo.Play(name, call.has(1) ? call.integer(1) : CAnimo::kCurrent, 0);
  return {};
}

Result playRand(CAnimo6& animo, Call& call) {
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (unit != nullptr) unit->addRandomPlayable(&animo, call.integer(1), call.integer(2), call.text(0));
  return {};
}

Result setFps(CAnimo6& animo, Call& call) {
  animo.SetFPS(call.integer(0));
  return {};
}

// Frames and events

Result setFrame(CAnimo6& animo, Call& call) {
  if (call.count() < 2) {
    animo.SetFrame(call.integer(0));
    return {};
  }
  const int event = eventArgument(animo, call, 0);
  if (isInteger(call, 1)) {
    animo.SetEventFrame(event, call.integer(1));
  } else {
    animo.SetEventFrame(event, call.text(1));
  }
  return {};
}

Result getFrameName(CAnimo6& animo, Call& call) {
  const int event = call.has(0) ? eventArgument(animo, call, 0) : animo.GetCurrentEvent();
  const int position = call.has(1) ? call.integer(1) : CAnimo::kCurrent;
  return Factory::makeString(event < 0 ? CXString() : animo.getFrameName(event, position));
}

Result setFrameName(CAnimo6& animo, Call& call) {
  const int event = eventArgument(animo, call, 0);
  if (event >= 0) animo.setFrameName(event, call.integer(1), call.text(2));
  return {};
}

Result getFrameNo(CAnimo6& animo, Call& call) {
  if (call.count() < 2) return Factory::makeInteger(animo.GetFrameNo());
  const int event = eventArgument(animo, call, 0);
  if (event < 0) return Factory::makeInteger(-1);
  return Factory::makeInteger(isInteger(call, 1) ? animo.GetFrameNo(event, call.integer(1))
                                                 : animo.GetFrameNo(event, call.text(1)));
}

Result getEventName(CAnimo6& animo, Call& call) {
  const int event = call.has(0) ? animo.GetEventNo(call.integer(0)) : animo.GetCurrentEvent();
  return Factory::makeString(animo.GetEventName(event));
}

Result getNofInEvent(CAnimo6& animo, Call& call) {
  return Factory::makeInteger(call.has(0) ? animo.GetNOFInEvent(eventArgument(animo, call, 0)) : 0);
}

// Sound

Result setVolume(CAnimo6& animo, Call& call) {
  animo.setVolume(volume_scale::volume(call.integer(0)));
  return {};
}

Result setPan(CAnimo6& animo, Call& call) {
  animo.setPanning(volume_scale::pan(call.integer(0)));
  return {};
}

Result setFreq(CAnimo6& animo, Call& call) {
  animo.setFrequency(call.integer(0));
  return {};
}

// The mouse

Result setAsButton(CMC_Animo& object, Call& call) {
  object.setAsButton(call.boolean(0), call.boolean(1));
  return {};
}

Result setOnFirstFrame(CMC_Animo& object, Call& call) {
  object.setOnFirstFrame(!call.has(0) || call.boolean(0));
  return {};
}

// One line each

void show(CAnimo6& a) { a.show(); }
void hide(CAnimo6& a) { a.hide(); }
void pause(CAnimo6& a) { a.pause(); }
void resume(CAnimo6& a) { a.resume(); }
void setForward(CAnimo6& a) { a.setDirection(_direction::forward); }
void setBackward(CAnimo6& a) { a.setDirection(_direction::backward); }
void nextFrame(CAnimo6& a) { a.Next(); }
void prevFrame(CAnimo6& a) { a.Prev(); }

int current(CAnimo6& a) { return a.Current(); }
int eventNumber(CAnimo6& a) { return a.GetCurrentEvent(); }
int fps(CAnimo6& a) { return a.getFPS(); }
int framePositionX(CAnimo6& a) { return a.getCurrFramePosition().x; }
int framePositionY(CAnimo6& a) { return a.getCurrFramePosition().y; }
int centerX(CAnimo6& a) { return wrap_add(a.GetPosition().x, a.Width() / 2); }
int centerY(CAnimo6& a) { return wrap_add(a.GetPosition().y, a.Height() / 2); }
int numberOfEvents(CAnimo6& a) { return a.GetNOE(); }
int numberOfFrames(CAnimo6& a) { return a.GetNOF(); }
int maxWidth(CAnimo6& a) { return a.GetMaxWidth(); }
int maxHeight(CAnimo6& a) { return a.GetMaxHeight(); }
int frameInEvent(CAnimo6& a) { return a.GetCurrentFrameInSequence(); }

constexpr Method kMethods[] = {
    {1, "SHOW", "", method<onAnimo<show>>, "Shows it."},
    {2, "HIDE", "", method<onAnimo<hide>>, "Hides it; it goes on playing."},
    {3, "PAUSE", "", method<onAnimo<pause>>, "Holds it where it is."},
    {4, "RESUME", "", method<onAnimo<resume>>, "Plays on from where it was held."},
    {5, "SETPOSITION", "x:int, y:int", method<onAnimo<setPosition>>,
     "Puts its anchor there, in pixels of the screen; the places of its frames come on top."},
    {6, "MOVE", "dx:int, dy:int", method<onAnimo<move>>, "Moves it by so many pixels."},
    {7, "LOAD", "file:file", method<load>,
     "Takes another file in place of its own; the same file is not read again."},
    {8, "CLEARCLIPPING", "", method<onAnimo<clearClipping>>, "Draws all of it again."},
    {9, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onAnimo<setClipping>>,
     "Draws only what lies within: four numbers in pixels of the screen, or the box of a picture by its "
     "name."},
    {10, "PLAY", "[event:text]", method<play>,
     "Plays the event of that name from its first frame; without one the event that was played last."},
    {11, "SETFRAME", "[event:event], [frame:value]", method<onAnimo<setFrame>>,
     "Shows a frame of an event, by its place from 0 or its name; with one number that frame of the whole "
     "file, without any its first."},
    {12, "STOP", "[signals:bool]", method<onAnimo<stop>>,
     "Stops where it is; with FALSE no ONFINISHED comes, without it as with TRUE."},
    {13, "ISPLAYING", "[event:event] -> bool", method<onAnimo<isPlaying>>,
     "Whether it plays; with an event whether it plays just that."},
    {15, "GETPOSITIONX", "[unused:value] -> int", method<onAnimo<positionX>>,
     "Its left edge, in pixels of the screen; the argument changes nothing."},
    {16, "GETPOSITIONY", "[unused:value] -> int", method<onAnimo<positionY>>,
     "Its upper edge, in pixels of the screen; the argument changes nothing."},
    {17, "GETWIDTH", "-> int", method<onAnimo<width>>, "The width of the frame that is shown, in pixels."},
    {18, "GETHEIGHT", "-> int", method<onAnimo<height>>, "The height of the frame that is shown, in pixels."},
    {19, "GETFRAME", "-> int", method<onAnimo<current>>,
     "The number in the whole file of the frame that is shown, from 0."},
    {20, "GETFRAMENAME", "[event:event], [place:int] -> text", method<onAnimo<getFrameName>>,
     "The name of a frame by its place in the event, from 0; without a place the current one, without an "
     "event the current event."},
    {56, "SETFRAMENAME", "event:event, place:int, name:text", method<onAnimo<setFrameName>>,
     "Gives the frame at a place of an event, from 0, another name."},
    {21, "GETFRAMENO", "[event:event], [frame:value] -> int", method<onAnimo<getFrameNo>>,
     "The number in the whole file of a frame of an event, by its place (-1 the current, -2 the first, -3 "
     "the last) or its name; without arguments of the frame that is shown."},
    {22, "GETEVENTNAME", "[event:int] -> text", method<onAnimo<getEventName>>,
     "The name of the event of that number, from 0; without one of the current event."},
    {67, "GETEVENTNUMBER", "[unused:text] -> int", method<onAnimo<eventNumber>>,
     "The number of the current event, from 0; the argument changes nothing."},
    {23, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onAnimo<isNear>>,
     "Whether at least so many percent of it lie within a picture, by its name and the percent, or within a "
     "rectangle, by four numbers and the percent."},
    {24, "ISINSIDE", "x:int, y:int, alpha:bool -> bool", method<onAnimo<isAt>>,
     "Whether the point of the screen lies in the frame; with TRUE only where the frame is not transparent."},
    {25, "PLAYRAND", "event:text, rate:int, repeats:int", method<onAnimo<playRand>>,
     "Plays an event, or with an empty name any, again and again after 1 to 60 / rate seconds drawn by lot; "
     "each time once or more in a row, fewer times than repeats."},
    {26, "MONITORCOLLISION", "alpha:bool", method<monitorCollision>,
     "Watches for collisions: of boxes with FALSE, of pixels with TRUE."},
    {27, "REMOVEMONITORCOLLISION", "", method<removeMonitorCollision>, "Watches for collisions no more."},
    {28, "SETFORWARD", "", method<onAnimo<setForward>>, "Lets its events run forward."},
    {29, "SETBACKWARD", "", method<onAnimo<setBackward>>, "Lets its events run backward."},
    {30, "NEXTFRAME", "", method<onAnimo<nextFrame>>,
     "Steps to the next frame of the event, as playing does; at the end it stops or loops."},
    {31, "PREVFRAME", "", method<onAnimo<prevFrame>>, "Steps to the frame before, as playing backward does."},
    {32, "SETPRIORITY", "priority:int", method<onAnimo<setPriority>>,
     "Higher ones are drawn over lower ones."},
    {57, "GETPRIORITY", "-> int", method<onAnimo<getPriority>>,
     "Its priority, -1 when it is not on the screen."},
    {33, "GETALPHA", "x:int, y:int -> int", method<onAnimo<getAlpha>>,
     "Its alpha at a place of the screen, 0 outside of it: 0 to 127 as they are, 128 to 255 as -128 to -1."},
    {34, "GETPIXEL", "x:int, y:int -> int", method<onAnimo<getPixel>>,
     "Its pixel of 16 bits at a place of the screen, as a signed number; 0 outside of it."},
    {35, "SETFPS", "frames:int", method<onAnimo<setFps>>, "Plays that many frames a second, 1 at least."},
    {68, "GETFPS", "-> int", method<onAnimo<fps>>, "How many frames a second it plays."},
    {36, "MERGEALPHA", "x:int, y:int, picture:name", method<onAnimo<mergeAlpha>>,
     "Puts the alpha of another picture in the place of its own at x and y, in pixels from its corner; the "
     "next call for that picture first brings back what was there."},
    {37, "INVALIDATE", "", method<onAnimo<invalidate>>, "Draws it anew with the next frame."},
    {38, "GETCURRFRAMEPOSX", "-> int", method<onAnimo<framePositionX>>,
     "Where the frame lies within the animation, in pixels from the left, whatever SETPOSITION and MOVE "
     "did."},
    {39, "GETCURRFRAMEPOSY", "-> int", method<onAnimo<framePositionY>>,
     "Where the frame lies within the animation, in pixels from the top, whatever SETPOSITION and MOVE did."},
    {40, "GETCENTERX", "-> int", method<onAnimo<centerX>>,
     "The middle of the frame, in pixels from the left of the screen."},
    {41, "GETCENTERY", "-> int", method<onAnimo<centerY>>,
     "The middle of the frame, in pixels from the top of the screen."},
    {42, "GETNOE", "-> int", method<onAnimo<numberOfEvents>>, "How many events it has."},
    {43, "GETNOF", "-> int", method<onAnimo<numberOfFrames>>, "How many frames the whole file has."},
    {44, "GETNOFINEVENT", "[event:event] -> int", method<onAnimo<getNofInEvent>>,
     "How many frames an event has, 0 if there is no such event; 0 without an argument."},
    {45, "GETMAXWIDTH", "-> int", method<onAnimo<maxWidth>>, "The width of its widest frame, in pixels."},
    {46, "GETMAXHEIGHT", "-> int", method<onAnimo<maxHeight>>, "The height of its highest frame, in pixels."},
    {47, "ISVISIBLE", "-> bool", method<onAnimo<isVisible>>, "Whether it is shown."},
    {48, "GETCFRAMEINEVENT", "-> int", method<onAnimo<frameInEvent>>,
     "The place of the frame in its event, from 0."},
    {49, "SETASBUTTON", "on:bool, cursor:bool", method<setAsButton>,
     "With TRUE it acts as a button, with FALSE no more; plays its event ONNOEVENT. The second tells whether "
     "the pointer changes its shape over it."},
    {50, "SETONFF", "[on:bool]", method<setOnFirstFrame>,
     "With TRUE, or without an argument, the mouse counts over the place of the first frame; with FALSE over "
     "that of the frame that is shown."},
    {51, "SETOPACITY", "opacity:int", method<onAnimo<setOpacity>>, "From 0, invisible, to 255, opaque."},
    {65, "GETOPACITY", "-> int", method<onAnimo<opacity>>, "Its opacity, 0 to 255."},
    {52, "SETVOLUME", "volume:int", method<onAnimo<setVolume>>,
     "Of its sounds: 800 is the full volume, 25 and less silence."},
    {53, "SETPAN", "pan:int", method<onAnimo<setPan>>,
     "Of its sounds: 400 is the middle, less is to the left, more to the right."},
    {54, "SETFREQ", "hertz:int", method<onAnimo<setFreq>>, "Plays its sounds at that many samples a second."},
    {55, "SETANCHOR", "x:value, [y:int]", method<onAnimo<setAnchor>>,
     "The point that SETPOSITION places: two numbers in pixels, or a word: CENTER, LEFT, RIGHT, TOP, BOTTOM, "
     "LEFTUPPER, RIGHTUPPER, LEFTLOWER or RIGHTLOWER."},
    {66, "GETANCHOR", "array:name", method<onAnimo<getAnchor>>, "Adds x and y of its anchor to an ARRAY."},
    {58, "FLIPH", "", method<onAnimo<flipH>>, "Turns it upside down."},
    {59, "FLIPV", "", method<onAnimo<flipV>>, "Mirrors it left to right."},
    {60, "RESETFLIPS", "", method<onAnimo<resetFlips>>, "Undoes FLIPH and FLIPV."},
    {61, "DRAWONTO", "picture:name, [priority:int]", method<onAnimo<drawOnto>>,
     "Draws it as a part of another picture from now on; among its parts higher priorities lie on top, 0 "
     "without the argument."},
    {62, "PLAYREVERSE", "event:event, [place:int]", method<onAnimo<playReverse>>,
     "Plays an event backward, from a place of the reversed event on; from its last frame without one."},
    {63, "NPLAY", "event:int, [place:int]", method<onAnimo<nPlay>>,
     "Plays the event of that number, from 0, from a place on; from its first frame without one."},
    {64, "ISAT", "x:int, y:int, alpha:bool -> bool", method<onAnimo<isAt>>,
     "Whether the point of the screen lies in the frame; with TRUE only where the frame is not transparent."},
};

constexpr auto kSignals = signalTable<AnimoSignal>({
    {AnimoSignal::onStarted, "ONSTARTED", "An event begins; as ONSTARTED^EVENT if that is bound."},
    {AnimoSignal::onFinished, "ONFINISHED",
     "An event has ended or was stopped; as ONFINISHED^EVENT if that is bound."},
    {AnimoSignal::onPaused, "ONPAUSED", "Nothing raises it."},
    {AnimoSignal::onResumed, "ONRESUMED", "Nothing raises it."},
    {AnimoSignal::onFrameChanged, "ONFRAMECHANGED",
     "Another frame is shown; as ONFRAMECHANGED^NAME, as ONFRAMECHANGEDFRAME^NUMBER for one without a name, "
     "or as ONFRAMECHANGED^EVENT.",
     CMC_Animo::kNamelessFrame},
    {AnimoSignal::onCollision, "ONCOLLISION",
     "It begins to touch another picture; as ONCOLLISION^EVENT^NAME or ONCOLLISION^NAME if one is bound, "
     "else with its name as $1 and the other's as $2."},
    {AnimoSignal::onCollisionFinished, "ONCOLLISIONFINISHED",
     "It no longer touches another picture; in the same forms."},
    {AnimoSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it, while it acts as a button."},
    {AnimoSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it, while it acts as a button."},
    {AnimoSignal::onClick, "ONCLICK",
     "It was clicked, while it acts as a button; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT if that is bound."},
    {AnimoSignal::onRelease, "ONRELEASE",
     "A mouse button was released over it, while it acts as a button; in the same forms."},
});

constexpr auto kProperties = joined(
    kPictureProperties,
    std::to_array<Property>({
        {"FPS", PropertyKind::integer, "15", "Frames a second, 1 at least."},
        {"ASBUTTON", PropertyKind::boolean, "FALSE",
         "TRUE lets it act as a button, where a mouse signal is bound: it plays its events ONFOCUSON, "
         "ONFOCUSOFF "
         "and ONCLICK."},
        {"ONFIRSTFRAME", PropertyKind::boolean, "FALSE",
         "TRUE lets the mouse count over the place of the first frame, else over that of the frame that is "
         "shown."},
    }));

}  // namespace

extern constinit const ScriptType kAnimoType = {
    .number = type::kAnimo,
    .idWord = "ANIMO",
    .stringWord = "ANIMO",
    .definitionWord = "ANIMO",
    .meaning = "An animation: frames, events made of them, and their sounds.",
    .pass = 5,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Animo>,
    .makeBare = makeBareFrom<CMC_Animo>,
};

}  // namespace footlight
