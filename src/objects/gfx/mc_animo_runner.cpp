// Scripts' methods of ANIMO.

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "objects/data/mc_array.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_animo.h"
#include "script/mc_variable.h"
#include "script/method_tables.h"

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

constexpr int kSilent = -10000;  // hundredths of a decibel
constexpr int kLeast = -3100;

Result setVolume(CAnimo6& animo, Call& call) {
  const int volume = wrap_mul(wrap_sub(call.integer(0), 800), 4);
  animo.setVolume(volume <= kLeast ? kSilent : volume);
  return {};
}

Result setPan(CAnimo6& animo, Call& call) {
  int pan = wrap_mul(wrap_sub(call.integer(0), 400), 2);
  if (pan <= kLeast) pan = kSilent;
  if (pan >= -kLeast) pan = -kSilent;
  animo.setPanning(pan);
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
    {1, "SHOW", 0, 0, method<onAnimo<show>>},
    {2, "HIDE", 0, 0, method<onAnimo<hide>>},
    {3, "PAUSE", 0, 0, method<onAnimo<pause>>},
    {4, "RESUME", 0, 0, method<onAnimo<resume>>},
    {5, "SETPOSITION", 2, 2, method<onAnimo<setPosition>>},
    {6, "MOVE", 2, 2, method<onAnimo<move>>},
    {7, "LOAD", 1, 1, method<load>},
    {8, "CLEARCLIPPING", 0, 0, method<onAnimo<clearClipping>>},
    {9, "SETCLIPPING", 1, 4, method<onAnimo<setClipping>>},
    {10, "PLAY", 0, 1, method<play>},
    {11, "SETFRAME", 0, 2, method<onAnimo<setFrame>>},
    {12, "STOP", 0, 1, method<onAnimo<stop>>},
    {13, "ISPLAYING", 0, 1, method<onAnimo<isPlaying>>},
    {15, "GETPOSITIONX", 0, 1, method<onAnimo<positionX>>},
    {16, "GETPOSITIONY", 0, 1, method<onAnimo<positionY>>},
    {17, "GETWIDTH", 0, 0, method<onAnimo<width>>},
    {18, "GETHEIGHT", 0, 0, method<onAnimo<height>>},
    {19, "GETFRAME", 0, 0, method<onAnimo<current>>},
    {20, "GETFRAMENAME", 0, 2, method<onAnimo<getFrameName>>},
    {56, "SETFRAMENAME", 3, 3, method<onAnimo<setFrameName>>},
    {21, "GETFRAMENO", 0, 2, method<onAnimo<getFrameNo>>},
    {22, "GETEVENTNAME", 0, 1, method<onAnimo<getEventName>>},
    {67, "GETEVENTNUMBER", 0, 1, method<onAnimo<eventNumber>>},
    {23, "ISNEAR", 2, 5, method<onAnimo<isNear>>},
    {24, "ISINSIDE", 3, 3, method<onAnimo<isAt>>},
    {25, "PLAYRAND", 3, 3, method<onAnimo<playRand>>},
    {26, "MONITORCOLLISION", 1, 1, method<monitorCollision>},
    {27, "REMOVEMONITORCOLLISION", 0, 0, method<removeMonitorCollision>},
    {28, "SETFORWARD", 0, 0, method<onAnimo<setForward>>},
    {29, "SETBACKWARD", 0, 0, method<onAnimo<setBackward>>},
    {30, "NEXTFRAME", 0, 0, method<onAnimo<nextFrame>>},
    {31, "PREVFRAME", 0, 0, method<onAnimo<prevFrame>>},
    {32, "SETPRIORITY", 1, 1, method<onAnimo<setPriority>>},
    {57, "GETPRIORITY", 0, 0, method<onAnimo<getPriority>>},
    {33, "GETALPHA", 2, 2, method<onAnimo<getAlpha>>},
    {34, "GETPIXEL", 2, 2, method<onAnimo<getPixel>>},
    {35, "SETFPS", 1, 1, method<onAnimo<setFps>>},
    {68, "GETFPS", 0, 0, method<onAnimo<fps>>},
    {36, "MERGEALPHA", 3, 3, method<onAnimo<mergeAlpha>>},
    {37, "INVALIDATE", 0, 0, method<onAnimo<invalidate>>},
    {38, "GETCURRFRAMEPOSX", 0, 0, method<onAnimo<framePositionX>>},
    {39, "GETCURRFRAMEPOSY", 0, 0, method<onAnimo<framePositionY>>},
    {40, "GETCENTERX", 0, 0, method<onAnimo<centerX>>},
    {41, "GETCENTERY", 0, 0, method<onAnimo<centerY>>},
    {42, "GETNOE", 0, 0, method<onAnimo<numberOfEvents>>},
    {43, "GETNOF", 0, 0, method<onAnimo<numberOfFrames>>},
    {44, "GETNOFINEVENT", 0, 1, method<onAnimo<getNofInEvent>>},
    {45, "GETMAXWIDTH", 0, 0, method<onAnimo<maxWidth>>},
    {46, "GETMAXHEIGHT", 0, 0, method<onAnimo<maxHeight>>},
    {47, "ISVISIBLE", 0, 0, method<onAnimo<isVisible>>},
    {48, "GETCFRAMEINEVENT", 0, 0, method<onAnimo<frameInEvent>>},
    {49, "SETASBUTTON", 2, 2, method<setAsButton>},
    {50, "SETONFF", 0, 1, method<setOnFirstFrame>},
    {51, "SETOPACITY", 1, 1, method<onAnimo<setOpacity>>},
    {65, "GETOPACITY", 0, 0, method<onAnimo<opacity>>},
    {52, "SETVOLUME", 1, 1, method<onAnimo<setVolume>>},
    {53, "SETPAN", 1, 1, method<onAnimo<setPan>>},
    {54, "SETFREQ", 1, 1, method<onAnimo<setFreq>>},
    {55, "SETANCHOR", 1, 2, method<onAnimo<setAnchor>>},
    {66, "GETANCHOR", 1, 1, method<onAnimo<getAnchor>>},
    {58, "FLIPH", 0, 0, method<onAnimo<flipH>>},
    {59, "FLIPV", 0, 0, method<onAnimo<flipV>>},
    {60, "RESETFLIPS", 0, 0, method<onAnimo<resetFlips>>},
    {61, "DRAWONTO", 1, 2, method<onAnimo<drawOnto>>},
    {62, "PLAYREVERSE", 1, 2, method<onAnimo<playReverse>>},
    {63, "NPLAY", 1, 2, method<onAnimo<nPlay>>},
    {64, "ISAT", 3, 3, method<onAnimo<isAt>>},
};

}  // namespace

std::span<const Method> methods::animo() { return kMethods; }

}  // namespace footlight
