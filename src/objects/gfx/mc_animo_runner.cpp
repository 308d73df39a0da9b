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
    {2, "HIDE", "", method<onAnimo<hide>>, "Hides it."},
    {3, "PAUSE", "", method<onAnimo<pause>>, "Holds it where it is."},
    {4, "RESUME", "", method<onAnimo<resume>>, "Goes on from where it was held."},
    {5, "SETPOSITION", "x:int, y:int", method<onAnimo<setPosition>>,
     "Puts it there, in pixels of the screen."},
    {6, "MOVE", "x:int, y:int", method<onAnimo<move>>, "Moves it by so many pixels."},
    {7, "LOAD", "file:file", method<load>, "Takes another file."},
    {8, "CLEARCLIPPING", "", method<onAnimo<clearClipping>>, "Draws all of it again."},
    {9, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onAnimo<setClipping>>,
     "Draws what lies within: four numbers, or the box of a picture by its name."},
    {10, "PLAY", "[event:event]", method<play>, "Plays an event from its beginning, or the last one."},
    {11, "SETFRAME", "[event:event], [frame:value]", method<onAnimo<setFrame>>,
     "Shows a frame of an event, by number or by name; with one number a frame of the whole file."},
    {12, "STOP", "[signals:bool]", method<onAnimo<stop>>, "Stops; with FALSE without ONFINISHED."},
    {13, "ISPLAYING", "[event:event] -> bool", method<onAnimo<isPlaying>>,
     "Whether it plays, or plays that event."},
    {15, "GETPOSITIONX", "[unused:bool] -> int", method<onAnimo<positionX>>, "Its left edge, in pixels."},
    {16, "GETPOSITIONY", "[unused:bool] -> int", method<onAnimo<positionY>>, "Its upper edge, in pixels."},
    {17, "GETWIDTH", "-> int", method<onAnimo<width>>, "The width of the frame that is shown."},
    {18, "GETHEIGHT", "-> int", method<onAnimo<height>>, "The height of the frame that is shown."},
    {19, "GETFRAME", "-> int", method<onAnimo<current>>, "The number of the frame in the file."},
    {20, "GETFRAMENAME", "[event:event], [frame:int] -> text", method<onAnimo<getFrameName>>,
     "The name of a frame, or of the one that is shown."},
    {56, "SETFRAMENAME", "event:event, frame:int, name:text", method<onAnimo<setFrameName>>,
     "Gives a frame another name."},
    {21, "GETFRAMENO", "[event:event], [frame:value] -> int", method<onAnimo<getFrameNo>>,
     "The number in the file of a frame of an event."},
    {22, "GETEVENTNAME", "[event:int] -> text", method<onAnimo<getEventName>>,
     "The name of an event, or of the one that is shown."},
    {67, "GETEVENTNUMBER", "[unused:text] -> int", method<onAnimo<eventNumber>>,
     "The number of the event that is shown."},
    {23, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onAnimo<isNear>>,
     "Whether it covers a place of four numbers by so many percent, or a picture by its name and the "
     "percent."},
    {24, "ISINSIDE", "x:int, y:int, alpha:bool -> bool", method<onAnimo<isAt>>,
     "Whether the point lies in the frame; with TRUE on a pixel that is seen."},
    {25, "PLAYRAND", "event:event, from:int, to:int", method<onAnimo<playRand>>,
     "Plays an event again and again after so many seconds, drawn between the two."},
    {26, "MONITORCOLLISION", "alpha:bool", method<monitorCollision>,
     "Watches for collisions, with TRUE pixel by pixel."},
    {27, "REMOVEMONITORCOLLISION", "", method<removeMonitorCollision>, "Watches no more."},
    {28, "SETFORWARD", "", method<onAnimo<setForward>>, "Plays forward."},
    {29, "SETBACKWARD", "", method<onAnimo<setBackward>>, "Plays backward."},
    {30, "NEXTFRAME", "", method<onAnimo<nextFrame>>, "Shows the next frame of the event."},
    {31, "PREVFRAME", "", method<onAnimo<prevFrame>>, "Shows the frame before."},
    {32, "SETPRIORITY", "priority:int", method<onAnimo<setPriority>>, "Higher ones lie before lower ones."},
    {57, "GETPRIORITY", "-> int", method<onAnimo<getPriority>>,
     "Its priority, -1 when it is not on the screen."},
    {33, "GETALPHA", "x:int, y:int -> int", method<onAnimo<getAlpha>>,
     "How opaque it is at a place of the screen."},
    {34, "GETPIXEL", "x:int, y:int -> int", method<onAnimo<getPixel>>, "The pixel at a place of the screen."},
    {35, "SETFPS", "frames:int", method<onAnimo<setFps>>, "Plays that many frames a second."},
    {68, "GETFPS", "-> int", method<onAnimo<fps>>, "How many frames a second it plays."},
    {36, "MERGEALPHA", "x:int, y:int, picture:name", method<onAnimo<mergeAlpha>>,
     "Lays the transparency of another picture over its own."},
    {37, "INVALIDATE", "", method<onAnimo<invalidate>>, "Draws it anew with the next frame."},
    {38, "GETCURRFRAMEPOSX", "-> int", method<onAnimo<framePositionX>>,
     "Where the frame lies in its event, from the left."},
    {39, "GETCURRFRAMEPOSY", "-> int", method<onAnimo<framePositionY>>,
     "Where the frame lies in its event, from the top."},
    {40, "GETCENTERX", "-> int", method<onAnimo<centerX>>, "Its middle, from the left."},
    {41, "GETCENTERY", "-> int", method<onAnimo<centerY>>, "Its middle, from the top."},
    {42, "GETNOE", "-> int", method<onAnimo<numberOfEvents>>, "How many events it has."},
    {43, "GETNOF", "-> int", method<onAnimo<numberOfFrames>>, "How many frames it has."},
    {44, "GETNOFINEVENT", "[event:event] -> int", method<onAnimo<getNofInEvent>>,
     "How many frames an event has."},
    {45, "GETMAXWIDTH", "-> int", method<onAnimo<maxWidth>>, "The width of its widest frame."},
    {46, "GETMAXHEIGHT", "-> int", method<onAnimo<maxHeight>>, "The height of its highest frame."},
    {47, "ISVISIBLE", "-> bool", method<onAnimo<isVisible>>, "Whether it is shown."},
    {48, "GETCFRAMEINEVENT", "-> int", method<onAnimo<frameInEvent>>,
     "The number of the frame in its event."},
    {49, "SETASBUTTON", "on:bool, cursor:bool", method<setAsButton>,
     "With TRUE it hears the mouse; the second tells whether the pointer changes over it."},
    {50, "SETONFF", "[on:bool]", method<setOnFirstFrame>, "Shows the first frame when an event has ended."},
    {51, "SETOPACITY", "opacity:int", method<onAnimo<setOpacity>>, "0 is invisible, 255 opaque."},
    {65, "GETOPACITY", "-> int", method<onAnimo<opacity>>, "Its opacity, 0 to 255."},
    {52, "SETVOLUME", "volume:int", method<onAnimo<setVolume>>,
     "Of its sounds: 0 is silence, 800 the full volume."},
    {53, "SETPAN", "pan:int", method<onAnimo<setPan>>,
     "Of its sounds: 0 is left, 400 the middle, 800 right."},
    {54, "SETFREQ", "hertz:int", method<onAnimo<setFreq>>, "Plays its sounds at that many samples a second."},
    {55, "SETANCHOR", "x:value, [y:int]", method<onAnimo<setAnchor>>,
     "The point that it turns and is placed by: two numbers, or a word such as CENTER."},
    {66, "GETANCHOR", "array:name", method<onAnimo<getAnchor>>,
     "Adds the two numbers of its anchor to an ARRAY."},
    {58, "FLIPH", "", method<onAnimo<flipH>>, "Mirrors it left to right."},
    {59, "FLIPV", "", method<onAnimo<flipV>>, "Mirrors it top to bottom."},
    {60, "RESETFLIPS", "", method<onAnimo<resetFlips>>, "Undoes the mirroring."},
    {61, "DRAWONTO", "picture:name, [priority:int]", method<onAnimo<drawOnto>>,
     "Makes it a part of another picture."},
    {62, "PLAYREVERSE", "event:event, [frame:int]", method<onAnimo<playReverse>>,
     "Plays an event backward, from a frame on."},
    {63, "NPLAY", "event:int, [frame:int]", method<onAnimo<nPlay>>,
     "Plays an event by its number, from a frame on."},
    {64, "ISAT", "x:int, y:int, alpha:bool -> bool", method<onAnimo<isAt>>,
     "Whether the point lies in the frame; with TRUE on a pixel that is seen."},
};

constexpr auto kSignals = signalTable<AnimoSignal>({
    {AnimoSignal::onStarted, "ONSTARTED", "An event begins; as ONSTARTED^EVENT."},
    {AnimoSignal::onFinished, "ONFINISHED", "An event has ended; as ONFINISHED^EVENT."},
    {AnimoSignal::onPaused, "ONPAUSED", "Nothing raises it."},
    {AnimoSignal::onResumed, "ONRESUMED", "Nothing raises it."},
    {AnimoSignal::onFrameChanged, "ONFRAMECHANGED",
     "Another frame is shown; as ONFRAMECHANGED^NAME, as ONFRAMECHANGEDFRAME^NUMBER for one without a name, "
     "or as ONFRAMECHANGED^EVENT.",
     CMC_Animo::kNamelessFrame},
    {AnimoSignal::onCollision, "ONCOLLISION",
     "It begins to touch another picture; as ONCOLLISION^NAME or ^EVENT^NAME."},
    {AnimoSignal::onCollisionFinished, "ONCOLLISIONFINISHED",
     "It ends to touch another picture; in the same forms."},
    {AnimoSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it."},
    {AnimoSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it."},
    {AnimoSignal::onClick, "ONCLICK", "It was clicked; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT."},
    {AnimoSignal::onRelease, "ONRELEASE", "A mouse button was released over it; in the same forms."},
});

constexpr Property kProperties[] = {
    {"FILENAME", PropertyKind::file, "", "Its file."},
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at once."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it."},
    {"FLUSHAFTERPLAYED", PropertyKind::boolean, "FALSE", "TRUE lets the file go when it is not shown."},
    {"PRELOAD", PropertyKind::boolean, "FALSE", "TRUE reads the file at once, else when it is needed."},
    {"MONITORCOLLISION", PropertyKind::boolean, "FALSE", "TRUE watches for collisions."},
    {"MONITORCOLLISIONALPHA", PropertyKind::boolean, "FALSE", "TRUE watches for collisions pixel by pixel."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones lie before lower ones."},
    {"FPS", PropertyKind::integer, "", "Frames a second."},
    {"ASBUTTON", PropertyKind::boolean, "FALSE",
     "TRUE lets it hear the mouse and play ONFOCUSON, ONFOCUSOFF and ONCLICK."},
    {"ONFIRSTFRAME", PropertyKind::boolean, "FALSE",
     "TRUE lets the mouse count over the place of the first frame."},
};

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
